#include "sim/Checksums.h"

#include <cstdio>

namespace GnssSim {

namespace {

const std::uint32_t kNovatelPolynomial = 0xEDB88320u;

std::uint32_t CrcOfByte(std::uint32_t value)
{
    for (int bit = 0; bit < 8; ++bit) {
        value = (value & 1u) ? (value >> 1) ^ kNovatelPolynomial : value >> 1;
    }
    return value;
}

}

std::uint32_t NovatelCrc32(const std::string& bytes)
{
    std::uint32_t crc = 0;
    for (unsigned char byte : bytes) {
        crc = (crc >> 8) ^ CrcOfByte((crc ^ byte) & 0xFFu);
    }
    return crc;
}

std::string NovatelCrcText(std::uint32_t crc)
{
    char text[9];
    std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(crc));
    return text;
}

std::uint8_t NmeaChecksum(const std::string& between)
{
    std::uint8_t checksum = 0;
    for (unsigned char character : between) {
        checksum ^= character;
    }
    return checksum;
}

std::string NmeaChecksumText(std::uint8_t checksum)
{
    char text[3];
    std::snprintf(text, sizeof text, "%02X", static_cast<unsigned>(checksum));
    return text;
}

std::uint16_t PacketSum(const std::string& bytes)
{
    std::uint32_t sum = 0;
    for (unsigned char byte : bytes) {
        sum += byte;
    }
    return static_cast<std::uint16_t>(sum & 0xFFFFu);
}

}
