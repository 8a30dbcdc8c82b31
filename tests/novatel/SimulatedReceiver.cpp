#include "tests/novatel/SimulatedReceiver.h"

#include "receivers/novatel/CAutonomousV1.h"
#include "receivers/novatel/COEMStar.h"
#include "receivers/novatel/NovatelOem6.h"
#include "receivers/novatel/NovatelOem7.h"

#include <stdexcept>

GnssSim::SimOptions ReceiverOptions(const std::string& name)
{
    GnssSim::SimOptions options;
    options.receiver = name;
    options.restartMs = kShortRestartMs;
    return options;
}

SimulatedReceiver::SimulatedReceiver(const GnssSim::SimOptions& options, int portBaud)
    : m_receiver(options.receiver), m_sim(std::make_unique<GnssSim::Simulator>(options))
{
    std::string error;
    if (!m_sim->Start(error)) {
        throw std::runtime_error("simulator: " + error);
    }
    m_port = std::make_unique<PathComPort>(m_sim->SlavePath());
    m_port->SetBaudRate(portBaud);
    if (m_port->Open() != 0) {
        throw std::runtime_error("cannot open " + m_sim->SlavePath());
    }
}

SimulatedReceiver::~SimulatedReceiver()
{
    m_port->Close();
    m_sim->Stop();
}

std::unique_ptr<NovatelCommon::OemV1Descendants> SimulatedReceiver::MakeConfigurer()
{
    if (m_receiver == "oemv") {
        return std::make_unique<CAutonomousV1>(m_port.get());
    }
    if (m_receiver == "oemstar" || m_receiver == "oemstarg") {
        return std::make_unique<COEMStar>(m_port.get(), m_receiver == "oemstarg");
    }
    if (m_receiver == "oem6") {
        return std::make_unique<NovatelOem6>(m_port.get());
    }
    return std::make_unique<NovatelOem7>(m_port.get());
}

std::vector<std::string> SimulatedReceiver::Heard(bool includeEmpty)
{
    m_sim->WaitForQuiet();
    return m_sim->HeardLines(includeEmpty);
}
