#include "tests/support/SimulatedRun.h"

#include <cstdlib>
#include <regex>

ProgramEnvironment ToolEnvironment(const std::string& controlDouble, const std::string& controlRecord,
                                   const std::string& morePreloaded)
{
    const char* given = std::getenv("ASAN_OPTIONS");
    ProgramEnvironment environment = {
        "LD_PRELOAD=" + controlDouble + (morePreloaded.empty() ? "" : ":" + morePreloaded),
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

int DriverTypeTold(const std::string& record)
{
    static const std::regex typeRequest(R"(ioctl ZRGPS_IOCT_SET_RECEIVER_TYPE (-?[0-9]+))");
    int told = -1;
    for (std::sregex_iterator it(record.begin(), record.end(), typeRequest), end; it != end; ++it) {
        told = std::stoi((*it)[1]);
    }
    return told;
}

int DriverRequestsTold(const std::string& record)
{
    static const std::regex request(R"((^|\n)ioctl )");
    return static_cast<int>(std::distance(std::sregex_iterator(record.begin(), record.end(), request),
                                          std::sregex_iterator()));
}

std::string WhyNoPrivateDev(const std::string& privateDev)
{
    static const bool works = RunHostProgram(privateDev, {"true"}).status == 0;
    return works ? "" : "cannot give a run a /dev of its own here (scripts/private-dev needs root and mount "
                        "namespaces), and each run links /dev/ttyO1";
}
