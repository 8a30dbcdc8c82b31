#include "sim/line/Transmitter.h"

#include "sim/line/NoiseMaker.h"
#include "sim/line/Pty.h"
#include "sim/line/WireLog.h"
#include "sim/line/WireMeanings.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace GnssSim {

namespace {

// Paced output wakes at most once a millisecond: slices of one byte would cost a wake-up every
// 87 microseconds at 115200 baud, for no difference the tool could see in the lines it reads.
constexpr std::chrono::nanoseconds kPacingSlice = std::chrono::milliseconds(1);

// A start bit, eight data bits and a stop bit.
const long long kBitsPerByte = 10;

// A pending hang-up waits this long at most for the tool to read the last bytes, and looks every
// few milliseconds: the kernel tells nobody when the slave side reads.
constexpr std::chrono::milliseconds kHangUpGrace(1000);
constexpr std::chrono::milliseconds kHangUpCheck(5);

}

Transmitter::Transmitter(Pty& pty, WireLog& wireLog, NoiseMaker& noise, bool pace)
    : m_pty(pty), m_wireLog(wireLog), m_noise(noise), m_pace(pace)
{
}

void Transmitter::Queue(OutputItem item, TimePoint now)
{
    if (m_hangUp != HangUp::None || item.bytes.empty()) {
        return;
    }
    item.bytes = WithNoiseBetweenLines(item.bytes);
    item.notBefore = std::max(item.notBefore, now);
    m_queue.push_back(item);
}

std::string Transmitter::WithNoiseBetweenLines(const std::string& bytes)
{
    std::string out;
    for (char byte : bytes) {
        if (m_atLineStart && m_noiseBetweenLines > 0) {
            out += m_noise.Burst(static_cast<std::size_t>(m_noiseBetweenLines));
        }
        m_atLineStart = byte == '\n';
        out += byte;
    }
    return out;
}

void Transmitter::Service(TimePoint now)
{
    if (m_hangUp == HangUp::Pending) {
        HangUpWhenRead(now);
        return;
    }
    while (!m_queue.empty() && now >= HeadStart()) {
        const std::size_t queued = m_queue.size();
        ServiceHead(now);
        if (m_queue.size() == queued) {
            break;
        }
    }
}

TimePoint Transmitter::HeadStart() const
{
    if (m_sentOfHead > 0) {
        return m_headStart;
    }
    const TimePoint notBefore = m_queue.front().notBefore;
    return m_pace ? std::max(notBefore, m_lineFreeAt) : notBefore;
}

void Transmitter::ServiceHead(TimePoint now)
{
    if (m_sentOfHead == 0) {
        m_headStart = HeadStart();
    }
    const OutputItem item = m_queue.front();
    const std::size_t due = m_pace ? BytesDueOfHead(now) : item.bytes.size();
    if (due > m_sentOfHead) {
        Write(item, item.bytes.substr(m_sentOfHead, due - m_sentOfHead), now);
        m_sentOfHead = due;
        m_lastWrite = now;
    }
    if (m_hangUp != HangUp::None) {
        m_queue.clear();
        m_sentOfHead = 0;
        return;
    }
    if (m_sentOfHead >= item.bytes.size()) {
        m_lineFreeAt = m_headStart + ByteTime(item.receiverBaud) * static_cast<long>(item.bytes.size());
        m_queue.pop_front();
        m_sentOfHead = 0;
    }
}

std::size_t Transmitter::BytesDueOfHead(TimePoint now) const
{
    const OutputItem& item = m_queue.front();
    const long elapsedBytes = static_cast<long>((now - m_headStart) / ByteTime(item.receiverBaud));
    return std::min(item.bytes.size(), static_cast<std::size_t>(elapsedBytes) + 1);
}

std::chrono::nanoseconds Transmitter::ByteTime(int baud) const
{
    return std::chrono::nanoseconds(1000000000LL * kBitsPerByte / std::max(baud, 1));
}

TimePoint Transmitter::NextWake() const
{
    if (m_hangUp == HangUp::Pending) {
        return std::min(m_hangUpDeadline, m_lastWrite + kHangUpCheck);
    }
    if (m_queue.empty()) {
        return Never();
    }
    if (m_sentOfHead == 0) {
        return HeadStart();
    }
    const TimePoint nextByte = m_headStart + ByteTime(m_queue.front().receiverBaud) * static_cast<long>(m_sentOfHead);
    return std::max(nextByte, m_lastWrite + kPacingSlice);
}

void Transmitter::Write(const OutputItem& item, std::string slice, TimePoint now)
{
    const bool hangUpNow = m_hangUpAfter >= 0 && m_bytesSent + static_cast<long>(slice.size()) > m_hangUpAfter;
    if (hangUpNow) {
        slice.resize(static_cast<std::size_t>(m_hangUpAfter - m_bytesSent));
    }
    const int lineBaud = m_pty.LineBaud();
    if (!slice.empty()) {
        WriteToLine(slice, item, lineBaud, now);
        m_bytesSent += static_cast<long>(slice.size());
    }
    if (hangUpNow) {
        m_hangUp = HangUp::Pending;
        m_hangUpDeadline = now + kHangUpGrace;
        m_lastWrite = now;
    }
}

void Transmitter::HangUpWhenRead(TimePoint now)
{
    m_lastWrite = now;
    if (m_pty.ToolHasUnreadInput() && now < m_hangUpDeadline) {
        return;
    }
    const int lineBaud = m_pty.LineBaud();
    m_pty.HangUp();
    m_hangUp = HangUp::Done;
    m_wireLog.Add(now, WireDirection::Event, lineBaud, 0, "",
                  "hang-up after " + std::to_string(m_bytesSent) + " bytes sent (fault)");
}

void Transmitter::WriteToLine(const std::string& bytes, const OutputItem& item, int lineBaud, TimePoint now)
{
    const bool speedsMatch = lineBaud == item.receiverBaud;
    const std::string onLine = speedsMatch ? bytes : m_noise.Garble(bytes, item.receiverBaud, lineBaud);
    std::string meaning = item.meaning;
    if (!speedsMatch) {
        meaning = (onLine.empty() ? kMeaningOutNothing : kMeaningOutNoise) + std::string("line at ") +
                  std::to_string(lineBaud) + ", receiver at " + std::to_string(item.receiverBaud) +
                  kMeaningMeantToSend + item.meaning;
    }
    ssize_t written = 0;
    if (!onLine.empty()) {
        written = write(m_pty.MasterFd(), onLine.data(), onLine.size());
        if (written < 0) {
            meaning += errno == EAGAIN ? "; dropped: the line's buffer is full" : "; dropped: write failed";
            written = 0;
        } else if (static_cast<std::size_t>(written) < onLine.size()) {
            meaning += "; the line's buffer is full, " + std::to_string(onLine.size() - written) + " bytes dropped";
        }
    }
    m_wireLog.Add(now, WireDirection::Out, lineBaud, item.receiverBaud,
                  onLine.substr(0, static_cast<std::size_t>(written)), meaning);
}

}
