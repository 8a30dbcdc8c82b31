#ifndef GNSS_SIM_LINE_HEARDRECORD_H
#define GNSS_SIM_LINE_HEARDRECORD_H

#include <string>
#include <vector>

namespace GnssSim {

enum class HeardKind {
    Line,   // a line heard while the speeds matched, exactly as received
    Noise,  // bytes that arrived while the tool's speed differed from the receiver's
    Lost,   // bytes that arrived while the receiver was restarting and not listening
    Packet, // a "$PMCAG" binary packet
};

struct HeardEntry {
    HeardKind kind = HeardKind::Line;

    // Line: the line as received, line end included. Noise, Lost: the bytes. Packet: the whole
    // packet from its 0x01 to its sum.
    std::string bytes;

    int lineBaud = 0;     // the tool's speed when the bytes arrived
    int receiverBaud = 0; // the receiver's speed then

    // Line: noise arrived earlier on the same line, so the receiver could not read the line. Its
    // bytes are only those that arrived at the right speed.
    bool garbled = false;

    // What the receiver made of it: "<OK", "<ERROR:Invalid Message. Field = 1", "no answer (fault)",
    // "empty", "rejected: bad checksum", "sum ok" ...
    std::string verdict;

    // Packet only.
    int packetId = -1;
    std::string payload;
    bool sumOk = false;

    bool IsLine() const { return kind == HeardKind::Line; }
    // A line with nothing but its line end.
    bool IsEmptyLine() const;
};

// The ordered record of what the receiver heard. Runs of noise (or of lost bytes) at the same
// speeds make one entry however the kernel cut them into chunks, so that the record does not
// depend on the timing of reads.
class HeardRecord {
public:
    void AddLine(const std::string& bytes, int lineBaud, int receiverBaud, bool garbled, const std::string& verdict);
    void AddNoise(const std::string& bytes, int lineBaud, int receiverBaud);
    void AddLost(const std::string& bytes, int lineBaud, int receiverBaud);
    void AddPacket(const std::string& bytes, int id, const std::string& payload, bool sumOk, int baud,
                   const std::string& verdict);

    const std::vector<HeardEntry>& Entries() const { return m_entries; }
    void Clear() { m_entries.clear(); }

private:
    void AddRun(HeardKind kind, const std::string& bytes, int lineBaud, int receiverBaud);
    // A new entry at the end of the record, with the fields every kind has; the caller fills in
    // the rest.
    HeardEntry& Append(HeardKind kind, const std::string& bytes, int lineBaud, int receiverBaud,
                       const std::string& verdict);

    std::vector<HeardEntry> m_entries;
};

// The lines of the record, exactly as received; empty lines only when includeEmpty is set.
// Garbled lines are included (their bytes are what arrived at the right speed).
std::vector<std::string> HeardLines(const std::vector<HeardEntry>& entries, bool includeEmpty);

// The stable transcript of what the receiver heard, one entry per line, free of timestamps and
// byte counts so that it can be kept as a golden file:
//   line "log versiona once\r\n" -> <OK
//   line "\r\n" -> empty
//   garbled line "\r\n" -> <ERROR:Invalid Message. Field = 1
//   noise at 9600 baud, receiver at 115200
//   lost while restarting
//   packet 110 [40] -> sum ok
// Bytes are escaped as EscapeBytes does; packet payloads are shown in hexadecimal.
std::string FormatHeardTranscript(const std::vector<HeardEntry>& entries);

}

#endif
