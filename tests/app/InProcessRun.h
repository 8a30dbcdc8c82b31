#ifndef GNSS_TESTS_APP_INPROCESSRUN_H
#define GNSS_TESTS_APP_INPROCESSRUN_H

#include <ostream>
#include <string>
#include <tuple>
#include <vector>

class SimulatedReceiver;

using Lines = std::vector<std::string>;

// What a run told the kernel driver: type, firmware, extended version and model.
using DriverHandOver = std::tuple<int, std::string, std::string, std::string>;

// Everything a run left behind apart from what the receiver heard.
struct RunOutcome {
    int status;
    std::string out;
    std::string err;
    std::vector<DriverHandOver> told;
};
bool operator==(const RunOutcome& left, const RunOutcome& right);
void PrintTo(const RunOutcome& outcome, std::ostream* os);

// Runs gnss-setup in-process with arguments (those after the program name); every port it asks
// for is the real termios port on linePath.
RunOutcome RunOn(const std::string& linePath, std::vector<const char*> arguments);

// The port name that RunAgainst puts on the command line last; the run opens the receiver's line.
constexpr const char* kConsolePort = "/dev/ttyO1";
RunOutcome RunAgainst(const SimulatedReceiver& receiver, std::vector<const char*> arguments);

// The lines of heard that are among steps, in the order heard.
Lines StepsHeard(const Lines& heard, const Lines& steps);

#endif
