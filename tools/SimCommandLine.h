#ifndef GNSS_TOOLS_SIMCOMMANDLINE_H
#define GNSS_TOOLS_SIMCOMMANDLINE_H

#include "sim/SimOptions.h"

#include <string>
#include <vector>

// What gnss-sim was asked to do.
struct SimProgramOptions {
    GnssSim::SimOptions sim;
    std::string heardPath;             // where to write the heard transcript, "" for nowhere
    std::vector<std::string> command;  // the command to run once the line is ready; empty: serve
    bool help = false;
    bool quiet = false;                // leave out the start line and the summary on standard error
};

// Reads gnss-sim's arguments (without the program name); false with the reason when they do not
// make sense. Options take their value as the next argument or after "=".
bool ParseSimCommandLine(const std::vector<std::string>& args, SimProgramOptions& options, std::string& error);

// The --help text.
std::string SimUsage();

#endif
