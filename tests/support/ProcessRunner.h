#ifndef GNSS_TESTS_SUPPORT_PROCESSRUNNER_H
#define GNSS_TESTS_SUPPORT_PROCESSRUNNER_H

#include <string>
#include <vector>

struct ProcessResult {
    int status = -1;  // the exit status, or 128 + the signal that ended the process
    std::string out;
    std::string err;
};

// Variables added to a program's environment, each as "NAME=VALUE".
using ProgramEnvironment = std::vector<std::string>;

// Runs a program of this build under the given name (its argv[0]) with arguments and variables
// added to its environment, and collects what it printed. On a cross build the program is started
// through the build's emulator (qemu-arm), which is what it needs to run, and the variables are
// handed to the program through the emulator's -E, not set for the emulator: the host's loader
// would act on an LD_PRELOAD of an ARM library, and fail.
ProcessResult RunBuiltProgram(const std::string& program, const std::string& name,
                              const std::vector<std::string>& arguments,
                              const ProgramEnvironment& environment = {});

// Runs a program of this machine (a script, a system tool), never through the emulator, and collects
// what it printed.
ProcessResult RunHostProgram(const std::string& program, const std::vector<std::string>& arguments);

// The command line that starts a program of this build with arguments and added variables, for
// another program to start (gnss-sim runs its command so): through the emulator on a cross build,
// through env(1) natively, where the program then sees its path rather than the name as argv[0].
std::vector<std::string> BuiltProgramCommand(const std::string& program, const std::string& name,
                                             const std::vector<std::string>& arguments,
                                             const ProgramEnvironment& environment);

#endif
