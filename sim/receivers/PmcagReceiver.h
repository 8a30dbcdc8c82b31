#ifndef GNSS_SIM_RECEIVERS_PMCAGRECEIVER_H
#define GNSS_SIM_RECEIVERS_PMCAGRECEIVER_H

#include "sim/model/ReceiverModel.h"
#include "sim/receivers/PacketDecoder.h"

#include <string>

namespace GnssSim {

// A receiver driven by "$PMCAG" sentences and binary packets. It answers its probe
// ("$PMCAG,004,908") with a "$PMCAG,908,..." sentence and answers nothing else; it takes sentences
// only with a right checksum and packets only with a right sum, and records the others as rejected.
class PmcagReceiver : public ReceiverModel {
public:
    PmcagReceiver(const ReceiverSetup& setup, ReceiverLine& line);

private:
    std::size_t ConsumeUnit(const std::string& bytes, std::size_t pos) override;
    void OnNoiseHeard() override { m_input.OnNoise(); }
    void OnRestarted() override { m_input.Clear(); }
    std::string LogOutput(const std::string& logName) override;

    void OnItem(const DecodedItem& item);
    void OnSentence(const DecodedItem& item);
    void OnPacket(const DecodedItem& item);
    std::string ProbeAnswer() const;

    PacketDecoder m_input;
};

}

#endif
