#include "tests/sim/SimTestSupport.h"

#include "sim/text/ByteText.h"
#include "sim/text/Checksums.h"

using namespace GnssSim;

TEST(SpeedRule, ToolAtWrongSpeedSpoilsOnlyACommandUnderWay)
{
    SimulatedReceiver receiver(TestReceiverOptions("oem6"));
    Simulator& sim = receiver.Sim();
    PathComPort& port = receiver.OpenPort(9600);
    Send(port, "log versiona once\r\n");
    EXPECT_EQ(ReadFor(port, kSilenceMs), "");
    ASSERT_TRUE(sim.WaitForQuiet());
    EXPECT_EQ(sim.Heard().at(0).bytes, "log versiona once\r\n");
    port.SetBaudRate(kConsoleBaud);
    EXPECT_EQ(ReplyTo(port, "echo off"), "<OK") << "noise between commands leaves nothing behind";
    Send(port, "log ver");
    ASSERT_TRUE(sim.WaitForQuiet());
    port.SetBaudRate(9600);
    Send(port, "siona");
    ASSERT_TRUE(sim.WaitForQuiet());
    port.SetBaudRate(kConsoleBaud);
    EXPECT_EQ(ReplyTo(port, " once"), "<ERROR:Invalid Message. Field = 1");
    EXPECT_EQ(sim.HeardTranscript(), "noise at 9600 baud, receiver at 115200\n"
                                     "line \"echo off\\r\\n\" -> <OK\n"
                                     "noise at 9600 baud, receiver at 115200\n"
                                     "garbled line \"log ver once\\r\\n\" -> <ERROR:Invalid Message. Field = 1\n");
}

TEST(SpeedRule, ReceiverAtWrongSpeedReachesToolAsNoise)
{
    SimulatedReceiver receiver(TestReceiverOptions("oem6"));
    PathComPort& port = receiver.OpenPort();
    EXPECT_EQ(ReplyTo(port, "log gpgga ontime 0.05"), "<OK");
    port.SetBaudRate(9600);
    port.FlushInput();
    const std::string slowListener = ReadFor(port, kSilenceMs);
    port.SetBaudRate(230400);
    port.FlushInput();
    const std::string fastListener = ReadFor(port, kSilenceMs);
    EXPECT_TRUE(IsNoise(slowListener)) << EscapeBytes(slowListener);
    EXPECT_TRUE(IsNoise(fastListener)) << EscapeBytes(fastListener);
    EXPECT_NE(fastListener.find('\0'), std::string::npos) << "a fast listener reads long low levels as NUL";
    EXPECT_LT(slowListener.size(), fastListener.size()) << "a slow listener catches fewer frames";
}

// A version log printed in a NovAtel OEMV manual, with the CRC the receiver sent.
const char kManualVersionLog[] =
    "VERSIONA,COM1,0,71.5,FINESTEERING,1362,340308.478,00000008,3681,2291;1,GPSCARD,\"L12RV\",\"DZZ06040010\","
    "\"OEMV2G-2.00-2T\",\"3.000A19\",\"3.000A9\",\"2006/Feb/ 9\",\"17:14:33\"";

TEST(Checksums, MatchWhatRealReceiversSent)
{
    EXPECT_EQ(NovatelCrcText(NovatelCrc32(kManualVersionLog)), "5e8df6e0");
    EXPECT_EQ(NovatelCrcText(0x0000abcdu), "0000abcd");
    EXPECT_EQ(NmeaChecksumText(NmeaChecksum("GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,")), "47");
    EXPECT_EQ(NmeaChecksumText(NmeaChecksum("PMCAG,004,908")), "5D");
    EXPECT_EQ(NmeaChecksumText(0x0A), "0A");
    EXPECT_EQ(PacketSum(std::string(300, '\xff')), (300u * 255u) & 0xFFFFu);
}

// Sentences and binary packets, split across reads, with noise between them and inside one.
TEST(PmcagWire, ChecksPacketsAndSentencesDropsNoise)
{
    SimulatedReceiver receiver(TestReceiverOptions("pmcag"));
    Simulator& sim = receiver.Sim();
    PathComPort& port = receiver.OpenPort();
    Send(port, "$PMCAG,004,908*5D\r\n");
    const std::string answer = ReadFor(port, kReplyMs, "\r\n");
    EXPECT_EQ(answer.rfind("$PMCAG,908,", 0), 0u) << EscapeBytes(answer);
    EXPECT_TRUE(HasRightCheck(answer)) << EscapeBytes(answer);
    const std::string commit("\x01\x6e\x91\x01\x40\x41\x01", 7);
    const std::vector<std::pair<int, std::string>> sends = {
        {9600, "junk"}, {kConsoleBaud, commit.substr(0, 3)},
        {kConsoleBaud, commit.substr(3) + std::string("\x01\x53\xac\x02\x00\x10\x13\x01", 8) +
                           "$PMCAG,000,0*58\r\n$PMCAG,000,0*59\r\n$PMCAG,005,0,GGA,001\r\n\x01\x6e\x90\r\n" +
                           commit.substr(0, 4)},
        {9600, "junk"}, {kConsoleBaud, commit.substr(4)}};
    for (const auto& [baud, bytes] : sends) {
        port.SetBaudRate(baud);
        Send(port, bytes);
        ASSERT_TRUE(sim.WaitForQuiet());
    }
    EXPECT_EQ(sim.HeardTranscript(), "line \"$PMCAG,004,908*5D\\r\\n\" -> $PMCAG,908\n"
                                     "noise at 9600 baud, receiver at 115200\n"
                                     "packet 110 [40] -> sum ok\n"
                                     "packet 83 [00 10] -> rejected: bad sum (275, should be 274)\n"
                                     "line \"$PMCAG,000,0*58\\r\\n\" -> accepted\n"
                                     "line \"$PMCAG,000,0*59\\r\\n\" -> rejected: bad checksum (59, should be 58)\n"
                                     "line \"$PMCAG,005,0,GGA,001\\r\\n\" -> rejected: no checksum\n"
                                     "line \"\\x01n\\x90\" -> rejected: 0x01 not followed by an id and its complement\n"
                                     "line \"\\r\\n\" -> empty\n"
                                     "noise at 9600 baud, receiver at 115200\n"
                                     "packet 110 [40] -> rejected: noise in the packet\n");
}
