#ifndef GNSS_SIM_TEXT_CHECKSUMS_H
#define GNSS_SIM_TEXT_CHECKSUMS_H

#include <cstdint>
#include <string>

// The receiver's own check values, written from the receiver's side and sharing nothing with the
// tool, so that a misreading of a check value cannot hide on both sides of the line.
namespace GnssSim {

// NovAtel's 32-bit CRC of an ASCII log: reflected polynomial 0xEDB88320, initial value 0, no
// final XOR, over the bytes between '#' and '*' (both excluded).
std::uint32_t NovatelCrc32(const std::string& bytes);

// The CRC as the log carries it: eight lower-case hexadecimal digits.
std::string NovatelCrcText(std::uint32_t crc);

// NMEA checksum: XOR of the characters between '$' and '*' (both excluded).
std::uint8_t NmeaChecksum(const std::string& between);

// The checksum as a sentence carries it: two upper-case hexadecimal digits.
std::string NmeaChecksumText(std::uint8_t checksum);

// The "$PMCAG" binary packet's trailer: the sum of the bytes, modulo 65536.
std::uint16_t PacketSum(const std::string& bytes);

}

#endif
