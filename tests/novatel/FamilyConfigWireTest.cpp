#include "receivers/novatel/NovatelExchange.h"
#include "sim/Fault.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

using GnssSim::Fault;

namespace {

// Every family configuration starts by commanding the receiver to its rate again, which a
// receiver at 115200 hears in the sweep's last round.
const Lines kRateAgain = {"COM 115200\r\n", "serialconfig 115200\r\n"};
constexpr long kSweepMs = 5 * 10;
// OEM6 pauses once after the PDP filter, OEM7 twice.
constexpr long kPauseMs = 100;

const Lines kUnansweredVersionRequests(5000 / 100, "LOG VERSIONA ONCE\r\n");

// A receiver that acknowledges no version request. The sweep's own commands go unanswered too:
// on a slow machine (qemu) their "<OK" can arrive after the sweep has flushed its input, and an
// exchange takes any "<OK" it reads for its own.
const std::vector<Fault> kSilentToVersionRequests = {Fault::NoAnswer("LOG VERSIONA ONCE"),
                                                     Fault::NoAnswer("COM *"),
                                                     Fault::NoAnswer("SERIALCONFIG *")};

struct FamilyCase {
    const char* name;
    const char* receiver;
    std::vector<Fault> faults;
    bool streaming;  // the receiver sends NMEA sentences meanwhile
    bool result;
    Lines heardAfterRate;
    long waitsMs;
};

void PrintTo(const FamilyCase& c, std::ostream* os)
{
    *os << c.name;
}

class FamilyConfiguration : public testing::TestWithParam<FamilyCase> {};

TEST_P(FamilyConfiguration, SendsItsCommandsUpToTheFirstRefusal)
{
    const FamilyCase& c = GetParam();
    // The configuration's result and what the receiver heard.
    using Outcome = std::tuple<bool, Lines>;
    Lines heard = kRateAgain;
    heard.insert(heard.end(), c.heardAfterRate.begin(), c.heardAfterRate.end());
    const Outcome expected{c.result, heard};
    long tookMs = 0;
    const Outcome outcome = RunSweepingScenario<Outcome>(
        [&c, &tookMs] {
            GnssSim::SimOptions options = ReceiverOptions(c.receiver);
            options.faults = c.faults;
            SimulatedReceiver receiver(options);
            if (c.streaming) {
                for (const char* log : {"LOG GPGGALONG ONTIME 0.05", "LOG GPGSV ONTIME 0.1"}) {
                    NovatelCommon::ExchangeCommand(receiver.Port(), log, "<OK", 1000);
                }
                receiver.Heard();
                receiver.Sim().ClearHeard();
            }
            auto configurer = receiver.MakeConfigurer();
            const Stopwatch clock;
            const bool result = configurer->ApplyFamilyConfiguration();
            tookMs = clock.ElapsedMs();
            return Outcome{result, receiver.Heard()};
        },
        expected);
    EXPECT_EQ(expected, outcome);
    ExpectTookMs(tookMs, c.waitsMs);
}

const auto kCaseName = [](const testing::TestParamInfo<FamilyCase>& info) {
    return std::string(info.param.name);
};

INSTANTIATE_TEST_SUITE_P(
    OemV, FamilyConfiguration,
    testing::Values(
        FamilyCase{"GgaQualityOnly", "oemv", {}, false, true,
                   {"LOG VERSIONA ONCE\r\n", "GGAQUALITY 1 WAAS 2\r\n"}, kSweepMs},
        FamilyCase{"NothingWithoutAnAnswer", "oemv", kSilentToVersionRequests, false,
                   false, kUnansweredVersionRequests, kSweepMs + 5000}),
    kCaseName);

const Lines kStarCommands = {"LOG VERSIONA ONCE\r\n",
                             "DYNAMICS LAND\r\n",
                             "GGAQUALITY 1 WAAS 2\r\n",
                             "PDPFILTER ENABLE\r\n",
                             "PDPMODE RELATIVE AUTO\r\n",
                             "SETIONOTYPE AUTO\r\n",
                             "COM COM2,115200,N,8,1,N,OFF,ON\r\n",
                             "COM COM1,115200,N,8,1,N,OFF,ON\r\n"};

INSTANTIATE_TEST_SUITE_P(
    OemStar, FamilyConfiguration,
    testing::Values(
        FamilyCase{"AllCommands", "oemstar", {}, false, true, kStarCommands, kSweepMs},
        FamilyCase{"StarG", "oemstarg", {}, true, true, kStarCommands, kSweepMs},
        FamilyCase{"StopsAtARefusal", "oemstar", {Fault::NoAnswer("GGAQUALITY *")}, false, false,
                   Lines(kStarCommands.begin(), kStarCommands.begin() + 3), kSweepMs + 1000},
        FamilyCase{"NothingWithoutAnAnswer", "oemstarg", kSilentToVersionRequests,
                   false, false, kUnansweredVersionRequests, kSweepMs + 5000}),
    kCaseName);

const Lines kOem6Commands = {"LOG VERSIONA ONCE\r\n",
                             "PDPFILTER ENABLE\r\n",
                             "PDPMODE RELATIVE AUTO\r\n",
                             "GGAQUALITY 1 WAAS 2\r\n",
                             "DYNAMICS LAND\r\n",
                             "SERIALCONFIG COM2 115200 N 8 1 N OFF\r\n",
                             "SERIALCONFIG COM1 115200 N 8 1 N OFF\r\n"};

INSTANTIATE_TEST_SUITE_P(
    Oem6, FamilyConfiguration,
    testing::Values(
        FamilyCase{"AllCommands", "oem6", {}, false, true, kOem6Commands, kSweepMs + kPauseMs},
        FamilyCase{"WhileStreaming", "oem6", {}, true, true, kOem6Commands, kSweepMs + kPauseMs},
        FamilyCase{"StopsAtTheFilter", "oem6", {Fault::NoAnswer("PDPFILTER ENABLE")}, false, false,
                   Lines(kOem6Commands.begin(), kOem6Commands.begin() + 2),
                   kSweepMs + 1000 + kPauseMs},
        FamilyCase{"StopsAtARefusal", "oem6", {Fault::NoAnswer("DYNAMICS *")}, false, false,
                   Lines(kOem6Commands.begin(), kOem6Commands.begin() + 5),
                   kSweepMs + kPauseMs + 1000},
        FamilyCase{"NothingWithoutAnAnswer", "oem6", kSilentToVersionRequests, false,
                   false, kUnansweredVersionRequests, kSweepMs + 5000 + kPauseMs}),
    kCaseName);

const Lines kOem7Commands = {"LOG VERSIONA ONCE\r\n",
                             "PDPFILTER ENABLE\r\n",
                             "PDPMODE RELATIVE AUTO\r\n",
                             "GGAQUALITY 1 WAAS 2\r\n",
                             "DYNAMICS LAND\r\n",
                             "SETIONOTYPE AUTO\r\n",
                             "RADARCONFIG ENABLE 36.11\r\n",
                             "SERIALCONFIG COM2 115200 N 8 1 N OFF\r\n",
                             "SERIALCONFIG COM1 115200 N 8 1 N OFF\r\n"};

INSTANTIATE_TEST_SUITE_P(
    Oem7, FamilyConfiguration,
    testing::Values(
        FamilyCase{"AllCommands", "oem7700", {}, false, true, kOem7Commands,
                   kSweepMs + 2 * kPauseMs},
        FamilyCase{"WhileStreaming", "oem7500", {}, true, true, kOem7Commands,
                   kSweepMs + 2 * kPauseMs},
        FamilyCase{"StopsAtTheIonosphere", "oem7700", {Fault::NoAnswer("SETIONOTYPE AUTO")}, false,
                   false, Lines(kOem7Commands.begin(), kOem7Commands.begin() + 6),
                   kSweepMs + 2 * kPauseMs + 1000},
        FamilyCase{"StopsAtTheRadar", "oem7500", {Fault::NoAnswer("RADARCONFIG *")}, false, false,
                   Lines(kOem7Commands.begin(), kOem7Commands.begin() + 7),
                   kSweepMs + 2 * kPauseMs + 1000},
        FamilyCase{"NothingWithoutAnAnswer", "oem7700", kSilentToVersionRequests,
                   false, false, kUnansweredVersionRequests, kSweepMs + 5000 + 2 * kPauseMs}),
    kCaseName);

TEST(FamilyConfigurationLineEnds, OemSixEndsAnyHalfCommandBeforeTheFilter)
{
    SimulatedReceiver receiver(ReceiverOptions("oem6"));
    receiver.MakeConfigurer()->ApplyFamilyConfiguration();
    const Lines heard = receiver.Heard(true);
    const Lines expectedStart = {"\r\n", "\r\n", "COM 115200\r\n", "\r\n", "\r\n",
                                 "serialconfig 115200\r\n", "LOG VERSIONA ONCE\r\n", "\r\n",
                                 "PDPFILTER ENABLE\r\n"};
    ASSERT_GE(heard.size(), expectedStart.size());
    EXPECT_EQ(expectedStart, Lines(heard.begin(), heard.begin() + 9));
}

}  // namespace
