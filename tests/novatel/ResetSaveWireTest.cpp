#include "receivers/novatel/NovatelExchange.h"
#include "sim/Fault.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

using GnssSim::Fault;

namespace {

// The search commands the receiver to each rate in turn, 9600 first; that first attempt falls
// into the receiver's restart, so it answers at the second.
constexpr int kRateFoundAfterRestart = 19200;

// The reset's result, the port's rate, the receiver's rate and the reply at that rate.
using ResetOutcome = std::tuple<int, int, int, std::string>;

ResetOutcome ResetAndExchange(const GnssSim::SimOptions& options)
{
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    const int result = configurer->ResetReceiver(5000);
    return ResetOutcome{result, receiver.Port().GetBaudRate(), receiver.Sim().ReceiverBaud(),
                        NovatelCommon::ExchangeCommand(receiver.Port(), "echo off", "<OK", 1000)};
}

const ResetOutcome kFoundAgain{0, kRateFoundAfterRestart, kRateFoundAfterRestart, "<OK\r\n"};

TEST(Reset, TheReceiverIsFoundAgainAndBothEndAtTheRateItWasFoundAt)
{
    const GnssSim::SimOptions options = ReceiverOptions("oem6");
    EXPECT_EQ(kFoundAgain, RunSweepingScenario<ResetOutcome>(
                               [&options] { return ResetAndExchange(options); }, kFoundAgain));
}

TEST(Reset, AReceiverThatComesBackAtAnotherRateIsFoundThere)
{
    GnssSim::SimOptions options = ReceiverOptions("oemstar");
    options.startupBaud = 57600;
    options.faults = {Fault::StartAtBaud(115200)};
    EXPECT_EQ(kFoundAgain, RunSweepingScenario<ResetOutcome>(
                               [&options] { return ResetAndExchange(options); }, kFoundAgain));
}

TEST(Reset, AnUnacknowledgedResetIsReportedAtOnce)
{
    GnssSim::SimOptions options = ReceiverOptions("oem7700");
    options.faults = {Fault::NoAnswer("RESET")};
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    EXPECT_TRUE(configurer->CanReset());
    const Stopwatch clock;
    EXPECT_EQ(1, configurer->ResetReceiver(-1));
    ExpectTook(clock, 1000);
    EXPECT_EQ(Lines{"reset\r\n"}, receiver.Heard());
}

// The one case that runs the default 20 s limit: the receiver acknowledges and stays away.
TEST(Reset, AReceiverThatDoesNotComeBackIsGivenUpAfterTwentySeconds)
{
    GnssSim::SimOptions options = ReceiverOptions("oem6");
    options.restartMs = 60000;
    SimulatedReceiver receiver(options);
    const Stopwatch clock;
    EXPECT_EQ(2, receiver.MakeConfigurer()->ResetReceiver(-1));
    // Each search is six sweeps and five unanswered exchanges, about 5.3 s; the one running when
    // the limit passes is finished.
    ExpectTook(clock, 20000, 6 * 50 + 5 * 1000 + 10);
    EXPECT_EQ(115200, receiver.Port().GetBaudRate());
}

class PdpFilterAndSave : public testing::TestWithParam<const char*> {};

TEST_P(PdpFilterAndSave, AreAcknowledged)
{
    SimulatedReceiver receiver(ReceiverOptions(GetParam()));
    auto configurer = receiver.MakeConfigurer();
    EXPECT_EQ(2, configurer->ResetPdpFilter());
    EXPECT_TRUE(configurer->SaveConfiguration());
    EXPECT_EQ((Lines{"PDPFILTER RESET\r\n", "SAVECONFIG\r\n"}), receiver.Heard(true));
    EXPECT_TRUE(receiver.Sim().SavedState().has_value());
}

INSTANTIATE_TEST_SUITE_P(Generations, PdpFilterAndSave,
                         testing::Values("oemv", "oemstar", "oemstarg", "oem6", "oem7500", "oem7700"));

TEST(PdpFilterAndSaveRefused, GiveOneAndFalse)
{
    GnssSim::SimOptions options = ReceiverOptions("oem6");
    options.faults = {Fault::NoAnswer("PDPFILTER RESET"), Fault::NoAnswer("SAVECONFIG")};
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    EXPECT_EQ(1, configurer->ResetPdpFilter());
    EXPECT_FALSE(configurer->SaveConfiguration());
    EXPECT_FALSE(receiver.Sim().SavedState().has_value());
}

}  // namespace
