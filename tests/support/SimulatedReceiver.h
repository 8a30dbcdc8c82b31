#ifndef GNSS_TESTS_SUPPORT_SIMULATEDRECEIVER_H
#define GNSS_TESTS_SUPPORT_SIMULATEDRECEIVER_H

#include <optional>
#include <string>
#include <vector>

#include "sim/Simulator.h"
#include "tests/support/PathComPort.h"

// Restarts last this long in tests: long enough to tell apart from an answer, short enough for
// the tool's search for a restarted receiver to find it in its first rounds.
constexpr long kShortRestartMs = 400;

// The console opens the receiver's port at this rate, the rate receivers start at in tests.
constexpr int kConsoleBaud = 115200;

// The simulator's options for a receiver by name ("oem7700", "csi", "silent", ...) with short
// restarts and the given faults.
GnssSim::SimOptions TestReceiverOptions(const std::string& receiver,
                                        const std::vector<GnssSim::Fault>& faults = {});

// A simulated receiver serving on a pseudo-terminal for as long as the object lives, and, once
// OpenPort was called, the tool's real termios port open on its line.
class SimulatedReceiver {
public:
    // Throws std::runtime_error when the simulator cannot start.
    explicit SimulatedReceiver(const GnssSim::SimOptions& options);
    explicit SimulatedReceiver(const std::string& receiver)
        : SimulatedReceiver(TestReceiverOptions(receiver)) {}
    // The port's destructor leaves the descriptor open, as the tool's ports always have.
    ~SimulatedReceiver() { if (m_port) m_port->Close(); }
    SimulatedReceiver(const SimulatedReceiver&) = delete;
    SimulatedReceiver& operator=(const SimulatedReceiver&) = delete;

    GnssSim::Simulator& Sim() { return m_sim; }
    // The line's own path, for a port the test makes itself.
    std::string LinePath() const { return m_sim.SlavePath(); }

    // Opens the tool's port on the line at baud; throws std::runtime_error when it cannot.
    PathComPort& OpenPort(int baud = kConsoleBaud);
    // The port OpenPort opened.
    PathComPort& Port() { return *m_port; }

    // The lines the receiver heard at its own speed, once it has taken in everything the tool
    // wrote; empty lines only on request. A receiver that does not go quiet fails the test.
    std::vector<std::string> Heard(bool includeEmpty = false);

private:
    GnssSim::Simulator m_sim;  // stops serving when destroyed, after the port was closed
    std::optional<PathComPort> m_port;
};

#endif
