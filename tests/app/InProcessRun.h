#ifndef GNSS_TESTS_APP_INPROCESSRUN_H
#define GNSS_TESTS_APP_INPROCESSRUN_H

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "sim/Simulator.h"

// What a run told the kernel driver.
struct DriverHandOver {
    int type = -1;
    std::string firmware;
    std::string extendedVersion;
    std::string model;

    bool operator==(const DriverHandOver& other) const;
};
void PrintTo(const DriverHandOver& told, std::ostream* os);

// Everything a run left behind apart from what the receiver heard.
struct RunOutcome {
    int status = -1;
    std::string out;
    std::string err;
    // What the serial port itself printed on the process's standard error.
    std::string processErr;
    // The device paths the run asked the port factory for, in order.
    std::vector<std::string> requestedPorts;
    std::vector<DriverHandOver> driverTold;
};

// What the serial port prints on the process's standard error: captured into processErr, or left
// alone for a death test, which captures it itself.
enum class PortMessages { Captured, Left };

// Runs gnss-setup in-process; every port it asks for is the real termios port on devicePath.
// arguments are those after the program name.
RunOutcome RunInProcess(const std::string& devicePath, std::vector<const char*> arguments,
                        PortMessages portMessages = PortMessages::Captured);

// Long enough to tell a restart from an answer, short enough for the tool's search for the
// restarted receiver to find it in its first rounds.
constexpr long kShortRestartMs = 300;

// The port name the tests put on the command line; the runs open the simulator's line instead.
extern const char* const kConsolePort;

// A simulated receiver on a pseudo-terminal, serving for as long as the object lives.
class SimulatedLine {
public:
    // receiver is a simulator receiver name ("oem7700", "csi", "silent" ...); restarts are short.
    explicit SimulatedLine(const std::string& receiver);
    // Throws std::runtime_error when the simulator cannot start.
    explicit SimulatedLine(const GnssSim::SimOptions& options);

    // One run of gnss-setup with arguments (the port name is added last) against this receiver.
    RunOutcome Run(std::vector<const char*> arguments,
                   PortMessages portMessages = PortMessages::Captured);

    // The lines the receiver heard, once it has taken in everything the run wrote.
    std::vector<std::string> Heard(bool includeEmpty = false);

    GnssSim::Simulator& Sim() { return *m_sim; }

private:
    std::unique_ptr<GnssSim::Simulator> m_sim;
};

// The simulator's options for receiver with short restarts.
GnssSim::SimOptions ShortRestartOptions(const std::string& receiver);

// Position of the first line equal to line, or -1.
long IndexOf(const std::vector<std::string>& lines, const std::string& line);
long CountOf(const std::vector<std::string>& lines, const std::string& line);
// The last of lines, "" when there is none.
std::string LastOf(const std::vector<std::string>& lines);

#endif
