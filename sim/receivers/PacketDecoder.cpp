#include "sim/receivers/PacketDecoder.h"

#include "sim/text/ByteText.h"
#include "sim/text/Checksums.h"

namespace GnssSim {

namespace {

bool CheckSentenceChecksum(const std::string& line, std::string& problem)
{
    const std::string text = WithoutLineEnd(line);
    const std::size_t star = text.rfind('*');
    if (star == std::string::npos || star + 3 != text.size()) {
        problem = "no checksum";
        return false;
    }
    const std::string expected = NmeaChecksumText(NmeaChecksum(text.substr(1, star - 1)));
    if (UpperCase(text.substr(star + 1)) != expected) {
        problem = "bad checksum (" + text.substr(star + 1) + ", should be " + expected + ")";
        return false;
    }
    return true;
}

}

std::size_t PacketDecoder::Take(const std::string& data, std::size_t pos)
{
    while (pos < data.size() && !m_complete) {
        const char byte = data[pos++];
        const bool inPacket = !m_bytes.empty() ? m_bytes[0] == kPacketStart : byte == kPacketStart;
        m_complete = inPacket ? TakePacketByte(byte) : TakeLineByte(byte);
    }
    return pos;
}

bool PacketDecoder::TakePacketByte(char byte)
{
    m_bytes += byte;
    if (m_bytes.size() == 3 && static_cast<unsigned char>(m_bytes[2]) != (~static_cast<unsigned char>(m_bytes[1]) & 0xFFu)) {
        m_item = DecodedItem();
        m_item.kind = DecodedItem::Kind::Other;
        m_item.bytes = m_bytes;
        m_item.problem = "0x01 not followed by an id and its complement";
        return true;
    }
    if (m_bytes.size() < kHeaderSize) {
        return false;
    }
    const std::size_t length = static_cast<unsigned char>(m_bytes[3]);
    if (m_bytes.size() < kHeaderSize + length + kSumSize) {
        return false;
    }
    FinishPacket();
    return true;
}

void PacketDecoder::FinishPacket()
{
    m_item = DecodedItem();
    m_item.kind = DecodedItem::Kind::Packet;
    m_item.bytes = m_bytes;
    m_item.id = static_cast<unsigned char>(m_bytes[1]);
    const std::size_t length = static_cast<unsigned char>(m_bytes[3]);
    m_item.payload = m_bytes.substr(kHeaderSize, length);
    const std::size_t sumAt = kHeaderSize + length;
    const unsigned sent = static_cast<unsigned char>(m_bytes[sumAt]) |
                          (static_cast<unsigned>(static_cast<unsigned char>(m_bytes[sumAt + 1])) << 8);
    const unsigned computed = PacketSum(m_bytes.substr(0, sumAt));
    m_item.valid = sent == computed && !m_garbled;
    m_item.garbled = m_garbled;
    if (m_garbled) {
        m_item.problem = "noise in the packet";
    } else if (sent != computed) {
        m_item.problem = "bad sum (" + std::to_string(sent) + ", should be " + std::to_string(computed) + ")";
    }
}

bool PacketDecoder::TakeLineByte(char byte)
{
    m_bytes += byte;
    if (byte != '\n' && m_bytes.size() < kMaxLine) {
        return false;
    }
    FinishLine();
    return true;
}

void PacketDecoder::FinishLine()
{
    m_item = DecodedItem();
    m_item.bytes = m_bytes;
    const bool sentence = m_bytes[0] == '$';
    m_item.kind = sentence ? DecodedItem::Kind::Sentence : DecodedItem::Kind::Other;
    m_item.garbled = m_garbled;
    if (m_garbled) {
        m_item.problem = "noise in the line";
    } else if (!sentence) {
        m_item.problem = WithoutLineEnd(m_bytes).empty() ? "empty line" : "not a sentence";
    } else {
        m_item.valid = CheckSentenceChecksum(m_bytes, m_item.problem);
    }
}

DecodedItem PacketDecoder::PopItem()
{
    DecodedItem item = m_item;
    Clear();
    return item;
}

void PacketDecoder::Clear()
{
    m_bytes.clear();
    m_garbled = false;
    m_complete = false;
    m_item = DecodedItem();
}

}
