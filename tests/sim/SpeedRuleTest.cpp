#include "SimTestSupport.h"
#include "SlaveLine.h"

#include "sim/ByteText.h"

using namespace GnssSim;

namespace {

bool HasPrintableOrLineEnd(const std::string& bytes)
{
    for (unsigned char byte : bytes) {
        if ((byte >= 0x20 && byte < 0x7F) || byte == '\n' || byte == '\r') {
            return true;
        }
    }
    return false;
}

}

TEST(SpeedRule, MatchingSpeedsGiveTheReplyAndAVersionLogWithARightCrc)
{
    auto sim = StartSimulator(TestOptions("oem7700"));
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("log versiona once\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "<OK\r\n");
    const std::string log = line.ReadLine(kReplyMs);
    EXPECT_EQ(log.rfind("[COM1]#VERSIONA,COM1,", 0), 0u) << EscapeBytes(log);
    EXPECT_TRUE(HasValidNovatelCrc(log)) << EscapeBytes(log);
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_EQ(sim->HeardLines(), std::vector<std::string>{"log versiona once\r\n"});
}

TEST(SpeedRule, ToolAtTheWrongSpeedIsHeardAsNoiseAndGetsNoLine)
{
    auto sim = StartSimulator(TestOptions("oem7700"));
    SlaveLine line(sim->SlavePath(), 9600);
    line.Write("log versiona once\r\n");
    const std::string received = line.ReadFor(kSilenceMs);
    ASSERT_TRUE(sim->WaitForQuiet());
    const std::vector<HeardEntry> heard = sim->Heard();
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].kind, HeardKind::Noise);
    EXPECT_EQ(heard[0].bytes, "log versiona once\r\n");
    EXPECT_EQ(heard[0].lineBaud, 9600);
    EXPECT_EQ(heard[0].receiverBaud, 115200);
    EXPECT_FALSE(HasPrintableOrLineEnd(received)) << EscapeBytes(received);
}

TEST(SpeedRule, ReceiverOutputAtTheWrongSpeedReachesTheToolAsNoiseOnly)
{
    auto sim = StartSimulator(TestOptions("oem6"));
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("log gpgga ontime 0.05\r\n");
    EXPECT_EQ(line.ReadUntil("<OK", kReplyMs).find("<OK"), 2u);
    ASSERT_TRUE(sim->WaitForQuiet());
    line.SetBaud(9600);
    line.Flush();
    const std::string slowListener = line.ReadFor(kSilenceMs);
    EXPECT_FALSE(HasPrintableOrLineEnd(slowListener)) << EscapeBytes(slowListener);
    line.SetBaud(230400);
    line.Flush();
    const std::string fastListener = line.ReadFor(kSilenceMs);
    EXPECT_FALSE(HasPrintableOrLineEnd(fastListener)) << EscapeBytes(fastListener);
    EXPECT_NE(fastListener.find('\0'), std::string::npos) << "a fast listener reads long low levels as NUL";
    EXPECT_LT(slowListener.size(), fastListener.size()) << "a slow listener catches fewer frames";
}

TEST(SpeedRule, NoiseBetweenCommandsIsDroppedButNoiseInsideOneSpoilsIt)
{
    auto sim = StartSimulator(TestOptions("oem6"));
    SlaveLine line(sim->SlavePath(), 9600);
    line.Write("junk\r\n");
    ASSERT_TRUE(sim->WaitForQuiet());
    line.SetBaud(115200);
    EXPECT_EQ(ReplyTo(line, "echo off"), "<OK");
    line.Write("log ver");
    ASSERT_TRUE(sim->WaitForQuiet());
    line.SetBaud(9600);
    line.Write("siona");
    ASSERT_TRUE(sim->WaitForQuiet());
    line.SetBaud(115200);
    EXPECT_EQ(ReplyTo(line, " once"), "<ERROR:Invalid Message. Field = 1");
    const std::vector<HeardEntry> heard = sim->Heard();
    ASSERT_EQ(heard.size(), 4u);
    EXPECT_EQ(heard[0].kind, HeardKind::Noise);
    EXPECT_EQ(heard[1].bytes, "echo off\r\n");
    EXPECT_EQ(heard[2].kind, HeardKind::Noise);
    EXPECT_TRUE(heard[3].garbled);
    EXPECT_EQ(heard[3].bytes, "log ver once\r\n");
}
