#ifndef GNSS_SIM_RECEIVERS_NOVATELRECEIVER_H
#define GNSS_SIM_RECEIVERS_NOVATELRECEIVER_H

#include "sim/model/ReceiverModel.h"
#include "sim/receivers/LineAssembler.h"
#include "sim/receivers/NovatelCommandTable.h"

#include <string>
#include <vector>

namespace GnssSim {

// A NovAtel receiver of one generation, speaking abbreviated ASCII. It answers every command line
// with CR LF, "<OK" or an "<ERROR:..." line, CR LF and its port prompt ("[COM1]"), which has no
// line end, so the next line it sends carries the prompt as a prefix. A log asked for "once"
// follows the reply on one line. Commands that change the port's speed take effect after the
// reply; a reset or a channel configuration change makes it silent while it restarts.
class NovatelReceiver : public ReceiverModel {
public:
    NovatelReceiver(const ReceiverSetup& setup, ReceiverLine& line);

private:
    // What a command does beyond its reply.
    struct Outcome {
        int badField = 0;      // 0: accepted
        std::string logName;   // a log asked for once, sent after the reply
        int newBaud = 0;       // the port's speed from now on, 0: unchanged
        bool restart = false;
    };

    std::size_t ConsumeUnit(const std::string& bytes, std::size_t pos) override;
    void OnNoiseHeard() override { m_input.OnNoise(); }
    void OnRestarted() override { m_input.Clear(); }
    std::string LogOutput(const std::string& logName) override;

    void OnLine(const std::string& line, bool garbled);
    void Answer(const std::string& line, bool garbled, const Outcome& outcome);
    Outcome Execute(const std::vector<std::string>& words);
    Outcome Dispatch(const NovatelCommandRule& command, const std::vector<std::string>& words);
    Outcome StoreSetting(const NovatelCommandRule& command, const std::vector<std::string>& words);
    Outcome SetEcho(const std::vector<std::string>& words);
    Outcome StartLog(const std::vector<std::string>& words);
    Outcome StopLog(const std::vector<std::string>& words);
    Outcome StopAllLogs();
    Outcome ConfigurePort(const std::vector<std::string>& words);
    Outcome SelectChannelConfig(const std::vector<std::string>& words);
    bool IsOwnPort(const std::string& port) const;
    std::string Prompt() const;
    std::string AsciiLog(const std::string& logName) const;

    LineAssembler m_input;
};

}

#endif
