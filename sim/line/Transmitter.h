#ifndef GNSS_SIM_LINE_TRANSMITTER_H
#define GNSS_SIM_LINE_TRANSMITTER_H

#include "sim/line/SimClock.h"

#include <deque>
#include <string>

namespace GnssSim {

class NoiseMaker;
class Pty;
class WireLog;

// Something the receiver sends: a reply, a log, an echo or a streamed sentence.
struct OutputItem {
    std::string bytes;
    int receiverBaud = 0;      // the receiver's speed when it queued the bytes
    std::string meaning;       // for the wire log
    TimePoint notBefore;       // an answer delayed by a fault leaves no earlier than this
    bool answer = true;        // streamed sentences are not answers
};

// The receiver's transmit side: sends what the receiver queued, in order, each item at the speed
// the receiver had when it queued it. Just before each write it samples the speed the tool set on
// the line; when the two differ the tool gets what its UART would make of the bytes (noise, or
// nothing). With pacing, bytes leave at the line's byte rate (10 bits a byte), in slices of at
// least a millisecond.
class Transmitter {
public:
    Transmitter(Pty& pty, WireLog& wireLog, NoiseMaker& noise, bool pace);

    void Queue(OutputItem item, TimePoint now);

    // Writes everything that is due at now.
    void Service(TimePoint now);

    // When Service has something to do next; Never() when nothing is queued.
    TimePoint NextWake() const;

    // Nothing queued: everything the receiver meant to send has been written.
    bool Idle() const { return m_queue.empty(); }

    // Line-wide faults: garbled bytes before every line the receiver starts (0: none), and the
    // number of bytes after which the line drops (negative: never).
    void SetNoiseBetweenLines(long bytes) { m_noiseBetweenLines = bytes; }
    void SetHangUpAfter(long bytes) { m_hangUpAfter = bytes; }

    bool HungUp() const { return m_hangUp == HangUp::Done; }
    long BytesSent() const { return m_bytesSent; }

private:
    std::string WithNoiseBetweenLines(const std::string& bytes);
    void ServiceHead(TimePoint now);
    std::size_t BytesDueOfHead(TimePoint now) const;
    TimePoint HeadStart() const;
    void Write(const OutputItem& item, std::string slice, TimePoint now);
    void HangUpWhenRead(TimePoint now);
    void WriteToLine(const std::string& bytes, const OutputItem& item, int lineBaud, TimePoint now);
    std::chrono::nanoseconds ByteTime(int baud) const;

    Pty& m_pty;
    WireLog& m_wireLog;
    NoiseMaker& m_noise;
    const bool m_pace;

    std::deque<OutputItem> m_queue;
    std::size_t m_sentOfHead = 0;
    TimePoint m_headStart;
    TimePoint m_lineFreeAt;
    TimePoint m_lastWrite;
    bool m_atLineStart = true;
    long m_noiseBetweenLines = 0;
    long m_hangUpAfter = -1;
    long m_bytesSent = 0;

    // The line drops once the tool has read the bytes sent before the hang-up (a hang-up discards
    // what the tool has not read yet), or after a grace period when the tool does not read.
    enum class HangUp { None, Pending, Done };
    HangUp m_hangUp = HangUp::None;
    TimePoint m_hangUpDeadline;
};

}

#endif
