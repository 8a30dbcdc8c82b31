#ifndef GNSS_SIM_RECEIVERS_CSIRECEIVER_H
#define GNSS_SIM_RECEIVERS_CSIRECEIVER_H

#include "sim/model/ReceiverModel.h"
#include "sim/receivers/LineAssembler.h"

#include <string>
#include <vector>

namespace GnssSim {

// A CSI receiver, driven by "$J" commands. It answers "$JAPP" with its applications and "$JI" with
// its identity, each a line beginning "$>"; "$JASC" switches NMEA sentences on at a rate in Hz
// (0 switches them off), "$JDIFF" chooses the correction source, "$JWAASPRN" the SBAS satellites
// and "$JSAVE" keeps the configuration across restarts. Other commands get no answer.
class CsiReceiver : public ReceiverModel {
public:
    CsiReceiver(const ReceiverSetup& setup, ReceiverLine& line);

private:
    std::size_t ConsumeUnit(const std::string& bytes, std::size_t pos) override;
    void OnNoiseHeard() override { m_input.OnNoise(); }
    void OnRestarted() override { m_input.Clear(); }
    std::string LogOutput(const std::string& logName) override;

    void OnLine(const std::string& line, bool garbled);
    std::string Execute(const std::string& line, const std::vector<std::string>& fields);
    std::string SwitchSentence(const std::vector<std::string>& fields);
    std::string ApplicationsAnswer() const;
    std::string IdentityAnswer() const;

    LineAssembler m_input;
};

}

#endif
