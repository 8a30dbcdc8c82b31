#ifndef GNSS_TESTS_SUPPORT_SIMULATEDNOVATEL_H
#define GNSS_TESTS_SUPPORT_SIMULATEDNOVATEL_H

#include "receivers/novatel/CAutonomousV1.h"
#include "receivers/novatel/COEMStar.h"
#include "receivers/novatel/NovatelOem6.h"
#include "receivers/novatel/NovatelOem7.h"
#include "tests/support/SimulatedReceiver.h"

#include <memory>
#include <string>

// A simulated NovAtel receiver, the tool's port open on its line, and the configurer of its
// generation ("oemv", "oemstar", "oemstarg", "oem6"; anything else gets the OEM7 configurer).
class SimulatedNovatel : public SimulatedReceiver {
public:
    explicit SimulatedNovatel(const GnssSim::SimOptions& options, int portBaud = kConsoleBaud)
        : SimulatedReceiver(options),
          m_configurer(MakeConfigurer(options.receiver, &OpenPort(portBaud)))
    {
    }

    NovatelCommon::OemV1Descendants& Configurer() { return *m_configurer; }

private:
    static std::unique_ptr<NovatelCommon::OemV1Descendants> MakeConfigurer(const std::string& name,
                                                                           CComPort* port)
    {
        if (name == "oemv") {
            return std::make_unique<CAutonomousV1>(port);
        }
        if (name == "oemstar" || name == "oemstarg") {
            return std::make_unique<COEMStar>(port, name == "oemstarg");
        }
        if (name == "oem6") {
            return std::make_unique<NovatelOem6>(port);
        }
        return std::make_unique<NovatelOem7>(port);
    }

    std::unique_ptr<NovatelCommon::OemV1Descendants> m_configurer;
};

#endif
