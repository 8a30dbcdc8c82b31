#include "SimTestSupport.h"
#include "SlaveLine.h"

#include "sim/ByteText.h"

#include <chrono>

using namespace GnssSim;

namespace {

long MsSince(std::chrono::steady_clock::time_point start)
{
    return static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count());
}

std::unique_ptr<Simulator> StartWithFaults(const std::string& receiver, const std::vector<Fault>& faults)
{
    SimOptions options = TestOptions(receiver);
    options.faults = faults;
    return StartSimulator(options);
}

}

TEST(FaultWire, NoAnswerSilencesExactlyTheNamedCommand)
{
    auto sim = StartWithFaults("oem7700", {Fault::NoAnswer("SBASCONTROL ENABLE"), Fault::NoAnswer("LOCKOUTSYSTEM BEIDOU")});
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "sbascontrol enable"), "");
    EXPECT_EQ(ReplyTo(line, "SBASCONTROL ENABLE AUTO"), "<OK");
    EXPECT_EQ(ReplyTo(line, "UNLOCKOUTSYSTEM BEIDOU"), "<OK");
    EXPECT_EQ(ReplyTo(line, "LOCKOUTSYSTEM BEIDOU"), "");
    EXPECT_EQ(sim->State().settings.count("LOCKOUTSYSTEM BEIDOU"), 0u) << "a dropped command is not carried out";
    const std::vector<HeardEntry> heard = sim->Heard();
    ASSERT_EQ(heard.size(), 4u);
    EXPECT_EQ(heard[0].verdict, "no answer (fault)");
    EXPECT_EQ(heard[3].verdict, "no answer (fault)");
}

TEST(FaultWire, DelayedAnswersLeaveLateAndQuietWaitsForThem)
{
    const long delayMs = 300;
    auto sim = StartWithFaults("oem6", {Fault::Delay(delayMs, "echo off")});
    SlaveLine line(sim->SlavePath(), 115200);
    const auto sent = std::chrono::steady_clock::now();
    line.Write("echo off\r\n");
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_GE(MsSince(sent), delayMs);
    EXPECT_EQ(line.ReadFor(50), "\r\n<OK\r\n[COM1]") << "the delayed answer is there when quiet returns";
    const auto again = std::chrono::steady_clock::now();
    EXPECT_EQ(ReplyTo(line, "log versiona once"), "<OK");
    EXPECT_LT(MsSince(again), delayMs) << "other commands are answered at once";
}

TEST(FaultWire, NulAndOverLongLinesGoInsideOrBeforeTheAnswer)
{
    auto sim = StartWithFaults("oem6", {Fault::NulInAnswer("echo off"), Fault::NulBeforeAnswer("echo on"),
                                        Fault::LongLineBeforeAnswer("log versiona once", 1200),
                                        Fault::LongLineInAnswer("DYNAMICS LAND", 1000)});
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("echo off\r\n");
    EXPECT_EQ(line.ReadUntil("[COM1]", kReplyMs), std::string("\r\n<\0OK\r\n[COM1]", 14));
    line.Write("log versiona once\r\n");
    EXPECT_EQ(line.ReadUntil("[COM1]", kReplyMs), "\r\n<OK\r\n[COM1]");
    const std::string longLine = line.ReadLine(kReplyMs);
    EXPECT_EQ(longLine.size(), 1202u) << "filler and its line end, before the log";
    EXPECT_EQ(line.ReadLine(kReplyMs).rfind("#VERSIONA,", 0), 0u);
    line.Write("DYNAMICS LAND\r\n");
    const std::string spoiled = line.ReadUntil("[COM1]", kReplyMs);
    EXPECT_EQ(spoiled.size(), 2u + 1000u + 3u + 2u + 6u);
    EXPECT_EQ(spoiled.substr(0, 4), "\r\n<0");
    EXPECT_EQ(spoiled.substr(spoiled.size() - 10), "OK\r\n[COM1]");
    line.Write("echo on\r\n");
    EXPECT_EQ(line.ReadUntil("[COM1]", kReplyMs), std::string("\0\r\n\r\n<OK\r\n[COM1]", 16));
}

TEST(FaultWire, SplitAnswerArrivesInTwoPartsAPauseApart)
{
    const long pauseMs = 400;
    auto sim = StartWithFaults("csi", {Fault::SplitAnswer(pauseMs, "$JAPP")});
    SlaveLine line(sim->SlavePath(), 115200);
    const auto sent = std::chrono::steady_clock::now();
    line.Write("$JAPP\r\n");
    EXPECT_EQ(line.ReadFor(pauseMs / 2), "$>");
    EXPECT_EQ(line.ReadLine(kReplyMs), "JAPP,WAAS,DIFF\r\n");
    EXPECT_GE(MsSince(sent), pauseMs);
}

TEST(FaultWire, NoiseBetweenLinesBuriesEachLineAfterGarbledBytes)
{
    auto sim = StartWithFaults("csi", {Fault::NoiseBetweenLines(8)});
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("$JAPP\r\n");
    const std::string received = line.ReadLine(kReplyMs);
    const std::size_t answer = received.find("$>JAPP,");
    ASSERT_EQ(answer, 8u) << EscapeBytes(received);
    for (std::size_t i = 0; i < answer; ++i) {
        EXPECT_TRUE(static_cast<unsigned char>(received[i]) >= 0x80 || received[i] == '\0') << EscapeBytes(received);
    }
}

TEST(FaultWire, HangUpAfterBytesDropsTheLineMidAnswer)
{
    auto sim = StartWithFaults("oem6", {Fault::HangUpAfterBytes(4)});
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("echo off\r\n");
    EXPECT_EQ(line.ReadFor(kSilenceMs), "\r\n<O");
    EXPECT_TRUE(line.ReadFailed());
    EXPECT_EQ(sim->BytesSent(), 4);
}

TEST(FaultWire, StartAtAnotherSpeedUntilTheNextReset)
{
    auto sim = StartWithFaults("oem7500", {Fault::StartAtBaud(9600)});
    EXPECT_EQ(sim->ReceiverBaud(), 9600);
    SlaveLine line(sim->SlavePath(), 9600);
    EXPECT_EQ(ReplyTo(line, "reset"), "<OK");
    ASSERT_TRUE(sim->WaitForRestartToEnd());
    line.SetBaud(115200);
    EXPECT_EQ(ReplyTo(line, "echo off"), "<OK");
}
