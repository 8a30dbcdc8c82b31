#ifndef GNSS_TESTS_SUPPORT_PROCESSRUNNER_H
#define GNSS_TESTS_SUPPORT_PROCESSRUNNER_H

#include <string>
#include <vector>

struct ProcessResult {
    int status = -1;  // the exit status, or 128 + the signal that ended the process
    std::string out;
    std::string err;
};

// Runs a program of this build under the given name (its argv[0]) with arguments and collects
// what it printed. On a cross build the program is started through the build's emulator
// (qemu-arm), which is what it needs to run.
ProcessResult RunBuiltProgram(const std::string& program, const std::string& name,
                              const std::vector<std::string>& arguments);

#endif
