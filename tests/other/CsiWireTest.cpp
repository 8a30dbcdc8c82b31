#include "receivers/other/CAutonomousCSI.h"
#include "tests/other/SimulatedReceiverTest.h"
#include "tests/support/PseudoTerminal.h"
#include "util/Stopwatch.h"

#include <thread>

using GnssSim::Fault;
using Lines = std::vector<std::string>;

namespace {

// Longer than one probe read (200 ms), so the answer arrives in two reads.
constexpr long kSplitPauseMs = 300;
// Garbled bytes before each line. With the simulator's fixed noise seed this burst does not end
// in a NUL (which would end the read), so the answer shares a read with noise in front of it.
constexpr long kNoiseBytes = 25;
// The probe's and the firmware query's budgets, as the receiver family defines them.
constexpr long kProbeBudgetMs = 3000;
constexpr long kFirmwareBudgetMs = 200;
// Waits for the tool's request on a bare pseudo-terminal.
constexpr int kRequestWaitMs = 2000;

SbasPrnFlags OnlyPrns(std::initializer_list<int> prns)
{
    SbasPrnFlags flags{};
    for (int prn : prns) {
        flags[static_cast<std::size_t>(prn - kFirstSbasPrn)] = true;
    }
    return flags;
}

}  // namespace

using CsiOnSimulator = SimulatedReceiverTest;

TEST_F(CsiOnSimulator, ProbeFindsTheReceiver)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi"));
    EXPECT_TRUE(ProbeCsiReceiver(*port));
    EXPECT_EQ(Lines{"$JAPP\r\n"}, HeardLines());
}

TEST_F(CsiOnSimulator, ProbeJoinsAnAnswerSplitOverTwoReads)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi", {Fault::SplitAnswer(kSplitPauseMs, "$JAPP")}));
    EXPECT_TRUE(ProbeCsiReceiver(*port));
}

TEST_F(CsiOnSimulator, ProbeFindsTheAnswerInNoise)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi", {Fault::NoiseBetweenLines(kNoiseBytes)}));
    EXPECT_TRUE(ProbeCsiReceiver(*port));
}

TEST_F(CsiOnSimulator, ProbeGivesUpAfterItsBudgetOnASilentLine)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("silent"));
    const Stopwatch clock;
    EXPECT_FALSE(ProbeCsiReceiver(*port));
    EXPECT_GT(clock.ElapsedMs(), kProbeBudgetMs);
    EXPECT_LT(clock.ElapsedMs(), kProbeBudgetMs + 200 + kSchedulingSlackMs);
}

TEST_F(CsiOnSimulator, ProbeFailsAtOnceWhenTheRequestCannotBeWritten)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi"));
    port->Close();
    const Stopwatch clock;
    EXPECT_FALSE(ProbeCsiReceiver(*port));
    EXPECT_LT(clock.ElapsedMs(), kSchedulingSlackMs);
}

TEST_F(CsiOnSimulator, FirmwareVersionIsTheReplysEighthField)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi"));
    CAutonomousCSI csi(port.get());
    EXPECT_EQ(sim->Identity().Main().swVersion, csi.GetFirmwareVersion());
    EXPECT_EQ("", csi.GetModel());
    EXPECT_EQ(Lines{"$JI\r\n"}, HeardLines());
}

TEST_F(CsiOnSimulator, FirmwareVersionIsEmptyAfterTwoHundredMillisecondsOfSilence)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("silent"));
    CAutonomousCSI csi(port.get());
    const Stopwatch clock;
    EXPECT_EQ("", csi.GetFirmwareVersion());
    EXPECT_GE(clock.ElapsedMs(), kFirmwareBudgetMs);
    EXPECT_LT(clock.ElapsedMs(), kFirmwareBudgetMs + 200 + kSchedulingSlackMs);
}

// The simulated receiver always sends a field after the firmware version, so the replies that end
// at field 7, or before it, are played on a bare line.
TEST(CsiFirmwareReply, LastFieldKeepsTheLineEndAndSevenFieldsGiveNothing)
{
    const struct {
        std::string reply;
        std::string version;
    } cases[] = {{"$>JI,1,2,3,4,5,6,FW7\r\n", "FW7\r\n"},
                 {"$>JI,1,2,3,4,5,6\r\n", ""},
                 {"$>JI,,,,,,,\r\n", "\r\n"}};
    for (const auto& c : cases) {
        PseudoTerminal pty;
        PathComPort port(pty.SlavePath());
        ASSERT_EQ(0, port.Open());
        std::thread receiver([&] {
            if (pty.Receive(5, kRequestWaitMs) == "$JI\r\n") {
                pty.Send("$>JAPP,WAAS\r\n" + c.reply);
            }
        });
        CAutonomousCSI csi(&port);
        EXPECT_EQ(c.version, csi.GetFirmwareVersion()) << c.reply;
        receiver.join();
        port.Close();
    }
}

TEST_F(CsiOnSimulator, SentenceCommandsFollowTheRunDriversOrder)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi"));
    CAutonomousCSI csi(port.get());
    EXPECT_EQ(0, csi.SetBaudRate(19200));
    csi.OutputGGA(false);
    csi.OutputGSA(false);
    csi.SetGGAFrequency(10.0f);  // stored as 5 Hz
    csi.OutputGGA(true);
    csi.SetGSAFrequency(0.4f);  // stored as off
    csi.OutputGSA(true);
    csi.SetGSVFrequency(2.0f);
    csi.OutputGSV(true);
    csi.SetVTGFrequency(0.05f);  // stored as off
    csi.OutputVTG(true);
    csi.SetZDAFrequency(0.2f);
    csi.OutputZDA(true);
    csi.SetZDAFrequency(0.7f);  // ZDA is on: re-sent at once at 1 Hz
    EXPECT_EQ((Lines{"$JASC,GPGGA,0\r\n", "$JASC,GPGSA,0\r\n", "$JASC,GPGGA,0\r\n",
                     "$JASC,GPGGA,5\r\n", "$JASC,GPGSA,0\r\n", "$JASC,GPGSA,0\r\n",
                     "$JASC,GPGSV,0\r\n", "$JASC,GPGSV,1\r\n", "$JASC,GPVTG,0\r\n",
                     "$JASC,GPVTG,0\r\n", "$JASC,GPZDA,0\r\n", "$JASC,GPZDA,.2\r\n",
                     "$JASC,GPZDA,1\r\n"}),
              HeardLines());
    // Each command began with its own line end, so the receiver read every one of them.
    for (const GnssSim::HeardEntry& entry : sim->Heard()) {
        EXPECT_NE("not understood, no answer", entry.verdict) << entry.bytes;
    }
    const auto logs = sim->State().logs;
    EXPECT_EQ(1u, logs.count("GPGGA"));
    EXPECT_EQ(1u, logs.count("GPGSV"));
    EXPECT_EQ(1u, logs.count("GPZDA"));
    EXPECT_EQ(0u, logs.count("GPGSA"));
    EXPECT_EQ(0u, logs.count("GPVTG"));
}

TEST_F(CsiOnSimulator, SbasSelectsTheSourceThenAtMostTwoPrns)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi"));
    CAutonomousCSI csi(port.get());
    SbasPrnFlags all;
    all.fill(true);
    EXPECT_TRUE(csi.ConfigureSbas(OnlyPrns({133, 135, 138}), true, false));
    EXPECT_TRUE(csi.ConfigureSbas(all, false, true));
    EXPECT_TRUE(csi.ConfigureSbas(OnlyPrns({}), true, false));
    csi.SetDiffSource(2);
    csi.SetDiffSource(3);  // no such source: nothing is sent
    EXPECT_EQ((Lines{"$JDIFF,WAAS\r\n", "$JWAASPRN,133,135\r\n", "$JDIFF,NONE\r\n",
                     "$JWAASPRN,,,AUTO\r\n", "$JDIFF,WAAS\r\n", "$JWAASPRN,,,AUTO\r\n",
                     "$JDIFF,BEACON\r\n"}),
              HeardLines());
    EXPECT_EQ("BEACON", sim->State().settings.at("$JDIFF"));
}
