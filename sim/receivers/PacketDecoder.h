#ifndef GNSS_SIM_RECEIVERS_PACKETDECODER_H
#define GNSS_SIM_RECEIVERS_PACKETDECODER_H

#include <string>

namespace GnssSim {

// One thing a "$PMCAG" receiver took from its input.
struct DecodedItem {
    enum class Kind {
        Sentence, // a text line beginning with '$', line end included
        Packet,   // 0x01, id, complemented id, length, payload, 16-bit little-endian sum
        Other,    // a line that is no sentence, or bytes that cannot start a packet
    };
    Kind kind = Kind::Other;
    std::string bytes;    // everything taken for the item
    bool valid = false;   // sentence: "*HH" checksum present and right; packet: sum right
    bool garbled = false; // noise arrived while the item was being read
    std::string problem;  // why it is not valid
    int id = -1;          // packet id
    std::string payload;  // packet payload
};

// The receiver's input decoder for the "$PMCAG" family, which mixes checksummed sentences with
// binary packets. A 0x01 byte where a line would begin starts a packet; anything else starts a
// text line, which ends at LF.
class PacketDecoder {
public:
    // Takes bytes from data, starting at pos, until one item is complete or data ends; returns
    // the position after the bytes taken.
    std::size_t Take(const std::string& data, std::size_t pos);

    bool HasItem() const { return m_complete; }
    DecodedItem PopItem();

    // Noise arrived: an item under way has lost bytes (the UART drops framing errors, so noise
    // between items leaves nothing behind).
    void OnNoise() { m_garbled = m_garbled || !m_bytes.empty(); }
    void Clear();

private:
    static const char kPacketStart = 0x01;
    static const std::size_t kHeaderSize = 4;
    static const std::size_t kSumSize = 2;
    static const std::size_t kMaxLine = 1024;

    bool TakePacketByte(char byte);
    bool TakeLineByte(char byte);
    void FinishPacket();
    void FinishLine();

    std::string m_bytes;
    bool m_garbled = false;
    bool m_complete = false;
    DecodedItem m_item;
};

}

#endif
