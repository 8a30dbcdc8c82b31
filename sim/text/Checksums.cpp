#include "sim/text/Checksums.h"

#include <cstdio>
#include <numeric>

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

// A check value as its line carries it, in the printf format given ("%08x", "%02X").
std::string CheckText(const char* format, unsigned value)
{
    char text[16];
    (void)std::snprintf(text, sizeof text, format, value);
    return text;
}

}

std::uint32_t NovatelCrc32(const std::string& bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), std::uint32_t{0}, [](std::uint32_t crc, char byte) {
        return (crc >> 8) ^ CrcOfByte((crc ^ static_cast<unsigned char>(byte)) & 0xFFu);
    });
}

std::string NovatelCrcText(std::uint32_t crc)
{
    return CheckText("%08x", crc);
}

std::uint8_t NmeaChecksum(const std::string& between)
{
    return std::accumulate(between.begin(), between.end(), std::uint8_t{0}, [](std::uint8_t checksum, char character) {
        return static_cast<std::uint8_t>(checksum ^ static_cast<unsigned char>(character));
    });
}

std::string NmeaChecksumText(std::uint8_t checksum)
{
    return CheckText("%02X", checksum);
}

std::uint16_t PacketSum(const std::string& bytes)
{
    // Sixteen-bit arithmetic wraps as the trailer does.
    return std::accumulate(bytes.begin(), bytes.end(), std::uint16_t{0}, [](std::uint16_t sum, char byte) {
        return static_cast<std::uint16_t>(sum + static_cast<unsigned char>(byte));
    });
}

}
