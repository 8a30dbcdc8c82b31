#include "receivers/novatel/NovatelExchange.h"
#include "sim/Fault.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"
#include "tests/support/PseudoTerminal.h"

using namespace NovatelCommon;
using GnssSim::Fault;

namespace {

TEST(Exchange, ReturnsTheMatchingLineWithoutThePromptBeforeIt)
{
    SimulatedReceiver receiver(ReceiverOptions("oem6"));
    const std::string reply =
        ExchangeCommand(receiver.Port(), "log versiona once", "#VERSIONA", 1000);
    EXPECT_EQ(0u, reply.find("#VERSIONA,COM1,")) << reply;
    EXPECT_EQ("\r\n", reply.substr(reply.size() - 2));
    EXPECT_EQ(Lines{"log versiona once\r\n"}, receiver.Heard());
}

TEST(Exchange, AddsALineEndOnlyToCommandsWithoutOne)
{
    SimulatedReceiver receiver(ReceiverOptions("oem7700"));
    EXPECT_EQ("<OK\r\n", ExchangeCommand(receiver.Port(), "SAVECONFIG", "<OK", 1000));
    EXPECT_EQ("<OK\r\n", ExchangeCommand(receiver.Port(), "PDPFILTER RESET\r\n", "<OK", 1000));
    EXPECT_EQ("", ExchangeCommand(receiver.Port(), "X", "<OK", 100));
    EXPECT_EQ((Lines{"SAVECONFIG\r\n", "PDPFILTER RESET\r\n", "X\r\n"}), receiver.Heard(true));
}

TEST(Exchange, SkipsAnErrorReplyAndGivesUpAfterItsTime)
{
    SimulatedReceiver receiver(ReceiverOptions("oem6"));
    const Stopwatch clock;
    EXPECT_EQ("", ExchangeCommand(receiver.Port(), "LOCKOUTSYSTEM GLONASS", "<OK", 300));
    // The last read may run over by its own 150 ms.
    ExpectTook(clock, 300, 150);
    EXPECT_EQ(Lines{"LOCKOUTSYSTEM GLONASS\r\n"}, receiver.Heard());
}

TEST(Exchange, ReadsInHalvesOfItsTimeUpToHalfASecond)
{
    // The "<OK" line arrives in two pieces 300 ms apart: the 200 ms reads of a 400 ms exchange
    // see only its pieces, while the 500 ms reads of a one-second exchange see it whole.
    GnssSim::SimOptions options = ReceiverOptions("oem6");
    options.faults = {Fault::SplitAnswer(300, "ECHO OFF")};
    SimulatedReceiver receiver(options);
    EXPECT_EQ("", ExchangeCommand(receiver.Port(), "echo off", "<OK", 400));
    EXPECT_EQ("<OK\r\n", ExchangeCommand(receiver.Port(), "echo off", "<OK", 1000));
}

TEST(WaitForOk, TakesOnlyALineThatBeginsWithOk)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    ASSERT_EQ(0, port.Open());
    ASSERT_TRUE(pty.Send("[COM1]<OK\r\n<ERROR:Invalid Message. Field = 1\r\n"));
    EXPECT_FALSE(WaitForOk(port, 100));
    ASSERT_TRUE(pty.Send("\r\n#BESTPOSA,COM1;SOL_COMPUTED\r\n<OK\r\n"));
    EXPECT_TRUE(WaitForOk(port, 100));
    port.Close();
}

TEST(WaitForOk, ARefusedCommandCostsItsTimeOnce)
{
    // The receiver's prompt is left over from its previous reply and no "<OK" follows. The read
    // that takes the prompt ends a fraction of a millisecond before its time, which must not cost
    // a second full read.
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    ASSERT_EQ(0, port.Open());
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(pty.Send("[COM1]"));
        ASSERT_TRUE(pty.WaitForSlaveInput(1000));
        const Stopwatch clock;
        EXPECT_FALSE(WaitForOk(port, 200));
        EXPECT_LT(clock.ElapsedMs(), 2 * 200 - 50);
    }
    port.Close();
}

}  // namespace
