#ifndef GNSS_BENCH_FIGURECELLS_H
#define GNSS_BENCH_FIGURECELLS_H

#include "bench/IntendedWaits.h"

#include <string>
#include <vector>

// One cell of the figures: a mode of gnss-setup run against one simulated receiver family, with
// the waits that run is meant to make.
struct FigureCell {
    std::string mode;
    std::string family;
    // gnss-sim's --receiver; "" for a mode that opens no port (the simulator still runs).
    std::string receiver;
    // gnss-setup's arguments, the port included.
    std::vector<std::string> arguments;
    std::vector<WaitTerm> waits;

    long WaitsMs() const;
    // "100 + 50 + 1000", or "0" without waits.
    std::string WaitsFormula() const;
    std::string Id() const;
};

// The port name every run links to its simulator, inside its own private /dev.
extern const char* const kFigurePort;

// Every mode against every family it can be asked of: the detecting modes against each family,
// and the modes that leave the receiver alone (override, dry run, clear cached) once.
std::vector<FigureCell> FigureCells();

#endif
