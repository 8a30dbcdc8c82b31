#ifndef GNSS_TOOLS_SIMPROGRAMOPTIONS_H
#define GNSS_TOOLS_SIMPROGRAMOPTIONS_H

#include "sim/SimOptions.h"

#include <string>
#include <vector>

// What gnss-sim was asked to do.
struct SimProgramOptions {
    GnssSim::SimOptions sim;
    std::string heardPath;             // where to write the heard transcript, "" for nowhere
    std::string timelinePath;          // where to draw the session's timeline, "" for nowhere
    std::vector<std::string> command;  // the command to run once the line is ready; empty: serve
    bool help = false;                 // the help was printed; nothing else is to be done
    bool quiet = false;                // leave out the start line and the summary on standard error
};

#endif
