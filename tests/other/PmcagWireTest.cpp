#include "receivers/other/CAutonomousNovatel.h"
#include "receivers/other/NmeaChecksum.h"
#include "tests/other/SimulatedReceiverTest.h"
#include "tests/support/PseudoTerminal.h"
#include "util/Stopwatch.h"

#include <csignal>
#include <ctime>

using GnssSim::HeardEntry;
using GnssSim::HeardKind;
using Lines = std::vector<std::string>;

namespace {

// The probe's budget, as the receiver family defines it.
constexpr long kProbeBudgetMs = 300;

const std::string kSentence000 = "$PMCAG,000,0*58\r\n";

std::string Hex(const std::string& text)
{
    std::string hex;
    for (unsigned char byte : text) {
        static const char digits[] = "0123456789ABCDEF";
        hex += digits[byte >> 4];
        hex += digits[byte & 0x0F];
    }
    return hex;
}

// What the receiver heard, one entry per item: "line <bytes>" or "packet <id> <payload in hex>",
// failing the test for any sentence or packet that the receiver rejected.
std::vector<std::string> HeardItems(const std::vector<HeardEntry>& entries)
{
    std::vector<std::string> items;
    for (const HeardEntry& entry : entries) {
        if (entry.kind == HeardKind::Packet) {
            EXPECT_TRUE(entry.sumOk) << "packet " << entry.packetId;
            items.push_back("packet " + std::to_string(entry.packetId) + " " + Hex(entry.payload));
        } else {
            EXPECT_EQ(entry.verdict.find("rejected"), std::string::npos) << entry.bytes;
            items.push_back("line " + entry.bytes);
        }
    }
    return items;
}

// Eight zero bytes in hexadecimal.
const std::string kZeros8 = "0000000000000000";

}  // namespace

using PmcagOnSimulator = SimulatedReceiverTest;

TEST_F(PmcagOnSimulator, ProbeFindsTheReceiver)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("pmcag"));
    EXPECT_TRUE(ProbePmcagReceiver(*port));
    EXPECT_EQ(Lines{"$PMCAG,004,908*5D\r\n"}, HeardLines());
}

TEST_F(PmcagOnSimulator, ProbeGivesUpAfterItsBudgetOnASilentLine)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("silent"));
    const Stopwatch clock;
    EXPECT_FALSE(ProbePmcagReceiver(*port));
    EXPECT_GE(clock.ElapsedMs(), kProbeBudgetMs);
    EXPECT_LT(clock.ElapsedMs(), kProbeBudgetMs + 200 + kSchedulingSlackMs);
}

// A hung-up line fails every read at once; the probe must still sleep between its reads rather
// than spin through its budget.
TEST(PmcagProbeOnHungUpLine, WaitsOutItsBudgetWithoutSpinning)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    ASSERT_EQ(0, port.Open());
    pty.HangUp();
    const Stopwatch clock;
    const std::clock_t cpuStart = std::clock();
    EXPECT_FALSE(ProbePmcagReceiver(port));
    const double cpuMs = 1000.0 * static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    EXPECT_GE(clock.ElapsedMs(), kProbeBudgetMs);
    EXPECT_LT(cpuMs, kProbeBudgetMs / 4);
    port.Close();
}

// The answer must begin the line: a CSI receiver's "$>" answers, or other text, are not it.
TEST_F(PmcagOnSimulator, ProbeIgnoresACsiReceiver)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi"));
    EXPECT_FALSE(ProbePmcagReceiver(*port));
}

TEST_F(PmcagOnSimulator, EverySetterSendsTheWholeOutputSentence)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("pmcag"));
    CAutonomousNovatel pmcag(port.get());
    pmcag.SetZDAFrequency(1.0f);  // first: ZDA's initial 0.2 Hz would end the process
    pmcag.SetGGAFrequency(1.0f);
    pmcag.OutputGGA(true);
    pmcag.SetVTGFrequency(5.0f);
    pmcag.OutputVTG(true);
    pmcag.OutputZDA(true);
    EXPECT_EQ(0, pmcag.SetBaudRate(19200));
    pmcag.OutputGSA(true);
    pmcag.OutputGSV(true);
    pmcag.OutputGGA(false);
    const std::string allOff = "$PMCAG,005,0,GGA,000,GSA,000,GSV,000,VTG,000,ZDA,000";
    const std::string gga = "$PMCAG,005,0,GGA,001,GSA,000,GSV,000,VTG,000,ZDA,000";
    const std::string ggaVtg = "$PMCAG,005,0,GGA,001,GSA,000,GSV,000,VTG,999,ZDA,000";
    const std::string ggaVtgZda = "$PMCAG,005,0,GGA,001,GSA,000,GSV,000,VTG,999,ZDA,001";
    const std::string withGsa = "$PMCAG,005,0,GGA,001,GSA,001,GSV,000,VTG,999,ZDA,001";
    const std::string withGsv = "$PMCAG,005,0,GGA,001,GSA,001,GSV,001,VTG,999,ZDA,001";
    const std::string ggaOff = "$PMCAG,005,0,GGA,000,GSA,001,GSV,001,VTG,999,ZDA,001";
    EXPECT_EQ((Lines{FinishNmeaSentence(allOff), FinishNmeaSentence(allOff),
                     FinishNmeaSentence(gga), FinishNmeaSentence(gga), FinishNmeaSentence(ggaVtg),
                     FinishNmeaSentence(ggaVtgZda), FinishNmeaSentence(ggaVtgZda),
                     FinishNmeaSentence(withGsa), FinishNmeaSentence(withGsv),
                     FinishNmeaSentence(ggaOff)}),
              HeardLines());
    HeardItems(sim->Heard());  // fails for any sentence whose checksum the receiver rejected
}

// The console's tool let the CPU trap the division by a rate below 1 Hz; the process must end the
// same way, before a byte is sent.
TEST_F(PmcagOnSimulator, ARateBelowOneHertzEndsTheProcessWithSigfpeBeforeSending)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("pmcag"));
    CAutonomousNovatel pmcag(port.get());
    EXPECT_EXIT(pmcag.SetGGAFrequency(5.0f), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(pmcag.SetBaudRate(115200), testing::KilledBySignal(SIGFPE), "");
    pmcag.SetZDAFrequency(1.0f);
    EXPECT_EXIT(pmcag.SetGSVFrequency(0.5f), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EQ(Lines{FinishNmeaSentence("$PMCAG,005,0,GGA,000,GSA,000,GSV,000,VTG,000,ZDA,000")},
              HeardLines());
}

TEST_F(PmcagOnSimulator, SbasModeIsSentAsPacketsBetweenSentencesAndCommitted)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("pmcag"));
    CAutonomousNovatel pmcag(port.get());
    EXPECT_TRUE(pmcag.SetSbasMode(true, true));
    ASSERT_TRUE(sim->WaitForQuiet(kQuietWaitMs));
    EXPECT_EQ((Lines{"packet 63 " + Hex("UGPS-100"), "line " + kSentence000, "line " + kSentence000,
                     "packet 83 8C787840" + kZeros8 + "05" + kZeros8, "packet 110 40",
                     "packet 110 40"}),
              HeardItems(sim->Heard()));
}

TEST_F(PmcagOnSimulator, SbasPrnsFollowTheModeInTwoBlocks)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("pmcag"));
    CAutonomousNovatel pmcag(port.get());
    SbasPrnFlags flags;
    flags.fill(true);
    flags[133 - kFirstSbasPrn] = false;
    flags[120 - kFirstSbasPrn] = false;
    EXPECT_TRUE(pmcag.ConfigureSbas(flags, true, false));
    ASSERT_TRUE(sim->WaitForQuiet(kQuietWaitMs));
    EXPECT_EQ((Lines{"packet 63 " + Hex("UGPS-100"), "line " + kSentence000, "line " + kSentence000,
                     "packet 83 02780040" + kZeros8 + "03" + kZeros8, "packet 110 40",
                     "packet 110 40", "line " + kSentence000, "line " + kSentence000,
                     "packet 90 " + Hex("UGPS-0G5") + "10000000",
                     "packet 90 " + Hex("UGPS-0G4") + "00008000", "packet 110 40",
                     "packet 110 40"}),
              HeardItems(sim->Heard()));
}
