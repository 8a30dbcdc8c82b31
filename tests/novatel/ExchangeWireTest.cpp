#include "receivers/ReceiverType.h"
#include "receivers/novatel/NovatelExchange.h"
#include "receivers/novatel/VersionLog.h"
#include "sim/model/ReceiverCatalogue.h"
#include "tests/novatel/NovatelWire.h"
#include "tests/support/PseudoTerminal.h"

#include <algorithm>

using namespace NovatelCommon;

namespace {

// The real port on the receiver's line, noting in order when the tool discards and drains.
class RecordingPort : public PathComPort {
public:
    using PathComPort::PathComPort;
    int FlushInput() override { calls.push_back("flush"); return PathComPort::FlushInput(); }
    int Drain() override { calls.push_back("drain"); return PathComPort::Drain(); }
    Lines calls;
};

TEST(Exchange, TakesTheLineReadingInHalvesOfItsTime)
{
    SimulatedReceiver receiver("oem6");
    RecordingPort port(receiver.LinePath());
    port.SetBaudRate(kConsoleBaud);
    ASSERT_EQ(0, port.Open());
    const std::string version = ExchangeCommand(port, "log versiona once", "#VERSIONA", 1000);
    EXPECT_EQ(0u, version.find("#VERSIONA,COM1,")) << version;
    EXPECT_EQ("\r\n", version.substr(version.size() - 2));
    EXPECT_EQ(0u, ReadVersionLine(port).find("[COM1]#VERSIONA,"));
    // An exchange drains, then discards stale input; a version request does it the other way.
    EXPECT_EQ((Lines{"drain", "flush", "flush", "drain"}), port.calls);
    // An error reply is no answer; the last read may run over by its own 150 ms.
    const Stopwatch clock;
    EXPECT_EQ("", ExchangeCommand(port, "LOCKOUTSYSTEM GLONASS", "<OK", 300));
    ExpectTook(clock.ElapsedMs(), 300, 150);
    // "<OK" in two pieces 300 ms apart: 200 ms reads see only pieces, 500 ms reads see it whole.
    receiver.Sim().SetFaults({Fault::SplitAnswer(300, "ECHO OFF")});
    EXPECT_EQ("", ExchangeCommand(port, "echo off", "<OK", 400));
    EXPECT_EQ("<OK\r\n", ExchangeCommand(port, "echo off", "<OK", 1000));
    port.Close();
}

TEST(WaitForOk, TakesOnlyAnOkLineARefusalCostsItsTimeOnce)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    ASSERT_EQ(0, port.Open());
    ASSERT_TRUE(pty.Send("[COM1]<OK\r\n<ERROR:Invalid Message. Field = 1\r\n"));
    EXPECT_FALSE(WaitForOk(port, 100));
    ASSERT_TRUE(pty.Send("\r\n#BESTPOSA,COM1;SOL_COMPUTED\r\n<OK\r\n"));
    EXPECT_TRUE(WaitForOk(port, 100));
    // A prompt left over from the previous reply, and no "<OK". The read that takes the prompt
    // ends a fraction of a millisecond before its time, which must not cost a second full read.
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(pty.Send("[COM1]"));
        ASSERT_TRUE(pty.WaitForSlaveInput(1000));
        const Stopwatch clock;
        EXPECT_FALSE(WaitForOk(port, 200));
        EXPECT_LT(clock.ElapsedMs(), 2 * 200 - 50);
    }
    port.Close();
}

TEST(VersionLog, GenerationIsAskedForAt115200Then19200Then9600)
{
    // The line stays at the rate that answered; when none did, it goes back to where it was.
    struct Case {
        const char* receiver;
        int receiverBaud, portBaud, type, finalPortBaud, requests;
        long waitsMs;  // settling at each rate tried, one-second windows unanswered
    } const cases[] = {
        {"oem6", 9600, 115200, ReceiverType::Oem6, 9600, 1, 3 * 100 + 4 * 1000},
        {"oemv", 115200, 57600, ReceiverType::Unknown, 57600, 2, 3 * 100 + 6 * 1000},
    };
    for (const Case& c : cases) {
        GnssSim::SimOptions options = TestReceiverOptions(c.receiver);
        options.startupBaud = c.receiverBaud;
        SimulatedNovatel receiver(options, c.portBaud);
        const Stopwatch clock;
        EXPECT_EQ(c.type, IdentifyNovatelReceiver(receiver.Port())) << c.receiver;
        ExpectTook(clock.ElapsedMs(), c.waitsMs, c.waitsMs / 2);
        EXPECT_EQ(c.finalPortBaud, receiver.Port().GetBaudRate()) << c.receiver;
        EXPECT_EQ(Lines(c.requests, "log versiona once\r\n"), receiver.Heard()) << c.receiver;
    }
}

TEST(FindReceiverBaud, SilenceCostsFiveSweepsAndRateGoesBack)
{
    SimulatedNovatel receiver(TestReceiverOptions("silent"), 19200);
    const Stopwatch clock;
    EXPECT_EQ(-1, receiver.Configurer().FindReceiverBaud());
    ExpectTook(clock.ElapsedMs(), 6L * 5 * 10 + 5L * 1000, 5L * 500);
    EXPECT_EQ(19200, receiver.Port().GetBaudRate());
}

// The one case that runs the full 30 s search for a receiver restarted by "selectchanconfig".
TEST(ChannelConfig, SilenceAfterRestartCostsAbout36Seconds)
{
    SimulatedNovatel receiver(TestReceiverOptions("oemstarg", SilentTo("ECHO OFF")));
    const Stopwatch clock;
    EXPECT_EQ(0, receiver.Configurer().ApplyChannelConfig(5));
    // 1 s and 5 s of restart; the last attempt, an exchange and a sweep, may begin just before
    // the 30 s of searching are up.
    ExpectTook(clock.ElapsedMs(), 1000 + 5000 + 30000, 1000 + 5 * 10);
    const Lines heard = receiver.Heard();
    EXPECT_EQ(WithLineEnds({"log chanconfiglista once", "selectchanconfig 5", "echo off"}),
              Lines(heard.begin(), heard.begin() + 3));
    // Between the attempts the receiver is commanded back to the line's rate.
    EXPECT_EQ("serialconfig 115200\r\n", heard.back());
    EXPECT_GE(std::count(heard.begin(), heard.end(), "echo off\r\n"), 25);
}

// The one case that runs the default 20 s limit: the receiver acknowledges and stays away.
TEST(Reset, ReceiverNotBackIsGivenUpAfterTwentySeconds)
{
    GnssSim::SimOptions options = TestReceiverOptions("oem6");
    options.restartMs = 60000;
    SimulatedNovatel receiver(options);
    const Stopwatch clock;
    EXPECT_EQ(2, receiver.Configurer().ResetReceiver(-1));
    // The search running when the limit passes (six sweeps, five exchanges) is finished.
    ExpectTook(clock.ElapsedMs(), 20000, 6 * 50 + 5 * 1000 + 10);
    EXPECT_EQ(115200, receiver.Port().GetBaudRate());
}

TEST(Glonass, AnOem6HasItOnlyWithOneOfItsModelsExactly)
{
    for (const auto& [model, glonass] : {std::pair{"D2L0PG0TN", true}, {"D2LR0GTTR ", false}}) {
        GnssSim::ReceiverKind kind;
        GnssSim::FindReceiverKind("oem6", kind);
        GnssSim::SimOptions options = TestReceiverOptions("oem6");
        options.identity = GnssSim::DefaultIdentity(kind);
        options.identity->Main().model = model;
        EXPECT_EQ(glonass, SimulatedNovatel(options).Configurer().SupportsGlonass()) << model;
    }
}

}  // namespace
