#ifndef GNSS_TESTS_SUPPORT_SIMULATEDRUN_H
#define GNSS_TESTS_SUPPORT_SIMULATEDRUN_H

#include "tests/support/ProcessRunner.h"

#include <string>
#include <vector>

// How the end-to-end scenarios and the fault matrix run the built gnss-setup against gnss-sim.

// The tool's variables: the control-device double preloaded, recording into controlRecord (none:
// the device is missing, as on a console whose driver did not load). In the sanitizer build the
// double is loaded ahead of the sanitizer run-time, which otherwise refuses to start; elsewhere
// nothing reads that variable.
ProgramEnvironment ToolEnvironment(const std::string& controlDouble, const std::string& controlRecord);

// gnss-sim's arguments to serve a receiver (simulatorOptions: --receiver and any faults) on
// a link at port, writes its transcript and wire log into the scratch folder (heard.txt,
// wire.log), runs toolCommand once the line is ready and ends with its status. --quiet leaves
// standard error to the tool.
std::vector<std::string> SimulatorArguments(const std::vector<std::string>& simulatorOptions, const std::string& port,
                                            const std::string& scratch, const std::vector<std::string>& toolCommand);

#endif
