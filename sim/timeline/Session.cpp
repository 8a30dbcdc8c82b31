#include "sim/timeline/Session.h"

#include "sim/line/WireMeanings.h"
#include "sim/text/ByteText.h"

#include <algorithm>

namespace GnssSim {

namespace {

bool StartsWith(const std::string& text, const char* prefix)
{
    return text.rfind(prefix, 0) == 0;
}

// What the receiver sends unasked: a log it was told to stream, a flood's sentences.
bool IsStreamed(const std::string& meaning)
{
    return StartsWith(meaning, kMeaningStreamedLog) || StartsWith(meaning, kMeaningFlood);
}

// The bytes cut after each LF; a last piece without one is a line too.
std::vector<std::string> CutLines(const std::string& bytes)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size() - 1) + 1;
        lines.push_back(bytes.substr(start, end - start));
        start = end;
    }
    return lines;
}

// A new stretch where the speed (or the restart) changes, else the last one goes on.
void Follow(std::vector<SpeedStretch>& stretches, double seconds, int baud, bool restarting)
{
    if (!stretches.empty() && stretches.back().baud == baud && stretches.back().restarting == restarting) {
        stretches.back().to = seconds;
        return;
    }
    if (!stretches.empty()) {
        stretches.back().to = seconds;
    }
    stretches.push_back(SpeedStretch{seconds, seconds, baud, restarting});
}

// The stretches between the lines (streamed ones aside) and from the last line to the end.
std::vector<Wait> FindWaits(const std::vector<SessionLine>& lines, double end)
{
    std::vector<Wait> waits;
    bool started = false;
    double busyUntil = 0.0;
    for (const SessionLine& line : lines) {
        if (line.streamed) {
            continue;
        }
        if (started && line.start - busyUntil >= kMinWaitSeconds) {
            waits.push_back(Wait{busyUntil, line.start});
        }
        busyUntil = started ? std::max(busyUntil, line.end) : line.end;
        started = true;
    }
    if (started && end - busyUntil >= kMinWaitSeconds) {
        waits.push_back(Wait{busyUntil, end});
    }
    return waits;
}

class SessionReader {
public:
    void Read(const WireLogEntry& entry);
    Session Finish();

private:
    // The receiver's answer (or streamed log) under way: the slices of one item of the wire log.
    struct Answer {
        bool open = false;
        std::string meaning;
        double lineStart = 0.0; // when the first byte of the line under way crossed
        double last = 0.0;      // when the last slice crossed
        std::string partial;    // the line under way
        std::string garbled;    // all of it, when it did not get through
    };

    void ReadHeard(const WireLogEntry& entry);
    void ReadOut(const WireLogEntry& entry);
    void ReadEvent(const WireLogEntry& entry);
    void StartAnswer(const WireLogEntry& entry);
    void EndAnswer();
    void AddReceiverLine(const std::string& bytes, double start, double end);
    void AddToolLine(const WireLogEntry& entry, const std::string& bytes, const std::string& label, bool lost);

    Session m_session;
    Answer m_answer;
    bool m_restarting = false;
    bool m_ended = false;
};

void SessionReader::Read(const WireLogEntry& entry)
{
    // Once the command has ended, nobody is left on the line to see what else happens.
    if (m_ended) {
        return;
    }
    // The slices of one answer follow each other with nothing between them; the answer to the
    // next command comes after the command was heard.
    if (m_answer.open && (entry.direction != WireDirection::Out || entry.meaning != m_answer.meaning)) {
        EndAnswer();
    }
    switch (entry.direction) {
    case WireDirection::In: break;
    case WireDirection::Heard: ReadHeard(entry); break;
    case WireDirection::Out: ReadOut(entry); break;
    case WireDirection::Event: ReadEvent(entry); break;
    }
    if (m_ended) {
        return;
    }
    m_session.end = std::max(m_session.end, entry.seconds);
    // The line's speed is the tool's from the moment it uses the line; before, it is whatever the
    // pseudo-terminal started with.
    if (entry.direction != WireDirection::Event) {
        Follow(m_session.lineSpeeds, entry.seconds, entry.lineBaud, false);
    }
    if (entry.direction != WireDirection::Out) {
        // What the receiver sends carries the speed it was queued at: an answer to a speed change
        // leaves at the old speed after the receiver has moved to the new one.
        Follow(m_session.receiverSpeeds, entry.seconds, entry.receiverBaud, m_restarting);
    }
}

void SessionReader::ReadHeard(const WireLogEntry& entry)
{
    if (StartsWith(entry.meaning, kMeaningNoise) || StartsWith(entry.meaning, kMeaningLost)) {
        for (const std::string& line : CutLines(entry.bytes)) {
            AddToolLine(entry, line, ShownBytes(WithoutLineEnd(line)), true);
        }
    } else if (StartsWith(entry.meaning, kMeaningPacket)) {
        AddToolLine(entry, entry.bytes, entry.meaning.substr(0, entry.meaning.find(':')), false);
    } else {
        AddToolLine(entry, entry.bytes, ShownBytes(WithoutLineEnd(entry.bytes)),
                    StartsWith(entry.meaning, kMeaningGarbledLine));
    }
}

void SessionReader::AddToolLine(const WireLogEntry& entry, const std::string& bytes, const std::string& label,
                                bool lost)
{
    SessionLine line;
    line.side = Side::Tool;
    line.start = line.end = entry.seconds;
    line.bytes = bytes;
    line.label = label;
    line.note = entry.meaning;
    line.lost = lost;
    m_session.lines.push_back(line);
}

void SessionReader::ReadOut(const WireLogEntry& entry)
{
    if (!m_answer.open) {
        StartAnswer(entry);
    }
    m_answer.last = entry.seconds;
    if (StartsWith(entry.meaning, kMeaningOutNoise) || StartsWith(entry.meaning, kMeaningOutNothing)) {
        m_answer.garbled += entry.bytes;
        return;
    }
    for (const std::string& piece : CutLines(entry.bytes)) {
        if (m_answer.partial.empty()) {
            m_answer.lineStart = entry.seconds;
        }
        m_answer.partial += piece;
        if (piece.back() == '\n') {
            AddReceiverLine(m_answer.partial, m_answer.lineStart, entry.seconds);
            m_answer.partial.clear();
        }
    }
}

void SessionReader::StartAnswer(const WireLogEntry& entry)
{
    m_answer = Answer();
    m_answer.open = true;
    m_answer.meaning = entry.meaning;
    m_answer.lineStart = entry.seconds;
}

// What did not get through is one line, called by what the receiver meant to send; a line without
// a line end (a prompt) ends with its answer.
void SessionReader::EndAnswer()
{
    const std::string& meaning = m_answer.meaning;
    const bool lost = StartsWith(meaning, kMeaningOutNoise) || StartsWith(meaning, kMeaningOutNothing);
    if (lost) {
        SessionLine line;
        line.side = Side::Receiver;
        line.start = m_answer.lineStart;
        line.end = m_answer.last;
        line.bytes = m_answer.garbled;
        const std::size_t meant = meaning.find(kMeaningMeantToSend);
        line.label = meant == std::string::npos ? meaning : meaning.substr(meant + std::string(kMeaningMeantToSend).size());
        line.note = meaning;
        line.lost = true;
        line.streamed = IsStreamed(line.label);
        m_session.lines.push_back(line);
    } else if (!m_answer.partial.empty()) {
        AddReceiverLine(m_answer.partial, m_answer.lineStart, m_answer.last);
    }
    m_answer = Answer();
}

void SessionReader::AddReceiverLine(const std::string& bytes, double start, double end)
{
    SessionLine line;
    line.side = Side::Receiver;
    line.start = start;
    line.end = end;
    line.bytes = bytes;
    line.note = m_answer.meaning;
    line.streamed = IsStreamed(m_answer.meaning);
    // A streamed sentence differs from the last only in its time; its log's name says what it is.
    line.label = line.streamed ? m_answer.meaning : ShownBytes(WithoutLineEnd(bytes));
    m_session.lines.push_back(line);
}

void SessionReader::ReadEvent(const WireLogEntry& entry)
{
    if (StartsWith(entry.meaning, kMeaningRestarting)) {
        m_restarting = true;
    } else if (StartsWith(entry.meaning, kMeaningBackFromRestart)) {
        m_restarting = false;
    } else if (StartsWith(entry.meaning, kMeaningCommandEnded)) {
        m_session.end = entry.seconds;
        m_ended = true;
    }
}

Session SessionReader::Finish()
{
    if (m_answer.open) {
        EndAnswer();
    }
    for (std::vector<SpeedStretch>* stretches : {&m_session.lineSpeeds, &m_session.receiverSpeeds}) {
        if (!stretches->empty()) {
            stretches->back().to = m_session.end;
        }
    }
    // Answers are complete only after the lines heard meanwhile.
    std::stable_sort(m_session.lines.begin(), m_session.lines.end(),
                     [](const SessionLine& a, const SessionLine& b) { return a.start < b.start; });
    m_session.waits = FindWaits(m_session.lines, m_session.end);
    return m_session;
}

}

Session ReadSession(const std::vector<WireLogEntry>& log)
{
    SessionReader reader;
    for (const WireLogEntry& entry : log) {
        reader.Read(entry);
    }
    return reader.Finish();
}

}
