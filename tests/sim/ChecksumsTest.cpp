#include "sim/Checksums.h"

#include <gtest/gtest.h>

using namespace GnssSim;

// A version log printed in a NovAtel OEMV manual, with the CRC the receiver sent.
const char kManualVersionLog[] =
    "VERSIONA,COM1,0,71.5,FINESTEERING,1362,340308.478,00000008,3681,2291;1,GPSCARD,\"L12RV\",\"DZZ06040010\","
    "\"OEMV2G-2.00-2T\",\"3.000A19\",\"3.000A9\",\"2006/Feb/ 9\",\"17:14:33\"";

TEST(Checksums, NovatelCrcMatchesALogFromTheManual)
{
    EXPECT_EQ(NovatelCrc32(kManualVersionLog), 0x5e8df6e0u);
    EXPECT_EQ(NovatelCrcText(NovatelCrc32(kManualVersionLog)), "5e8df6e0");
    EXPECT_EQ(NovatelCrcText(0x0000abcdu), "0000abcd");
    EXPECT_EQ(NovatelCrc32(""), 0u);
}

TEST(Checksums, NmeaChecksumMatchesKnownSentences)
{
    EXPECT_EQ(NmeaChecksumText(NmeaChecksum("GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,")), "47");
    EXPECT_EQ(NmeaChecksumText(NmeaChecksum("PMCAG,004,908")), "5D");
    EXPECT_EQ(NmeaChecksumText(NmeaChecksum("PMCAG,000,0")), "58");
    EXPECT_EQ(NmeaChecksumText(0x0A), "0A");
}

TEST(Checksums, PacketSumIsTheLowSixteenBitsOfTheByteSum)
{
    EXPECT_EQ(PacketSum(std::string("\x01\x6e\x91\x01\x40", 5)), 0x0141u);
    EXPECT_EQ(PacketSum(std::string(300, '\xff')), (300u * 255u) & 0xFFFFu);
}
