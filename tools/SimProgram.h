#ifndef GNSS_TOOLS_SIMPROGRAM_H
#define GNSS_TOOLS_SIMPROGRAM_H

#include "tools/SimCommandLine.h"

#include <ostream>
#include <string>
#include <vector>

// gnss-sim from its arguments (without the program name) to its exit status: 2 for arguments it
// cannot use, 1 when the line cannot be set up, the command's status when it runs one, else 0.
int RunSimProgram(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The summary of a wire log for people: what the receiver heard and sent and what happened to it,
// leaving out the raw chunks read and the streamed sentences (which are only counted), each
// NovAtel log marked with whether its CRC is right.
std::string SummariseWireLog(const std::vector<std::string>& wireLog);

#endif
