#include "tests/support/SimulatedRun.h"

#include <cstdlib>

ProgramEnvironment ToolEnvironment(const std::string& controlDouble, const std::string& controlRecord)
{
    const char* given = std::getenv("ASAN_OPTIONS");
    ProgramEnvironment environment = {
        "LD_PRELOAD=" + controlDouble,
        "ASAN_OPTIONS=" + std::string(given != nullptr ? given : "") + ":verify_asan_link_order=0"};
    if (!controlRecord.empty()) {
        environment.push_back("ZRGPS_CTL_RECORD=" + controlRecord);
    }
    return environment;
}

std::vector<std::string> SimulatorArguments(const std::vector<std::string>& simulatorOptions, const std::string& port,
                                            const std::string& scratch, const std::vector<std::string>& toolCommand)
{
    std::vector<std::string> command = simulatorOptions;
    command.insert(command.end(), {"--quiet", "--link", port, "--heard", scratch + "heard.txt", "--log",
                                   scratch + "wire.log", "--"});
    command.insert(command.end(), toolCommand.begin(), toolCommand.end());
    return command;
}
