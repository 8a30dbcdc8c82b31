#include "sim/model/ReceiverModel.h"

#include "sim/line/HeardRecord.h"
#include "sim/line/Pty.h"
#include "sim/line/Transmitter.h"
#include "sim/line/WireLog.h"
#include "sim/line/WireMeanings.h"
#include "sim/text/NmeaSentences.h"

#include <algorithm>

namespace GnssSim {

namespace {

// A split answer is cut this many characters into its text, inside its first word, so that the
// reader has to join the two parts to recognise it ("<O" + "K", "$>" + "JAPP").
const std::size_t kSplitOffset = 2;

// What a receiver set to a high navigation rate pours out unasked: position and recommended minimum.
const char* const kFloodSentences[] = {"GPGGA", "GPRMC"};

// The filler of an over-long line is printable: only its length is at fault.
const char kFillerPattern[] = "0123456789ABCDEF";

std::string Filler(long length)
{
    std::string filler;
    for (long i = 0; i < length; ++i) {
        filler += kFillerPattern[i % (sizeof kFillerPattern - 1)];
    }
    return filler;
}

// The index of the first character of text from `from` on that is neither blank nor a line end,
// or text.size().
std::size_t FirstVisible(const std::string& text, std::size_t from)
{
    for (std::size_t i = from; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) > ' ') {
            return i;
        }
    }
    return text.size();
}

}

ReceiverModel::ReceiverModel(const ReceiverSetup& setup, ReceiverLine& line)
    : m_setup(setup), m_line(line), m_state(setup.factory), m_now(setup.start)
{
    if (setup.initialBaud > 0) {
        m_state.baud = setup.initialBaud;
    }
    m_schedule.Follow(m_state.logs, setup.start);
    FollowFlood(setup.start);
}

void ReceiverModel::Receive(const std::string& bytes, int lineBaud, TimePoint now)
{
    m_now = now;
    m_lineBaud = lineBaud;
    FinishRestartIfDue(now);
    std::size_t pos = 0;
    while (pos < bytes.size()) {
        const std::string rest = bytes.substr(pos);
        if (IsRestarting()) {
            m_line.heard.AddLost(rest, lineBaud, m_state.baud);
            m_line.wireLog.Add(now, WireDirection::Heard, lineBaud, m_state.baud, rest,
                               std::string(kMeaningLost) + "the receiver is restarting");
            return;
        }
        if (lineBaud != m_state.baud) {
            m_line.heard.AddNoise(rest, lineBaud, m_state.baud);
            OnNoiseHeard();
            m_line.wireLog.Add(now, WireDirection::Heard, lineBaud, m_state.baud, rest,
                               kMeaningNoise + std::string("line at ") + std::to_string(lineBaud) + ", receiver at " +
                                   std::to_string(m_state.baud));
            return;
        }
        pos = ConsumeUnit(bytes, pos);
        m_schedule.Follow(m_state.logs, now);
    }
}

void ReceiverModel::OnTime(TimePoint now)
{
    m_now = now;
    FinishRestartIfDue(now);
    FollowFlood(now);
    if (!IsRestarting()) {
        SendStreamedLogs();
    }
}

TimePoint ReceiverModel::NextTimer() const
{
    return IsRestarting() ? m_restartingUntil : std::min(m_schedule.NextDue(), m_flood.NextDue());
}

void ReceiverModel::SetState(const ReceiverState& state, TimePoint now)
{
    m_state = state;
    m_schedule.Follow(m_state.logs, now);
}

void ReceiverModel::RecordLine(const std::string& line, bool garbled, const std::string& verdict)
{
    m_line.heard.AddLine(line, m_lineBaud, m_state.baud, garbled, verdict);
    m_line.wireLog.Add(m_now, WireDirection::Heard, m_lineBaud, m_state.baud, line,
                       (garbled ? kMeaningGarbledLine : kMeaningLine) + verdict);
}

void ReceiverModel::RecordPacket(const std::string& bytes, int id, const std::string& payload, bool sumOk,
                                 const std::string& verdict)
{
    m_line.heard.AddPacket(bytes, id, payload, sumOk, m_state.baud, verdict);
    m_line.wireLog.Add(m_now, WireDirection::Heard, m_lineBaud, m_state.baud, bytes,
                       kMeaningPacket + std::to_string(id) + ": " + verdict);
}

bool ReceiverModel::IsSilenced(const std::string& heardLine) const
{
    return FindFault(m_line.faults, FaultKind::NoAnswer, heardLine) != nullptr;
}

void ReceiverModel::SendAnswer(const std::string& heardLine, const std::string& lead, const std::string& answer,
                               const std::string& meaning)
{
    const Fault* delay = FindFault(m_line.faults, FaultKind::Delay, heardLine);
    const TimePoint notBefore = delay != nullptr ? MsAfter(m_now, delay->value) : m_now;
    const std::string text = lead + InjectAnswerFaults(heardLine, answer);
    QueueSplitOrWhole(heardLine, text, lead.size(), notBefore, meaning);
}

std::string ReceiverModel::InjectAnswerFaults(const std::string& heardLine, const std::string& answer) const
{
    std::string injected = answer;
    const std::size_t inside = std::min(FirstVisible(answer, 0) + 1, answer.size());
    if (const Fault* longLine = FindFault(m_line.faults, FaultKind::LongLineInAnswer, heardLine)) {
        injected.insert(inside, Filler(longLine->value));
    }
    if (FindFault(m_line.faults, FaultKind::NulInAnswer, heardLine) != nullptr) {
        injected.insert(inside, 1, '\0');
    }
    std::string before;
    if (FindFault(m_line.faults, FaultKind::NulBeforeAnswer, heardLine) != nullptr) {
        before += std::string(1, '\0') + "\r\n";
    }
    if (const Fault* longLine = FindFault(m_line.faults, FaultKind::LongLineBeforeAnswer, heardLine)) {
        before += Filler(longLine->value) + "\r\n";
    }
    return before + injected;
}

void ReceiverModel::QueueSplitOrWhole(const std::string& heardLine, const std::string& text, std::size_t answerStart,
                                      TimePoint notBefore, const std::string& meaning)
{
    const Fault* split = FindFault(m_line.faults, FaultKind::SplitAnswer, heardLine);
    if (split == nullptr) {
        m_line.transmitter.Queue(OutputItem{text, m_state.baud, meaning, notBefore, true}, m_now);
        return;
    }
    const std::size_t cut = std::min(FirstVisible(text, answerStart) + kSplitOffset, text.size());
    m_line.transmitter.Queue(OutputItem{text.substr(0, cut), m_state.baud, meaning + " (first part)", notBefore, true},
                             m_now);
    m_line.transmitter.Queue(OutputItem{text.substr(cut), m_state.baud,
                                        meaning + " (second part, " + std::to_string(split->value) + " ms later)",
                                        MsAfter(notBefore, split->value), true},
                             m_now);
}

void ReceiverModel::Send(const std::string& bytes, const std::string& meaning)
{
    m_line.transmitter.Queue(OutputItem{bytes, m_state.baud, meaning, m_now, true}, m_now);
}

void ReceiverModel::SendStreamedLogs()
{
    for (const std::string& name : m_schedule.TakeDue(m_now)) {
        const std::string text = LogOutput(name);
        m_line.transmitter.Queue(OutputItem{text, m_state.baud, kMeaningStreamedLog + name, m_now, false}, m_now);
    }
    for (const std::string& name : m_flood.TakeDue(m_now)) {
        const std::string text = NmeaSentencesFor(name, std::chrono::duration<double>(m_now - m_setup.start).count());
        m_line.transmitter.Queue(OutputItem{text, m_state.baud, kMeaningFlood + name, m_now, false}, m_now);
    }
}

// The flood follows the fault list, which a test may change while the receiver runs.
void ReceiverModel::FollowFlood(TimePoint now)
{
    const long perSecond = LineFaultValue(m_line.faults, FaultKind::NmeaFlood, 0);
    std::map<std::string, double> sentences;
    if (perSecond > 0) {
        for (const char* name : kFloodSentences) {
            sentences[name] = 1.0 / static_cast<double>(perSecond);
        }
    }
    m_flood.Follow(sentences, now);
}

void ReceiverModel::ChangeBaud(int baud)
{
    if (baud != m_state.baud) {
        m_state.baud = baud;
        LogEvent("the receiver's port is now at " + std::to_string(baud) + " baud");
    }
}

void ReceiverModel::BeginRestart(const std::string& reason)
{
    m_restartingUntil = MsAfter(m_now, m_setup.restartMs);
    m_schedule.Clear();
    LogEvent(kMeaningRestarting + ("\"" + reason) + "\": silent for " + std::to_string(m_setup.restartMs) + " ms");
}

void ReceiverModel::FinishRestartIfDue(TimePoint now)
{
    if (!IsRestarting() || now < m_restartingUntil) {
        return;
    }
    const int channelConfig = m_state.channelConfig;
    m_state = m_saved ? *m_saved : m_setup.factory;
    m_state.channelConfig = channelConfig;
    m_restartingUntil = Never();
    m_schedule.Follow(m_state.logs, now);
    OnRestarted();
    LogEvent(std::string(kMeaningBackFromRestart) + " at " + std::to_string(m_state.baud) + " baud, with the " +
             (m_saved ? "saved" : "start-up") + " configuration");
}

void ReceiverModel::LogEvent(const std::string& meaning)
{
    m_line.wireLog.Add(m_now, WireDirection::Event, m_line.pty.LineBaud(), m_state.baud, "", meaning);
}

}
