#include "receivers/novatel/NovatelExchange.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

using namespace NovatelCommon;

namespace {

struct BaudSwitchCase {
    const char* receiver;
    int from;
    int to;
    Lines heard;  // what the receiver understood, at its own rate
};

void PrintTo(const BaudSwitchCase& c, std::ostream* os)
{
    *os << c.receiver << " from " << c.from << " to " << c.to;
}

class BaudSwitch : public testing::TestWithParam<BaudSwitchCase> {};

// The switch's result, the port's rate, what the receiver heard, its rate, and its reply to an
// exchange at the new rate.
using BaudOutcome = std::tuple<int, int, Lines, int, std::string>;

TEST_P(BaudSwitch, MovesReceiverAndPortAndTheNextExchangeIsAtTheNewRate)
{
    const BaudSwitchCase& c = GetParam();
    long tookMs = 0;
    const BaudOutcome expected{0, c.to, c.heard, c.to, "<OK\r\n"};
    const BaudOutcome outcome = RunSweepingScenario<BaudOutcome>(
        [&c, &tookMs] {
            GnssSim::SimOptions options = ReceiverOptions(c.receiver);
            options.startupBaud = c.from;
            SimulatedReceiver receiver(options);
            auto configurer = receiver.MakeConfigurer();
            const Stopwatch clock;
            const int result = configurer->SetBaudRate(c.to);
            tookMs = clock.ElapsedMs();
            return BaudOutcome{result, receiver.Port().GetBaudRate(), receiver.Heard(),
                               receiver.Sim().ReceiverBaud(),
                               ExchangeCommand(receiver.Port(), "echo off", "<OK", 1000)};
        },
        expected);
    EXPECT_EQ(expected, outcome);
    ExpectTookMs(tookMs, 5 * 10);
}

// OEMV and OEM-Star receivers switch on "COM" and refuse "serialconfig", which they no longer hear
// once they have switched; OEM6 and OEM7 receivers refuse "COM" and switch on "serialconfig". A
// receiver at 9600 hears the sweep's first round, then the last one at its new rate.
INSTANTIATE_TEST_SUITE_P(
    Generations, BaudSwitch,
    testing::Values(BaudSwitchCase{"oemv", 115200, 9600, {"COM 9600\r\n"}},
                    BaudSwitchCase{"oemstar", 9600, 115200,
                                   {"COM 115200\r\n", "COM 115200\r\n", "serialconfig 115200\r\n"}},
                    BaudSwitchCase{"oem6", 115200, 19200, {"COM 19200\r\n", "serialconfig 19200\r\n"}},
                    BaudSwitchCase{"oem7700", 9600, 115200,
                                   {"COM 115200\r\n", "serialconfig 115200\r\n", "COM 115200\r\n",
                                    "serialconfig 115200\r\n"}}),
    [](const testing::TestParamInfo<BaudSwitchCase>& info) { return std::string(info.param.receiver); });

TEST(FindReceiverBaud, FindsTheFirstRateAndPutsBothBackToTheEntryRate)
{
    // The rate found, the port's rate, what the receiver heard and its rate.
    using Outcome = std::tuple<int, int, Lines, int>;
    const Outcome expected{9600, 115200,
                           Lines{"COM 9600\r\n", "serialconfig 9600\r\n", "echo off\r\n",
                                 "COM 115200\r\n", "serialconfig 115200\r\n", "COM 115200\r\n",
                                 "serialconfig 115200\r\n"},
                           115200};
    const Outcome outcome = RunSweepingScenario<Outcome>(
        [] {
            GnssSim::SimOptions options = ReceiverOptions("oem7500");
            options.startupBaud = 57600;
            SimulatedReceiver receiver(options);
            const int found = receiver.MakeConfigurer()->FindReceiverBaud();
            return Outcome{found, receiver.Port().GetBaudRate(), receiver.Heard(),
                           receiver.Sim().ReceiverBaud()};
        },
        expected);
    EXPECT_EQ(expected, outcome);
}

TEST(FindReceiverBaud, ASilentReceiverCostsFiveSweepsAndExchangesAndGivesMinusOne)
{
    SimulatedReceiver receiver(ReceiverOptions("silent"), 19200);
    auto configurer = receiver.MakeConfigurer();
    const Stopwatch clock;
    EXPECT_EQ(-1, configurer->FindReceiverBaud());
    // Six sweeps of five 10 ms pauses, five exchanges of a second that may each run over by 500 ms.
    ExpectTook(clock, 6 * 5 * 10 + 5 * 1000, 5 * 500);
    EXPECT_EQ(19200, receiver.Port().GetBaudRate());
}

}  // namespace
