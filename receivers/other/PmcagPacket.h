#ifndef GNSS_RECEIVERS_OTHER_PMCAGPACKET_H
#define GNSS_RECEIVERS_OTHER_PMCAGPACKET_H

#include <cstdint>
#include <vector>

using PmcagPacket = std::vector<std::uint8_t>;

// A binary packet of the "$PMCAG" receivers: 0x01, the id, the id's complement, the payload
// length, the payload, then the 16-bit sum of all those bytes, little-endian. The length is one
// byte on the wire, hence its type.
PmcagPacket BuildPmcagPacket(std::uint8_t id, const std::uint8_t* payload, std::uint8_t length);

#endif
