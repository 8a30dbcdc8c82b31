#ifndef GNSS_SIM_MODEL_RECEIVERMODEL_H
#define GNSS_SIM_MODEL_RECEIVERMODEL_H

#include "sim/model/OutputSchedule.h"
#include "sim/model/ReceiverSetup.h"

#include <optional>
#include <string>

namespace GnssSim {

// The receiver's side of the line, shared by every family: what it does with bytes that arrive at
// the wrong speed or while it restarts, its saved and factory state, restarts, streamed logs, and
// the answer faults. The families decide what the bytes mean.
class ReceiverModel {
public:
    ReceiverModel(const ReceiverSetup& setup, ReceiverLine& line);
    virtual ~ReceiverModel() = default;
    ReceiverModel(const ReceiverModel&) = delete;
    ReceiverModel& operator=(const ReceiverModel&) = delete;

    // Bytes the tool wrote, read from the line while the tool's speed was lineBaud. Bytes are
    // judged one command at a time, so the commands after one that changes the receiver's speed,
    // or restarts it, are heard as the receiver is afterwards.
    void Receive(const std::string& bytes, int lineBaud, TimePoint now);

    // Ends a restart that is over and sends the streamed logs that are due.
    void OnTime(TimePoint now);
    TimePoint NextTimer() const;

    const ReceiverState& State() const { return m_state; }
    void SetState(const ReceiverState& state, TimePoint now);
    const std::optional<ReceiverState>& SavedState() const { return m_saved; }
    void SetSavedState(const std::optional<ReceiverState>& saved) { m_saved = saved; }
    bool IsRestarting() const { return m_restartingUntil != Never(); }
    const ReceiverSetup& Setup() const { return m_setup; }
    void SetValidModels(const std::vector<ValidModel>& models) { m_setup.validModels = models; }

protected:
    // Takes the bytes of one unit (a line, a packet) from pos on, acting on it when it is
    // complete; returns the position after the bytes taken. Only called while the speeds match.
    virtual std::size_t ConsumeUnit(const std::string& bytes, std::size_t pos) = 0;

    // Noise arrived: the unit being read cannot be read any more.
    virtual void OnNoiseHeard() = 0;

    // Back from a restart with an empty input buffer.
    virtual void OnRestarted() = 0;

    // What the receiver sends for a log; "" for a log it cannot produce.
    virtual std::string LogOutput(const std::string& logName) = 0;

    TimePoint Now() const { return m_now; }
    int LineBaud() const { return m_lineBaud; }
    ReceiverState& MutableState() { return m_state; }
    void SaveState() { m_saved = m_state; }

    void RecordLine(const std::string& line, bool garbled, const std::string& verdict);
    void RecordPacket(const std::string& bytes, int id, const std::string& payload, bool sumOk,
                      const std::string& verdict);

    // Whether a fault says the receiver drops this command without a word.
    bool IsSilenced(const std::string& heardLine) const;

    // Sends the answer to a heard command: lead (a reply that comes first, may be empty), then the
    // answer proper (the reply, or the log the command asked for). The answer faults that name the
    // command shape the answer proper; delays and splits shape the whole.
    void SendAnswer(const std::string& heardLine, const std::string& lead, const std::string& answer,
                    const std::string& meaning);

    // Sends bytes that answer nothing (an echo).
    void Send(const std::string& bytes, const std::string& meaning);

    // The port's new speed; the answers already queued still leave at the old one.
    void ChangeBaud(int baud);

    void BeginRestart(const std::string& reason);

    void LogEvent(const std::string& meaning);

private:
    void FinishRestartIfDue(TimePoint now);
    void SendStreamedLogs();
    void FollowFlood(TimePoint now);
    std::string InjectAnswerFaults(const std::string& heardLine, const std::string& answer) const;
    void QueueSplitOrWhole(const std::string& heardLine, const std::string& text, std::size_t answerStart,
                           TimePoint notBefore, const std::string& meaning);

    ReceiverSetup m_setup;
    ReceiverLine& m_line;
    ReceiverState m_state;
    std::optional<ReceiverState> m_saved;
    OutputSchedule m_schedule;
    // The sentences of an NMEA flood fault, sent whatever the receiver was told to log.
    OutputSchedule m_flood;
    TimePoint m_restartingUntil = Never();
    TimePoint m_now;
    int m_lineBaud = 0;
};

}

#endif
