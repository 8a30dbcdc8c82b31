#ifndef GNSS_TESTS_NOVATEL_SIMULATEDRECEIVER_H
#define GNSS_TESTS_NOVATEL_SIMULATEDRECEIVER_H

#include "receivers/novatel/OemV1Descendants.h"
#include "sim/Simulator.h"
#include "tests/support/PathComPort.h"

#include <memory>
#include <string>
#include <vector>

// Restarts last this long in these tests: long enough to tell apart from an answer, short enough
// for the searches that follow a restart to find the receiver on their first round.
constexpr long kShortRestartMs = 400;

// The simulator's options for a receiver by its name ("oemv", "oemstar", "oemstarg", "oem6",
// "oem7500", "oem7700", "silent"), with short restarts.
GnssSim::SimOptions ReceiverOptions(const std::string& name);

// A simulated receiver on a pseudo-terminal and the tool's real termios port open on its line at
// portBaud.
class SimulatedReceiver {
public:
    // Throws std::runtime_error when the simulator cannot start or the port cannot open.
    explicit SimulatedReceiver(const GnssSim::SimOptions& options, int portBaud = 115200);
    ~SimulatedReceiver();
    SimulatedReceiver(const SimulatedReceiver&) = delete;
    SimulatedReceiver& operator=(const SimulatedReceiver&) = delete;

    GnssSim::Simulator& Sim() { return *m_sim; }
    PathComPort& Port() { return *m_port; }

    // The configurer of the simulated generation (an OEM-StarG gets the StarG variant), on Port().
    std::unique_ptr<NovatelCommon::OemV1Descendants> MakeConfigurer();

    // The lines the receiver heard at its own speed, once it has taken in everything written.
    std::vector<std::string> Heard(bool includeEmpty = false);

private:
    std::string m_receiver;
    std::unique_ptr<GnssSim::Simulator> m_sim;
    std::unique_ptr<PathComPort> m_port;
};

#endif
