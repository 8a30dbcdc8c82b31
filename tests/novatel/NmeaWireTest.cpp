#include "receivers/novatel/NovatelExchange.h"
#include "sim/Fault.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

#include <map>

using namespace NovatelCommon;
using GnssSim::Fault;

namespace {

// A log command that is acknowledged costs a few milliseconds; one that is not costs 300 ms.
constexpr long kAcknowledgedLogMs = 100;

class NmeaLogs : public testing::TestWithParam<const char*> {};

// The run driver's order: everything off, then each rate set before its sentence is switched.
TEST_P(NmeaLogs, TheRunDriversSequenceSetsEachSentence)
{
    SimulatedReceiver receiver(ReceiverOptions(GetParam()));
    auto configurer = receiver.MakeConfigurer();
    configurer->OutputGGA(false);
    configurer->OutputGSA(false);
    configurer->SetGGAFrequency(5.0f);
    configurer->OutputGGA(true);
    configurer->SetGSAFrequency(1.0f);
    configurer->OutputGSA(true);
    configurer->SetGSVFrequency(0.5f);
    configurer->OutputGSV(false);
    configurer->SetVTGFrequency(5.0f);
    configurer->OutputVTG(true);
    configurer->SetZDAFrequency(0.2f);
    configurer->OutputZDA(true);
    EXPECT_EQ((Lines{"UNLOG GPGGA\r\n", "UNLOG GPGGALONG\r\n", "UNLOG GPGSA\r\n", "UNLOG GPGGA\r\n",
                     "LOG GPGGALONG ONTIME 0.2\r\n", "LOG GPGSA ONTIME 1.0\r\n", "UNLOG GPGSV\r\n",
                     "LOG GPVTG ONTIME 0.2\r\n", "LOG GPZDA ONTIME 5.0\r\n"}),
              receiver.Heard());
    EXPECT_EQ((std::map<std::string, double>{
                  {"GPGGALONG", 0.2}, {"GPGSA", 1.0}, {"GPVTG", 0.2}, {"GPZDA", 5.0}}),
              receiver.Sim().ActiveLogs());
}

INSTANTIATE_TEST_SUITE_P(Generations, NmeaLogs,
                         testing::Values("oemv", "oemstar", "oemstarg", "oem6", "oem7500", "oem7700"));

TEST(NmeaRates, ANewRateReachesASentenceThatIsOnAtOnce)
{
    SimulatedReceiver receiver(ReceiverOptions("oem6"));
    auto configurer = receiver.MakeConfigurer();
    configurer->OutputGSV(true);
    configurer->SetGSVFrequency(2.0f);
    configurer->OutputGSV(false);
    configurer->SetGSVFrequency(4.0f);
    configurer->OutputGGA(true);
    // One decimal up to 10 Hz, two above, for GGA only.
    configurer->SetGGAFrequency(10.0f);
    configurer->SetGGAFrequency(20.0f);
    configurer->OutputVTG(true);
    configurer->SetVTGFrequency(20.0f);
    EXPECT_EQ((Lines{"LOG GPGSV ONTIME 1.0\r\n", "LOG GPGSV ONTIME 0.5\r\n", "UNLOG GPGSV\r\n",
                     "UNLOG GPGGA\r\n", "LOG GPGGALONG ONTIME 0.2\r\n", "UNLOG GPGGA\r\n",
                     "LOG GPGGALONG ONTIME 0.1\r\n", "UNLOG GPGGA\r\n", "LOG GPGGALONG ONTIME 0.05\r\n",
                     "LOG GPVTG ONTIME 0.2\r\n", "LOG GPVTG ONTIME 0.1\r\n"}),
              receiver.Heard());
}

TEST(NmeaRates, AZeroRateIsSentAsAnInfinitePeriod)
{
    SimulatedReceiver receiver(ReceiverOptions("oem7700"));
    auto configurer = receiver.MakeConfigurer();
    configurer->SetZDAFrequency(0.0f);
    configurer->OutputZDA(true);
    EXPECT_EQ(Lines{"LOG GPZDA ONTIME inf\r\n"}, receiver.Heard());
}

TEST(NmeaAcknowledgement, AMissingOkCostsAPauseAndNothingElse)
{
    GnssSim::SimOptions options = ReceiverOptions("oemstar");
    options.faults = {Fault::NoAnswer("LOG GPGSA *")};
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    Stopwatch clock;
    configurer->OutputGSA(true);
    ExpectTook(clock, 100 + 200);
    clock.Restart();
    configurer->OutputZDA(true);
    EXPECT_LT(clock.ElapsedMs(), kAcknowledgedLogMs);
    EXPECT_EQ((Lines{"LOG GPGSA ONTIME 1.0\r\n", "LOG GPZDA ONTIME 5.0\r\n"}), receiver.Heard());
}

TEST(NmeaAcknowledgement, OkIsFoundAmongTheSentencesAReceiverStreams)
{
    SimulatedReceiver receiver(ReceiverOptions("oem7500"));
    ASSERT_EQ("<OK\r\n", ExchangeCommand(receiver.Port(), "LOG GPGSV ONTIME 0.05", "<OK", 1000));
    auto configurer = receiver.MakeConfigurer();
    const Stopwatch clock;
    for (const float hz : {1.0f, 2.0f, 5.0f, 10.0f}) {
        configurer->SetGGAFrequency(hz);
        configurer->OutputGGA(true);
        configurer->OutputVTG(true);
    }
    // Eighteen commands, together far quicker than the 300 ms each would cost unacknowledged.
    EXPECT_LT(clock.ElapsedMs(), 18 * kAcknowledgedLogMs);
    EXPECT_EQ(0.1, receiver.Sim().ActiveLogs()["GPGGALONG"]);
}

}  // namespace
