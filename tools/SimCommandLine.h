#ifndef GNSS_TOOLS_SIMCOMMANDLINE_H
#define GNSS_TOOLS_SIMCOMMANDLINE_H

#include "tools/SimProgramOptions.h"

#include <ostream>
#include <string>
#include <vector>

// Reads gnss-sim's arguments (without the program name): options, then optionally "--" and the
// command to run. Options take their value as the next argument or after "=". --help (-h) writes
// the help to `help` and sets options.help. false with the reason when the arguments do not make
// sense.
bool ParseSimCommandLine(const std::vector<std::string>& args, SimProgramOptions& options, std::ostream& help,
                         std::string& error);

#endif
