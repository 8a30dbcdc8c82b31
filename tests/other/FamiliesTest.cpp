// The CSI and "$PMCAG" families on the wire against the simulator, which checks every "$PMCAG"
// checksum and packet sum itself, or on a bare line; and the "$PMCAG" encodings that no
// exchange shows.
#include "receivers/other/CAutonomousCSI.h"
#include "receivers/other/CAutonomousNovatel.h"
#include "receivers/other/NmeaChecksum.h"
#include "receivers/other/PmcagOutputSentence.h"
#include "receivers/other/PmcagSbasBlocks.h"
#include "tests/support/PseudoTerminal.h"
#include "tests/support/SimulatedReceiver.h"
#include "tests/support/TestTiming.h"
#include "util/Stopwatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <ctime>
#include <numeric>
#include <thread>

using Lines = std::vector<std::string>;

namespace {

// The "$PMCAG" probe's budget, as the receiver family defines it.
constexpr long kPmcagProbeBudgetMs = 300;

template <typename Bytes>
std::string Hex(const Bytes& bytes)
{
    std::string hex;
    for (unsigned char byte : bytes) {
        hex += "0123456789ABCDEF"[byte >> 4];
        hex += "0123456789ABCDEF"[byte & 0x0F];
    }
    return hex;
}

// What the receiver heard, a line as it stands or "packet <id> <payload in hex>" an item, failing
// the test for a packet whose sum it rejected.
Lines HeardItems(SimulatedReceiver& receiver)
{
    receiver.Heard();  // once the receiver has taken in everything
    Lines items;
    for (const GnssSim::HeardEntry& entry : receiver.Sim().Heard()) {
        const bool packet = entry.kind == GnssSim::HeardKind::Packet;
        EXPECT_TRUE(!packet || entry.sumOk) << entry.packetId;
        items.push_back(packet ? "packet " + std::to_string(entry.packetId) + " " +
                                     Hex(entry.payload)
                               : entry.bytes);
    }
    return items;
}

}  // namespace

// Longer than one probe read (200 ms), the answer comes in two reads; with the simulator's fixed
// noise seed, 25 garbled bytes do not end in a NUL (which would end the read), so the answer
// shares a read with the noise in front of it.
TEST(CsiProbe, FindsAnAnswerSplitOverTwoReadsOrBuriedInNoise)
{
    for (const auto& fault :
         {GnssSim::Fault::SplitAnswer(300, "$JAPP"), GnssSim::Fault::NoiseBetweenLines(25)}) {
        SimulatedReceiver receiver(TestReceiverOptions("csi", {fault}));
        EXPECT_TRUE(ProbeCsiReceiver(receiver.OpenPort()));
    }
}

// The simulated receiver always sends a field after the firmware version, so the replies are
// played on a bare line: field 7 as it stands, empty fields counted, with the line end when it is
// the last; nothing from seven fields, or once 200 ms have passed without a reply.
TEST(CsiFirmwareQuery, TakesTheReplysEighthFieldAsItStands)
{
    const std::pair<std::string, std::string> cases[] = {
        {"$>JI,,,,,,,FW7\r\n", "FW7\r\n"}, {"$>JI,1,2,3,4,5,6\r\n", ""}, {"", ""}};
    for (const auto& [reply, version] : cases) {
        PseudoTerminal pty;
        PathComPort port(pty.SlavePath());
        ASSERT_EQ(port.Open(), 0);
        std::thread receiver([&pty, answer = "$>JAPP,WAAS\r\n" + reply] {
            if (pty.Receive(5, 2000) == "$JI\r\n") {
                pty.Send(answer);
            }
        });
        const Stopwatch clock;
        EXPECT_EQ(CAutonomousCSI(&port).GetFirmwareVersion(), version) << reply;
        EXPECT_GE(clock.ElapsedMs(), reply.empty() ? 200 : 0);
        EXPECT_LT(clock.ElapsedMs(), 200 + 200 + kSchedulingSlackMs);
        receiver.join();
        port.Close();
    }
}

// In the run driver's order, each rate set before its sentence is switched, and each rounded to
// what the receiver can send: GGA, VTG and ZDA at 5, 1 or a fifth of a hertz, GSA and GSV once a
// second, or off. The float that a command line gives for 0.6 or 0.1 lies above the double and
// rounds up. Every "$JASC" and "$JDIFF" begins with a line end, so that the receiver drops any
// partial line first.
TEST(CsiCommands, EveryOperationSendsItsCommandByteForByte)
{
    SimulatedReceiver receiver("csi");
    CAutonomousCSI csi(&receiver.OpenPort());
    EXPECT_EQ(csi.SetBaudRate(19200), 0);
    csi.SetGGAFrequency(3.0f);  // 5 Hz
    csi.OutputGGA(true);
    csi.SetGSAFrequency(0.49f);  // off
    csi.OutputGSA(true);
    csi.SetGSVFrequency(0.5f);  // 1 Hz
    csi.OutputGSV(true);
    csi.SetVTGFrequency(0.09f);  // off
    csi.OutputVTG(true);
    csi.SetZDAFrequency(0.1f);  // every 5 s
    csi.OutputZDA(true);
    csi.SetZDAFrequency(0.6f);  // 1 Hz, re-sent at once as ZDA is on
    SbasPrnFlags some{};
    some[133 - kFirstSbasPrn] = some[135 - kFirstSbasPrn] = some[138 - kFirstSbasPrn] = true;
    SbasPrnFlags all;
    all.fill(true);
    EXPECT_TRUE(csi.ConfigureSbas(some, true, false));
    EXPECT_TRUE(csi.ConfigureSbas(all, false, true));
    EXPECT_TRUE(csi.ConfigureSbas(SbasPrnFlags{}, true, false));
    csi.SetDiffSource(2);
    csi.SetDiffSource(3);  // no such source: nothing is sent
    const Lines heard = receiver.Heard(true);
    EXPECT_EQ(std::accumulate(heard.begin(), heard.end(), std::string()),
              "\r\n$JASC,GPGGA,0\r\n\r\n$JASC,GPGGA,5\r\n\r\n$JASC,GPGSA,0\r\n\r\n$JASC,GPGSA,0\r\n"
              "\r\n$JASC,GPGSV,0\r\n\r\n$JASC,GPGSV,1\r\n\r\n$JASC,GPVTG,0\r\n\r\n$JASC,GPVTG,0\r\n"
              "\r\n$JASC,GPZDA,0\r\n\r\n$JASC,GPZDA,.2\r\n\r\n$JASC,GPZDA,1\r\n"
              "\r\n$JDIFF,WAAS\r\n$JWAASPRN,133,135\r\n\r\n$JDIFF,NONE\r\n$JWAASPRN,,,AUTO\r\n"
              "\r\n$JDIFF,WAAS\r\n$JWAASPRN,,,AUTO\r\n\r\n$JDIFF,BEACON\r\n");
}

// A small checksum keeps its leading zero; negative rates are not clamped (1 / -1 and 1 / -3 as
// integers). With type 0 messages the SBAS mode changes bytes 0 and 2 as well. 128, 136 and 139
// upward cannot be told to the receiver: with every other PRN disabled, every mark in both PRN
// blocks is set; flags that are all alike mark nothing.
TEST(PmcagEncoding, ChecksumsPeriodTextsAndSbasBlocks)
{
    EXPECT_EQ(FinishNmeaSentence("$AB"), "$AB*03\r\n");
    EXPECT_EQ(PmcagPeriodText(2.0f) + PmcagPeriodText(1.9f) + PmcagPeriodText(-1.5f) +
                  PmcagPeriodText(-3.0f),
              "999001-01000");
    const std::string zeros(16, '0');
    const std::string off = "02780040" + zeros + "00" + zeros;
    EXPECT_EQ(Hex(BuildPmcagModeBlock(false, false)) + Hex(BuildPmcagModeBlock(false, true)),
              off + off);
    EXPECT_EQ(Hex(BuildPmcagModeBlock(true, true)), "8C787840" + zeros + "05" + zeros);
    SbasPrnFlags unnamedOnly{};
    unnamedOnly[128 - kFirstSbasPrn] = unnamedOnly[136 - kFirstSbasPrn] = true;
    std::fill(unnamedOnly.begin() + (139 - kFirstSbasPrn), unnamedOnly.end(), true);
    EXPECT_EQ(Hex(BuildPmcagPrnBlockA(unnamedOnly)) + Hex(BuildPmcagPrnBlockB(unnamedOnly)),
              "554750532D3047357F810000554750532D3047340000807F");
    EXPECT_EQ(Hex(BuildPmcagPrnBlockA(SbasPrnFlags{})) + Hex(BuildPmcagPrnBlockB(SbasPrnFlags{})),
              "554750532D30473500000000554750532D30473400000000");
}

// A hung-up line fails every read at once; the probe must still sleep between its reads rather
// than spin through its budget.
TEST(PmcagProbe, WaitsOutItsBudgetOnAHungUpLineWithoutSpinning)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    ASSERT_EQ(port.Open(), 0);
    pty.HangUp();
    const Stopwatch clock;
    const std::clock_t cpuStart = std::clock();
    EXPECT_FALSE(ProbePmcagReceiver(port));
    const double cpuMs = 1000.0 * static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    EXPECT_GE(clock.ElapsedMs(), kPmcagProbeBudgetMs);
    EXPECT_LT(cpuMs, kPmcagProbeBudgetMs / 4);
    port.Close();
}

// Each setter sends the sentence for all five messages; a message that is off shows "000" and
// one above 1 Hz "999" (GGA starts at 5 Hz). SBAS: identify, the mode, commit; then the PRN blocks
// with 133 and 120 disabled, commit; every binary change begins with "$PMCAG,000,0" twice.
// A rate below 1 Hz (ZDA's initial 0.2 Hz, also while ZDA is off) or one that is not a number
// ends the process with SIGFPE, the end start-up scripts know for this family, in every build and
// before a byte is sent.
TEST(PmcagCommandsDeathTest, SendBytesAndDieBelowOneHertz)
{
    SimulatedReceiver receiver("pmcag");
    CAutonomousNovatel pmcag(&receiver.OpenPort());
    EXPECT_EXIT(pmcag.SetGGAFrequency(5.0f), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(pmcag.SetBaudRate(115200), testing::KilledBySignal(SIGFPE), "");
    pmcag.SetZDAFrequency(1.0f);
    pmcag.OutputGGA(true);
    pmcag.OutputGSA(true);
    pmcag.SetVTGFrequency(1.5f);
    pmcag.OutputVTG(true);
    pmcag.OutputZDA(true);
    EXPECT_EQ(pmcag.SetBaudRate(19200), 0);
    pmcag.OutputGGA(false);
    SbasPrnFlags flags;
    flags.fill(true);
    flags[133 - kFirstSbasPrn] = flags[120 - kFirstSbasPrn] = false;
    EXPECT_TRUE(pmcag.ConfigureSbas(flags, true, false));
    EXPECT_EXIT(pmcag.SetGSVFrequency(0.5f), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(pmcag.SetVTGFrequency(NAN), testing::KilledBySignal(SIGFPE), "");
    const std::string start = "$PMCAG,005,0,GGA,", zeros(16, '0'), commit = "packet 110 40",
                      sentence000 = "$PMCAG,000,0*58\r\n";
    EXPECT_EQ(HeardItems(receiver),
              (Lines{start + "000,GSA,000,GSV,000,VTG,000,ZDA,000*21\r\n",
                     start + "999,GSA,000,GSV,000,VTG,000,ZDA,000*28\r\n",
                     start + "999,GSA,001,GSV,000,VTG,000,ZDA,000*29\r\n",
                     start + "999,GSA,001,GSV,000,VTG,000,ZDA,000*29\r\n",
                     start + "999,GSA,001,GSV,000,VTG,001,ZDA,000*28\r\n",
                     start + "999,GSA,001,GSV,000,VTG,001,ZDA,001*29\r\n",
                     start + "999,GSA,001,GSV,000,VTG,001,ZDA,001*29\r\n",
                     start + "000,GSA,001,GSV,000,VTG,001,ZDA,001*20\r\n",
                     "packet 63 554750532D313030", sentence000, sentence000,
                     "packet 83 02780040" + zeros + "03" + zeros, commit, commit, sentence000,
                     sentence000, "packet 90 554750532D30473510000000",
                     "packet 90 554750532D30473400008000", commit, commit}));
}
