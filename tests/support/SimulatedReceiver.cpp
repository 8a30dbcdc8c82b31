#include "tests/support/SimulatedReceiver.h"

#include <gtest/gtest.h>

#include <stdexcept>

GnssSim::SimOptions TestReceiverOptions(const std::string& receiver,
                                        const std::vector<GnssSim::Fault>& faults)
{
    GnssSim::SimOptions options;
    options.receiver = receiver;
    options.restartMs = kShortRestartMs;
    options.faults = faults;
    return options;
}

SimulatedReceiver::SimulatedReceiver(const GnssSim::SimOptions& options) : m_sim(options)
{
    std::string error;
    if (!m_sim.Start(error)) {
        throw std::runtime_error("simulator: " + error);
    }
}

PathComPort& SimulatedReceiver::OpenPort(int baud)
{
    m_port.emplace(m_sim.SlavePath());
    m_port->SetBaudRate(baud);
    if (m_port->Open() != 0) {
        throw std::runtime_error("cannot open " + m_sim.SlavePath());
    }
    return *m_port;
}

std::vector<std::string> SimulatedReceiver::Heard(bool includeEmpty)
{
    EXPECT_TRUE(m_sim.WaitForQuiet()) << "the receiver did not go quiet";
    return m_sim.HeardLines(includeEmpty);
}
