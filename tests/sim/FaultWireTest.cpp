#include "tests/sim/SimTestSupport.h"

#include "sim/text/ByteText.h"
#include "util/Stopwatch.h"

#include <algorithm>

using namespace GnssSim;

namespace {

// A delay and a split pause: long enough to tell from an answer sent at once.
constexpr long kLateMs = 400;

}

TEST(FaultMatching, ComparesWholeCommandsWordByWordWithoutCase)
{
    struct Case {
        const char* pattern;
        const char* heard;
        bool matches;
    };
    const Case cases[] = {
        {"SBASCONTROL ENABLE", "sbascontrol enable\r\n", true},
        {"SBASCONTROL ENABLE", "SBASCONTROL ENABLE AUTO\r\n", false},
        {"LOCKOUTSYSTEM BEIDOU", "UNLOCKOUTSYSTEM BEIDOU\r\n", false},
        {"COM COM1 115200", "COM COM1,115200\r\n", true},
        {"ASSIGN *", "ASSIGN 12 AUTO\r\n", true},
        {"ASSIGN *", "ASSIGNALL SBAS AUTO\r\n", false},
        {"$PMCAG,004,908", "$PMCAG,004,908*5D\r\n", true},
    };
    for (const Case& example : cases) {
        EXPECT_EQ(CommandMatches(example.pattern, example.heard), example.matches)
            << example.pattern << " / " << EscapeBytes(example.heard);
    }
}

TEST(FaultWire, EachFaultChangesExactlyTheAnswerItNames)
{
    struct Case {
        const char* receiver;
        Fault fault;
        const char* command;
        std::string received;   // all that reaches the tool
        long lateMs = 0;        // when the last byte may arrive at the earliest
        std::string early{};    // what arrives in the first half of that time
        bool hangsUp = false;
        std::size_t noise = 0;  // garbled bytes that come first
    };
    const Case cases[] = {
        {"oem6", Fault::NoAnswer("SERIALCONFIG 9600"), "serialconfig 9600", ""},
        {"oem6", Fault::NoAnswer("echo on"), "echo off", "\r\n<OK\r\n[COM1]"},
        {"oem6", Fault::Delay(kLateMs, "echo off"), "echo off", "\r\n<OK\r\n[COM1]", kLateMs},
        {"csi", Fault::SplitAnswer(kLateMs, "$JAPP"), "$JAPP", "$>JAPP,WAAS,DIFF\r\n", kLateMs, "$>"},
        {"oem6", Fault::NulInAnswer("echo off"), "echo off", std::string("\r\n<\0OK\r\n[COM1]", 14)},
        {"oem6", Fault::NulBeforeAnswer("echo off"), "echo off", std::string("\0\r\n\r\n<OK\r\n[COM1]", 16)},
        {"oem6", Fault::LongLineInAnswer("echo off", 20), "echo off", "\r\n<0123456789ABCDEF0123OK\r\n[COM1]"},
        {"oem6", Fault::LongLineBeforeAnswer("echo off", 18), "echo off", "0123456789ABCDEF01\r\n\r\n<OK\r\n[COM1]"},
        // The bytes sent before the hang-up reach the tool all the same.
        {"oem6", Fault::HangUpAfterBytes(4), "echo off", "\r\n<O", 0, "", true},
        {"csi", Fault::NoiseBetweenLines(8), "$JAPP", "$>JAPP,WAAS,DIFF\r\n", 0, "", false, 8},
    };
    for (const Case& example : cases) {
        SimulatedReceiver receiver(TestReceiverOptions(example.receiver, {example.fault}));
        PathComPort& port = receiver.OpenPort();
        const Stopwatch clock;
        Send(port, std::string(example.command) + "\r\n");
        std::string received;
        if (example.lateMs > 0) {
            received = ReadFor(port, static_cast<int>(example.lateMs / 2));
            EXPECT_EQ(received, example.early) << DescribeFault(example.fault);
        }
        const std::string last = example.received.substr(std::max<std::size_t>(example.received.size(), 1) - 1);
        received += ReadFor(port, last.empty() ? kSilenceMs : kReplyMs, last);
        EXPECT_TRUE(IsNoise(received.substr(0, example.noise))) << EscapeBytes(received);
        EXPECT_EQ(received.substr(std::min(example.noise, received.size())), example.received)
            << DescribeFault(example.fault) << ": " << EscapeBytes(received);
        EXPECT_GE(clock.ElapsedMs(), example.lateMs) << DescribeFault(example.fault);
        char more[8];
        int count = 0;
        EXPECT_EQ(port.ReadUntil(more, '\n', sizeof more, &count, kSilenceMs), example.hangsUp ? COMERR_READ : 0);
        EXPECT_EQ(count, 0) << DescribeFault(example.fault);
        EXPECT_EQ(receiver.Sim().ReceiverBaud(), kConsoleBaud) << "a silenced command is not carried out";
    }
}

TEST(FaultWire, NmeaFloodStillLetsAnswersThrough)
{
    SimulatedReceiver receiver(TestReceiverOptions("csi", {Fault::NmeaFlood(20)}));
    PathComPort& port = receiver.OpenPort();
    const std::string unasked = ReadFor(port, 500);
    const auto count = [&unasked](const std::string& what) {
        std::size_t found = 0;
        for (std::size_t at = unasked.find(what); at != std::string::npos; at = unasked.find(what, at + 1)) {
            ++found;
        }
        return found;
    };
    // 20 a second for half a second, give or take the one due at the edge.
    EXPECT_GE(count("$GPGGA,"), 9u) << EscapeBytes(unasked);
    EXPECT_LE(count("$GPGGA,"), 11u) << EscapeBytes(unasked);
    EXPECT_EQ(count("$GPRMC,"), count("$GPGGA,"));
    Send(port, "$JAPP\r\n");
    EXPECT_NE(ReadFor(port, kReplyMs, "$>JAPP,WAAS,DIFF\r\n").find("$>JAPP,WAAS,DIFF\r\n"), std::string::npos);
}
