#ifndef GNSS_SIM_RECEIVERS_SILENTRECEIVER_H
#define GNSS_SIM_RECEIVERS_SILENTRECEIVER_H

#include "sim/model/ReceiverModel.h"
#include "sim/receivers/LineAssembler.h"

namespace GnssSim {

// A receiver that hears every line and answers none: what the tool meets on an empty port or with
// a receiver it does not know.
class SilentReceiver : public ReceiverModel {
public:
    SilentReceiver(const ReceiverSetup& setup, ReceiverLine& line);

private:
    std::size_t ConsumeUnit(const std::string& bytes, std::size_t pos) override;
    void OnNoiseHeard() override { m_input.OnNoise(); }
    void OnRestarted() override { m_input.Clear(); }
    std::string LogOutput(const std::string&) override { return std::string(); }

    LineAssembler m_input;
};

}

#endif
