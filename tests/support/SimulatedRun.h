#ifndef GNSS_TESTS_SUPPORT_SIMULATEDRUN_H
#define GNSS_TESTS_SUPPORT_SIMULATEDRUN_H

#include "tests/support/ProcessRunner.h"

#include <string>
#include <vector>

// How the end-to-end scenarios and the fault matrix run the built gnss-setup against gnss-sim.

// The tool's variables: the control-device double preloaded, recording into controlRecord (none:
// the device is missing, as on a console whose driver did not load), and morePreloaded after it
// when given. In the sanitizer build the preloads come ahead of the sanitizer run-time, which
// otherwise refuses to start; elsewhere nothing reads that variable.
ProgramEnvironment ToolEnvironment(const std::string& controlDouble, const std::string& controlRecord,
                                   const std::string& morePreloaded = "");

// gnss-sim's arguments to serve a receiver (simulatorOptions: --receiver and any faults) on
// a link at port, writes its transcript and wire log into the scratch folder (heard.txt,
// wire.log), runs toolCommand once the line is ready and ends with its status. --quiet leaves
// standard error to the tool.
std::vector<std::string> SimulatorArguments(const std::vector<std::string>& simulatorOptions, const std::string& port,
                                            const std::string& scratch, const std::vector<std::string>& toolCommand);

// Why runs cannot have a /dev of their own here through the script privateDev
// (scripts/private-dev needs root and mount namespaces), or "" when they can. Asked once.
std::string WhyNoPrivateDev(const std::string& privateDev);

// From the control-device double's record of a run: the type number of the last type request, or
// -1 without one; and how many requests the driver was sent.
int DriverTypeTold(const std::string& record);
int DriverRequestsTold(const std::string& record);

#endif
