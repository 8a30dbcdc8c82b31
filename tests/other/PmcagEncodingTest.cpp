#include "receivers/other/NmeaChecksum.h"
#include "receivers/other/PmcagOutputSentence.h"
#include "receivers/other/PmcagPacket.h"
#include "receivers/other/PmcagSbasBlocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <limits>

namespace {

SbasPrnFlags AllExcept(std::initializer_list<int> disabledPrns)
{
    SbasPrnFlags flags;
    flags.fill(true);
    for (int prn : disabledPrns) {
        flags[static_cast<std::size_t>(prn - kFirstSbasPrn)] = false;
    }
    return flags;
}

PmcagOutputSettings AllAt(float hz, bool on)
{
    return {{hz, on}, {hz, on}, {hz, on}, {hz, on}, {hz, on}};
}

}  // namespace

TEST(NmeaChecksum, MatchesTheReceiversFixedSentences)
{
    EXPECT_EQ("$PMCAG,000,0*58\r\n", FinishNmeaSentence("$PMCAG,000,0"));
    EXPECT_EQ("$PMCAG,004,908*5D\r\n", FinishNmeaSentence("$PMCAG,004,908"));
    // Only the characters between '$' and '*' count, and a small sum keeps its leading zero.
    EXPECT_EQ(NmeaChecksum("$PMCAG,000,0"), NmeaChecksum("$PMCAG,000,0*58"));
    EXPECT_EQ("$AB*03\r\n", FinishNmeaSentence("$AB"));
}

TEST(PmcagPacket, HeaderPayloadAndLittleEndianSum)
{
    const std::uint8_t commit[] = {0x40};
    EXPECT_EQ((PmcagPacket{0x01, 0x6E, 0x91, 0x01, 0x40, 0x41, 0x01}),
              BuildPmcagPacket(110, commit, 1));

    // A sum above 255 carries into the high byte; the sum wraps at 65536.
    EXPECT_EQ((PmcagPacket{0x01, 0x00, 0xFF, 0x00, 0x00, 0x01}), BuildPmcagPacket(0, commit, 0));
    std::uint8_t high[255];
    std::fill(std::begin(high), std::end(high), 0xFF);
    const PmcagPacket big = BuildPmcagPacket(0xFF, high, 255);
    ASSERT_EQ(4u + 255u + 2u, big.size());
    const unsigned sum = (0x01 + 0xFF + 0x00 + 0xFF + 255u * 0xFF) % 65536u;
    EXPECT_EQ(sum & 0xFF, big[259]);
    EXPECT_EQ(sum >> 8, big[260]);
}

TEST(PmcagOutputSentence, PeriodTexts)
{
    EXPECT_EQ("999", PmcagPeriodText(5.0f));
    EXPECT_EQ("999", PmcagPeriodText(2.0f));
    EXPECT_EQ("001", PmcagPeriodText(1.0f));
    EXPECT_EQ("001", PmcagPeriodText(1.9f));
    // Negative rates are not clamped: 1 / -1 and 1 / -3 as integers.
    EXPECT_EQ("-01", PmcagPeriodText(-1.5f));
    EXPECT_EQ("000", PmcagPeriodText(-3.0f));
}

// The console's tool divided by the whole hertz, so a rate below 1 Hz ended the process with
// SIGFPE, also for a message that is off. The signal must come on purpose, with every build.
TEST(PmcagOutputSentenceDeathTest, RateBelowOneHertzEndsTheProcessWithSigfpe)
{
    PmcagOutputSettings settings = AllAt(1.0f, false);
    settings.zda.hz = 0.2f;
    EXPECT_EXIT(BuildPmcagOutputSentence(settings), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(PmcagPeriodText(0.0f), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(PmcagPeriodText(std::numeric_limits<float>::quiet_NaN()),
                testing::KilledBySignal(SIGFPE), "");
}

TEST(PmcagSbasBlocks, ModeBlockForEachSbasAndType0Setting)
{
    PmcagModeBlock expected{};
    expected[0] = 2;
    expected[1] = 0x78;
    expected[3] = 0x40;
    EXPECT_EQ(expected, BuildPmcagModeBlock(false, false));
    EXPECT_EQ(expected, BuildPmcagModeBlock(false, true));
    expected[12] = 3;
    EXPECT_EQ(expected, BuildPmcagModeBlock(true, false));
    expected[0] = 0x8C;
    expected[2] = 0x78;
    expected[12] = 5;
    EXPECT_EQ(expected, BuildPmcagModeBlock(true, true));
}

TEST(PmcagSbasBlocks, DisabledPrnsAreMarkedOnlyWhenTheFlagsDiffer)
{
    const PmcagPrnBlock blankA = {'U', 'G', 'P', 'S', '-', '0', 'G', '5', 0, 0, 0, 0};
    const PmcagPrnBlock blankB = {'U', 'G', 'P', 'S', '-', '0', 'G', '4', 0, 0, 0, 0};
    SbasPrnFlags none{};
    EXPECT_EQ(blankA, BuildPmcagPrnBlockA(none));
    EXPECT_EQ(blankB, BuildPmcagPrnBlockB(none));
    EXPECT_EQ(blankA, BuildPmcagPrnBlockA(AllExcept({})));
    EXPECT_EQ(blankB, BuildPmcagPrnBlockB(AllExcept({})));

    const SbasPrnFlags two = AllExcept({120, 133});
    PmcagPrnBlock a = blankA;
    a[8] = 0x10;
    PmcagPrnBlock b = blankB;
    b[10] = 0x80;
    EXPECT_EQ(a, BuildPmcagPrnBlockA(two));
    EXPECT_EQ(b, BuildPmcagPrnBlockB(two));

    // Every represented PRN disabled; 128, 136 and 139 upward cannot be told to the receiver.
    const SbasPrnFlags represented = AllExcept(
        {120, 121, 122, 123, 124, 125, 126, 127, 129, 130, 131, 132, 133, 134, 135, 137, 138});
    a[8] = 0x7F;
    a[9] = 0x81;
    b[11] = 0x7F;
    EXPECT_EQ(a, BuildPmcagPrnBlockA(represented));
    EXPECT_EQ(b, BuildPmcagPrnBlockB(represented));
    EXPECT_EQ(blankA, BuildPmcagPrnBlockA(AllExcept({128, 136, 139, 158})));
    EXPECT_EQ(blankB, BuildPmcagPrnBlockB(AllExcept({128, 136, 139, 158})));
}
