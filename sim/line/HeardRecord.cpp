#include "sim/line/HeardRecord.h"

#include "sim/text/ByteText.h"

namespace GnssSim {

namespace {

std::string TranscriptLine(const HeardEntry& entry)
{
    switch (entry.kind) {
    case HeardKind::Line:
        return std::string(entry.garbled ? "garbled line \"" : "line \"") + EscapeBytes(entry.bytes) + "\" -> " +
               entry.verdict;
    case HeardKind::Noise:
        return "noise at " + std::to_string(entry.lineBaud) + " baud, receiver at " +
               std::to_string(entry.receiverBaud);
    case HeardKind::Lost:
        return "lost while restarting";
    case HeardKind::Packet:
        return "packet " + std::to_string(entry.packetId) + " [" + HexBytes(entry.payload) + "] -> " + entry.verdict;
    }
    return std::string();
}

}

bool HeardEntry::IsEmptyLine() const
{
    return kind == HeardKind::Line && WithoutLineEnd(bytes).empty();
}

void HeardRecord::AddLine(const std::string& bytes, int lineBaud, int receiverBaud, bool garbled,
                          const std::string& verdict)
{
    Append(HeardKind::Line, bytes, lineBaud, receiverBaud, verdict).garbled = garbled;
}

void HeardRecord::AddNoise(const std::string& bytes, int lineBaud, int receiverBaud)
{
    AddRun(HeardKind::Noise, bytes, lineBaud, receiverBaud);
}

void HeardRecord::AddLost(const std::string& bytes, int lineBaud, int receiverBaud)
{
    AddRun(HeardKind::Lost, bytes, lineBaud, receiverBaud);
}

void HeardRecord::AddRun(HeardKind kind, const std::string& bytes, int lineBaud, int receiverBaud)
{
    if (!m_entries.empty()) {
        HeardEntry& last = m_entries.back();
        if (last.kind == kind && last.lineBaud == lineBaud && last.receiverBaud == receiverBaud) {
            last.bytes += bytes;
            return;
        }
    }
    Append(kind, bytes, lineBaud, receiverBaud, kind == HeardKind::Noise ? "noise" : "lost");
}

void HeardRecord::AddPacket(const std::string& bytes, int id, const std::string& payload, bool sumOk, int baud,
                            const std::string& verdict)
{
    HeardEntry& entry = Append(HeardKind::Packet, bytes, baud, baud, verdict);
    entry.packetId = id;
    entry.payload = payload;
    entry.sumOk = sumOk;
}

HeardEntry& HeardRecord::Append(HeardKind kind, const std::string& bytes, int lineBaud, int receiverBaud,
                                const std::string& verdict)
{
    HeardEntry entry;
    entry.kind = kind;
    entry.bytes = bytes;
    entry.lineBaud = lineBaud;
    entry.receiverBaud = receiverBaud;
    entry.verdict = verdict;
    m_entries.push_back(entry);
    return m_entries.back();
}

std::vector<std::string> HeardLines(const std::vector<HeardEntry>& entries, bool includeEmpty)
{
    std::vector<std::string> lines;
    for (const HeardEntry& entry : entries) {
        if (entry.IsLine() && (includeEmpty || !entry.IsEmptyLine())) {
            lines.push_back(entry.bytes);
        }
    }
    return lines;
}

std::string FormatHeardTranscript(const std::vector<HeardEntry>& entries)
{
    std::string transcript;
    for (const HeardEntry& entry : entries) {
        transcript += TranscriptLine(entry) + "\n";
    }
    return transcript;
}

}
