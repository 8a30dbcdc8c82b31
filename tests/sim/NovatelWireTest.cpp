#include "tests/sim/SimTestSupport.h"

#include "sim/text/ByteText.h"
#include "util/Stopwatch.h"

using namespace GnssSim;

namespace {

const char kField1[] = "<ERROR:Invalid Message. Field = 1";
const char kField2[] = "<ERROR:Invalid Message. Field = 2";

}

TEST(NovatelWire, PromptFollowsEachReplyAndLogsCarryCrc)
{
    SimulatedReceiver receiver(TestReceiverOptions("oem7700"));
    PathComPort& port = receiver.OpenPort();
    Send(port, "echo off\r\nbogus\r\nLOG VERSIONA ONCE\r\n");
    std::string received = ReadFor(port, kReplyMs, "*");
    received += ReadFor(port, kReplyMs, "\r\n");
    const std::string replies =
        "\r\n<OK\r\n[COM1]\r\n<ERROR:Invalid Message. Field = 1\r\n[COM1]\r\n<OK\r\n[COM1]#VERSIONA,COM1,";
    EXPECT_EQ(received.substr(0, replies.size()), replies);
    EXPECT_TRUE(HasRightCheck(received)) << EscapeBytes(received);
    EXPECT_EQ(ReadFor(port, kSilenceMs), "") << "nothing follows the log line, not even a prompt";
    EXPECT_EQ(receiver.Heard(), (std::vector<std::string>{"echo off\r\n", "bogus\r\n", "LOG VERSIONA ONCE\r\n"}));
}

// A speed change takes effect after the reply, which leaves at the old speed.
TEST(NovatelWire, EachGenerationKnowsOnlyItsOwnCommands)
{
    struct Case {
        const char* receiver;
        const char* command;
        const char* reply;
        int baudAfter = kConsoleBaud;
    };
    const Case cases[] = {
        {"oemv", "COM 9600", "<OK", 9600},
        {"oemstar", "COM COM1,38400,N,8,1,N,OFF,ON", "<OK", 38400},
        {"oemstar", "COM COM1,38400,X,8,1,N,OFF,ON", "<ERROR:Invalid Message. Field = 4"},
        {"oemstar", "serialconfig 38400", kField1},
        {"oem7500", "COM 9600", kField1},
        {"oem7500", "SERIALCONFIG COM1 57600 N 8 1 N OFF", "<OK", 57600},
        {"oem7500", "SERIALCONFIG COM2 9600 N 8 1 N OFF", "<OK"},
        {"oem7700", "serialconfig 19200", "<OK", 19200},
        {"oem6", "LOCKOUTSYSTEM BEIDOU", kField1},
        {"oemv", "SETIONOTYPE AUTO", kField1},
        {"oemstarg", "PPPDYNAMICS AUTO", kField1},
        {"oemv", "ASSIGN 16 138", kField2},
        {"oem6", "ASSIGN 12 138", "<ERROR:Invalid Message. Field = 3"},
        {"oemv", "ASSIGNALL GLONASS IDLE", kField2},
        {"oemv", "log chanconfiglista once", kField2},
        {"oemstarg", "selectchanconfig 9", kField2},
        {"oemstar", "LOG GPGSA ONTIME inf", "<ERROR:Invalid Message. Field = 4"},
        {"oem6", "DYNAMICS WATER", kField2},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(std::string(example.receiver) + ": " + example.command);
        SimulatedReceiver receiver(TestReceiverOptions(example.receiver));
        EXPECT_EQ(ReplyTo(receiver.OpenPort(), example.command), example.reply);
        ASSERT_TRUE(receiver.Sim().WaitForQuiet());
        EXPECT_EQ(receiver.Sim().ReceiverBaud(), example.baudAfter);
    }
}

// A restart silences the receiver for its restart time. It comes back at its start-up speed, or
// with what SAVECONFIG saved, and in the channel configuration it last selected.
TEST(NovatelWire, RestartsTakeTheirTimeAndKeepWhatWasSaved)
{
    SimulatedReceiver receiver(TestReceiverOptions("oemstarg", {Fault::StartAtBaud(9600)}));
    Simulator& sim = receiver.Sim();
    PathComPort& port = receiver.OpenPort(9600);
    const Stopwatch clock;
    EXPECT_EQ(ReplyTo(port, "selectchanconfig 5"), "<OK");
    port.SetBaudRate(kConsoleBaud);
    Send(port, "echo off\r\n");
    ASSERT_TRUE(sim.WaitForRestartToEnd());
    EXPECT_GE(clock.ElapsedMs(), kShortRestartMs);
    EXPECT_LT(clock.ElapsedMs(), kShortRestartMs + kSchedulingSlackMs);
    EXPECT_EQ(sim.Heard().at(1).kind, HeardKind::Lost);
    EXPECT_EQ(ReplyTo(port, "COM COM1,57600,N,8,1,N,OFF,ON"), "<OK");
    port.SetBaudRate(57600);
    for (const char* command : {"LOG GPZDA ONTIME 0.1", "SAVECONFIG", "UNLOG GPZDA", "RESET"}) {
        EXPECT_EQ(ReplyTo(port, command), "<OK") << command;
    }
    ASSERT_TRUE(sim.WaitForRestartToEnd());
    EXPECT_EQ(ReplyTo(port, "log chanconfiglista once"), "<OK");
    const std::string log = ReadFor(port, kReplyMs, "\r\n");
    EXPECT_EQ(log.substr(log.find(';') + 1, 4), "5,5,") << "configuration 5 of 5: " << EscapeBytes(log);
    EXPECT_TRUE(HasRightCheck(log)) << EscapeBytes(log);
    port.FlushInput();
    const std::string sentence = ReadFor(port, kReplyMs, "\r\n");
    EXPECT_EQ(sentence.rfind("$GPZDA,", 0), 0u) << EscapeBytes(sentence);
    EXPECT_TRUE(HasRightCheck(sentence)) << EscapeBytes(sentence);
}

// A unit's own version line reaches the tool exactly as given, after the reply and the prompt, for
// every generation; so the tool classifies it as it would the unit.
TEST(NovatelWire, AGivenVersionLineIsTheVersionLogByteForByte)
{
    struct Case {
        const char* name;
        const char* receiver;
        std::string line;
    };
    const char oddBytes[] = "#VERSIONA\0\xe9\x01\r;*\r\r\n";
    const Case cases[] = {
        {"another generation's line", "oem7700", "#VERSIONA,COM1,0,80.0;1,GPSCARD,\"OEM060600RN0000\"*982cd131\r\n"},
        {"odd bytes and a lone CR", "oemv", std::string(oddBytes, sizeof oddBytes - 1)},
        {"no line end", "oemstar", "#VERSIONA,COM1"},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.name);
        SimOptions options = TestReceiverOptions(example.receiver);
        options.versionLine = example.line;
        SimulatedReceiver receiver(options);
        Send(receiver.OpenPort(), "log versiona once\r\n");
        const std::string reply = ReadFor(receiver.Port(), kReplyMs, "[COM1]");
        EXPECT_EQ(EscapeBytes(reply + ReadFor(receiver.Port(), kSilenceMs)),
                  EscapeBytes("\r\n<OK\r\n[COM1]" + example.line));
    }
}
