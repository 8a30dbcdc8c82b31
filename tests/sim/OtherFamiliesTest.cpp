#include "SimTestSupport.h"
#include "SlaveLine.h"

#include "sim/ByteText.h"
#include "sim/Checksums.h"

using namespace GnssSim;

namespace {

std::string Packet(int id, const std::string& payload)
{
    std::string packet = {'\x01', static_cast<char>(id), static_cast<char>(~id & 0xFF), static_cast<char>(payload.size())};
    packet += payload;
    const unsigned sum = PacketSum(packet);
    packet += static_cast<char>(sum & 0xFF);
    packet += static_cast<char>(sum >> 8);
    return packet;
}

}

TEST(CsiWire, AnswersItsProbesAndStreamsWhatJascSwitchesOn)
{
    auto sim = StartSimulator(TestOptions("csi"));
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("$JAPP\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs).rfind("$>JAPP,", 0), 0u);
    line.Write("$JI\r\n");
    const std::vector<std::string> fields = SplitKeepingEmpty(WithoutLineEnd(line.ReadLine(kReplyMs)), ',');
    ASSERT_GE(fields.size(), 8u);
    EXPECT_EQ(fields[0], "$>JI");
    EXPECT_EQ(fields[7], sim->Identity().Main().swVersion);
    line.Write("\r\n$JASC,GPGGA,5\r\n\r\n$JDIFF,WAAS\r\n$JWAASPRN,,,AUTO\r\n");
    const std::string sentence = line.ReadLine(kReplyMs);
    EXPECT_EQ(sentence.rfind("$GPGGA,", 0), 0u) << EscapeBytes(sentence);
    EXPECT_TRUE(HasValidNmeaChecksum(sentence));
    EXPECT_EQ(sim->ActiveLogs().at("GPGGA"), 0.2);
    EXPECT_EQ(sim->State().settings.at("$JDIFF"), "WAAS");
    EXPECT_EQ(sim->State().settings.at("$JWAASPRN"), ",,,AUTO");
    line.Write("$JASC,GPGGA,0\r\n");
    ASSERT_TRUE(sim->WaitForQuiet());
    line.Flush();
    EXPECT_EQ(line.ReadFor(kSilenceMs), "");
}

TEST(PmcagWire, AnswersItsProbeAndDecodesPacketsAndSentences)
{
    auto sim = StartSimulator(TestOptions("pmcag"));
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("$PMCAG,004,908*5D\r\n");
    const std::string answer = line.ReadLine(kReplyMs);
    EXPECT_EQ(answer.rfind("$PMCAG,908,", 0), 0u) << EscapeBytes(answer);
    EXPECT_TRUE(HasValidNmeaChecksum(answer));
    const std::string commit = Packet(110, "\x40");
    EXPECT_EQ(commit, std::string("\x01\x6e\x91\x01\x40\x41\x01", 7));
    std::string badSum = Packet(83, std::string(21, '\0'));
    badSum.back() = '\x7f';
    line.Write(commit.substr(0, 3));
    ASSERT_TRUE(sim->WaitForQuiet());
    line.Write(commit.substr(3) + "$PMCAG,000,0*58\r\n" + badSum + "$PMCAG,000,0*59\r\n" + "$PMCAG,005,0,GGA,001\r\n");
    ASSERT_TRUE(sim->WaitForQuiet());
    const std::vector<HeardEntry> heard = sim->Heard();
    ASSERT_EQ(heard.size(), 6u);
    EXPECT_EQ(heard[1].kind, HeardKind::Packet);
    EXPECT_EQ(heard[1].packetId, 110);
    EXPECT_EQ(heard[1].payload, "\x40");
    EXPECT_TRUE(heard[1].sumOk);
    EXPECT_EQ(heard[2].verdict, "accepted");
    EXPECT_EQ(heard[3].packetId, 83);
    EXPECT_FALSE(heard[3].sumOk);
    EXPECT_EQ(heard[3].verdict.rfind("rejected: bad sum", 0), 0u);
    EXPECT_EQ(heard[4].verdict.rfind("rejected: bad checksum", 0), 0u);
    EXPECT_EQ(heard[5].verdict, "rejected: no checksum");
    EXPECT_EQ(sim->State().settings.at("PACKET 110"), "40");
    EXPECT_EQ(sim->State().settings.count("PACKET 83"), 0u);
}

TEST(SilentWire, HearsEveryLineAndAnswersNone)
{
    auto sim = StartSimulator(TestOptions("silent"));
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("log versiona once\r\n$JAPP\r\n\r\n$PMCAG,004,908*5D\r\n");
    EXPECT_EQ(line.ReadFor(kSilenceMs), "");
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_EQ(sim->HeardLines(), (std::vector<std::string>{"log versiona once\r\n", "$JAPP\r\n", "$PMCAG,004,908*5D\r\n"}));
    EXPECT_EQ(sim->HeardLines(true).size(), 4u);
}
