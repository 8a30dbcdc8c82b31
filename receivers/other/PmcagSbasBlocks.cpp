#include "receivers/other/PmcagSbasBlocks.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kModeSbasByte = 12;  // 3: SBAS on, 5: SBAS with type 0 messages, 0: off

constexpr int kPrnMaskStart = 8;  // the PRN blocks' bytes 8 to 11 carry the disabled PRNs

bool Disabled(const SbasPrnFlags& prnEnabled, int prn)
{
    return !prnEnabled[static_cast<std::size_t>(prn - kFirstSbasPrn)];
}

// All set means "all PRNs" and all clear means "none chosen": the receiver is then left to use
// every PRN it knows, so no PRN is marked disabled.
bool AllFlagsEqual(const SbasPrnFlags& prnEnabled)
{
    return std::all_of(prnEnabled.begin(), prnEnabled.end(),
                       [&](bool flag) { return flag == prnEnabled.front(); });
}

PmcagPrnBlock PrnBlockHeader(char lastNameCharacter)
{
    PmcagPrnBlock block{};
    std::memcpy(block.data(), "UGPS-0G", 7);
    block[7] = static_cast<std::uint8_t>(lastNameCharacter);
    return block;
}

// Bit k of the result is set when PRN firstPrn + k is disabled, for k below count.
std::uint8_t DisabledMask(const SbasPrnFlags& prnEnabled, int firstPrn, int count)
{
    std::uint8_t mask = 0;
    for (int k = 0; k < count; ++k) {
        if (Disabled(prnEnabled, firstPrn + k)) {
            mask = static_cast<std::uint8_t>(mask | (1u << k));
        }
    }
    return mask;
}

}  // namespace

PmcagModeBlock BuildPmcagModeBlock(bool useSbas, bool allowType0)
{
    // Bytes 0 to 3 are the receiver's own settings, as the receivers in service were configured;
    // the type 0 variant changes the first byte and adds the third.
    PmcagModeBlock block{};
    block[0] = 2;
    block[1] = 0x78;
    block[3] = 0x40;
    if (!allowType0) {
        block[kModeSbasByte] = useSbas ? 3 : 0;
    } else if (useSbas) {
        block[0] = 0x8C;
        block[2] = 0x78;
        block[kModeSbasByte] = 5;
    } else {
        block[kModeSbasByte] = 0;
    }
    return block;
}

PmcagPrnBlock BuildPmcagPrnBlockA(const SbasPrnFlags& prnEnabled)
{
    PmcagPrnBlock block = PrnBlockHeader('5');
    if (AllFlagsEqual(prnEnabled)) {
        return block;
    }
    block[kPrnMaskStart] = DisabledMask(prnEnabled, 129, 7);
    block[kPrnMaskStart + 1] = static_cast<std::uint8_t>((Disabled(prnEnabled, 137) ? 0x01 : 0) |
                                                         (Disabled(prnEnabled, 138) ? 0x80 : 0));
    return block;
}

PmcagPrnBlock BuildPmcagPrnBlockB(const SbasPrnFlags& prnEnabled)
{
    PmcagPrnBlock block = PrnBlockHeader('4');
    if (AllFlagsEqual(prnEnabled)) {
        return block;
    }
    block[kPrnMaskStart + 2] = Disabled(prnEnabled, 120) ? 0x80 : 0;
    block[kPrnMaskStart + 3] = DisabledMask(prnEnabled, 121, 7);
    return block;
}
