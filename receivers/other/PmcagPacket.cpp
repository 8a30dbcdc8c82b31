#include "receivers/other/PmcagPacket.h"

namespace {

constexpr std::uint8_t kPacketStart = 0x01;
constexpr std::size_t kHeaderSize = 4;
constexpr std::size_t kSumSize = 2;

void AppendLittleEndianSum(PmcagPacket& packet)
{
    std::uint16_t sum = 0;
    for (std::uint8_t byte : packet) {
        sum = static_cast<std::uint16_t>(sum + byte);
    }
    packet.push_back(static_cast<std::uint8_t>(sum & 0xFF));
    packet.push_back(static_cast<std::uint8_t>(sum >> 8));
}

}  // namespace

PmcagPacket BuildPmcagPacket(std::uint8_t id, const std::uint8_t* payload, std::uint8_t length)
{
    PmcagPacket packet;
    packet.reserve(kHeaderSize + length + kSumSize);
    packet.push_back(kPacketStart);
    packet.push_back(id);
    packet.push_back(static_cast<std::uint8_t>(~id));
    packet.push_back(length);
    for (int i = 0; i < length; ++i) {
        packet.push_back(payload[i]);
    }
    AppendLittleEndianSum(packet);
    return packet;
}
