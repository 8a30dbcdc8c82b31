#ifndef GNSS_RECEIVERS_OTHER_PMCAGSBASBLOCKS_H
#define GNSS_RECEIVERS_OTHER_PMCAGSBASBLOCKS_H

#include "receivers/SbasPrnFlags.h"

#include <array>
#include <cstdint>

// The payloads of the "$PMCAG" receivers' SBAS packets. What their bytes mean beyond what is sent
// here is not known; they are sent byte for byte as the receivers in service were configured.

using PmcagModeBlock = std::array<std::uint8_t, 21>;
using PmcagPrnBlock = std::array<std::uint8_t, 12>;

// Packet 83's payload: SBAS on or off, with or without RTCM type 0 messages.
PmcagModeBlock BuildPmcagModeBlock(bool useSbas, bool allowType0);

// Packet 90's first payload, "UGPS-0G5": the disabled PRNs among 129 to 135, 137 and 138.
PmcagPrnBlock BuildPmcagPrnBlockA(const SbasPrnFlags& prnEnabled);

// Packet 90's second payload, "UGPS-0G4": the disabled PRNs among 120 to 127.
PmcagPrnBlock BuildPmcagPrnBlockB(const SbasPrnFlags& prnEnabled);

#endif
