#include "receivers/SbasPrnFlags.h"
#include "sim/Fault.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

#include <set>

using GnssSim::Fault;

namespace {

const std::set<int> kAll;  // no PRN given: every flag set

struct SbasCase {
    const char* name;
    const char* receiver;
    std::set<int> prns;
    bool useSbas;
    bool allowType0;
    std::vector<Fault> faults;
    Lines heard;
    long waitsMs;  // what the operation waits for replies that never come
};

void PrintTo(const SbasCase& c, std::ostream* os)
{
    *os << c.name;
}

class ConfigureSbas : public testing::TestWithParam<SbasCase> {};

TEST_P(ConfigureSbas, SendsTheSequenceUpToTheFirstRefusal)
{
    const SbasCase& c = GetParam();
    GnssSim::SimOptions options = ReceiverOptions(c.receiver);
    options.faults = c.faults;
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    const Stopwatch clock;
    EXPECT_TRUE(configurer->ConfigureSbas(BuildSbasPrnFlags(c.prns), c.useSbas, c.allowType0));
    ExpectTook(clock, c.waitsMs, c.waitsMs / 2);
    EXPECT_EQ(c.heard, receiver.Heard());
}

// OEMV and OEM-Star receivers: channels 12 and 13; every command gets half a second for its
// "<OK", and the empty first command of the disabled case waits it out.
INSTANTIATE_TEST_SUITE_P(
    OemV1, ConfigureSbas,
    testing::Values(
        SbasCase{"Disabled", "oemv", kAll, false, false, {}, {"sbascontrol disable\r\n"}, 500},
        SbasCase{"NoPrnIsLikeDisabled", "oemstar", {999}, true, true, {},
                 {"sbascontrol disable\r\n"}, 500},
        SbasCase{"AllPrnsAutomatic", "oemstar", kAll, true, false, {},
                 {"psrdiffsource sbas\r\n", "sbascontrol enable auto 0 none\r\n", "ASSIGN 12 AUTO\r\n",
                  "ASSIGN 13 AUTO\r\n"},
                 0},
        SbasCase{"TwoHighestPrnsType0AsType2", "oemstarg", {131, 135, 138}, true, true, {},
                 {"psrdiffsource sbas\r\n", "sbascontrol enable auto 0 zerototwo\r\n",
                  "ASSIGN 12 138 0 500\r\n", "ASSIGN 13 135 0 500\r\n"},
                 0},
        SbasCase{"OnePrnIdlesChannel13", "oemv", {122}, true, false, {},
                 {"psrdiffsource sbas\r\n", "sbascontrol enable auto 0 none\r\n",
                  "ASSIGN 12 122 0 500\r\n", "ASSIGN 13 IDLE\r\n"},
                 0},
        SbasCase{"NoRefusalStopsIt", "oemstar", {122}, true, false,
                 {Fault::NoAnswer("PSRDIFFSOURCE SBAS"), Fault::NoAnswer("ASSIGN 12 *")},
                 {"psrdiffsource sbas\r\n", "sbascontrol enable auto 0 none\r\n",
                  "ASSIGN 12 122 0 500\r\n", "ASSIGN 13 IDLE\r\n"},
                 2 * 500}),
    [](const testing::TestParamInfo<SbasCase>& info) { return std::string(info.param.name); });

// OEM6: channels 16 to 19. Channel 16 is assigned even after SBAS could not be enabled.
INSTANTIATE_TEST_SUITE_P(
    Oem6, ConfigureSbas,
    testing::Values(
        SbasCase{"Disabled", "oem6", {135}, false, false, {}, {"SBASCONTROL DISABLE\r\n"}, 0},
        SbasCase{"AllPrnsAutomatic", "oem6", kAll, true, true, {},
                 {"PSRDIFFSOURCE SBAS\r\n", "SBASCONTROL ENABLE AUTO\r\n", "ASSIGNALL SBAS AUTO\r\n"},
                 0},
        SbasCase{"AutomaticStopsAtARefusal", "oem6", kAll, true, false,
                 {Fault::NoAnswer("SBASCONTROL ENABLE AUTO")},
                 {"PSRDIFFSOURCE SBAS\r\n", "SBASCONTROL ENABLE AUTO\r\n"}, 1000},
        SbasCase{"HighestPrnFirst", "oem6", {120, 135}, true, false, {},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 16 135\r\n", "ASSIGN 17 120\r\n",
                  "ASSIGN 18 IDLE\r\n", "ASSIGN 19 IDLE\r\n"},
                 0},
        SbasCase{"OnePrn", "oem6", {138}, true, false, {},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 16 138\r\n", "ASSIGN 17 IDLE\r\n",
                  "ASSIGN 18 IDLE\r\n", "ASSIGN 19 IDLE\r\n"},
                 0},
        SbasCase{"ThirdPrnDropped", "oem6", {125, 140, 150}, true, false, {},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 16 150\r\n", "ASSIGN 17 140\r\n",
                  "ASSIGN 18 IDLE\r\n", "ASSIGN 19 IDLE\r\n"},
                 0},
        SbasCase{"Channel16EvenWhenNotEnabled", "oem6", {138}, true, false,
                 {Fault::NoAnswer("SBASCONTROL ENABLE")},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 16 138\r\n"}, 1000},
        SbasCase{"StopsAtARefusedChannel", "oem6", {120, 135}, true, false,
                 {Fault::NoAnswer("ASSIGN 17 *")},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 16 135\r\n", "ASSIGN 17 120\r\n"}, 3000}),
    [](const testing::TestParamInfo<SbasCase>& info) { return std::string(info.param.name); });

// OEM7: channels 20 to 23 with a Doppler window; no channel without SBAS enabled.
INSTANTIATE_TEST_SUITE_P(
    Oem7, ConfigureSbas,
    testing::Values(
        SbasCase{"Disabled", "oem7500", kAll, false, true, {}, {"SBASCONTROL DISABLE\r\n"}, 0},
        SbasCase{"AllPrnsAutomatic", "oem7700", kAll, true, false, {},
                 {"PSRDIFFSOURCE SBAS\r\n", "SBASCONTROL ENABLE AUTO\r\n", "ASSIGNALL SBAS AUTO\r\n"},
                 0},
        SbasCase{"OnePrn", "oem7700", {133}, true, false, {},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 20 133 0 500\r\n", "ASSIGN 21 IDLE\r\n",
                  "ASSIGN 22 IDLE\r\n", "ASSIGN 23 IDLE\r\n"},
                 0},
        SbasCase{"HighestPrnFirst", "oem7500", {120, 135, 158}, true, false, {},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 20 158 0 500\r\n", "ASSIGN 21 135 0 500\r\n",
                  "ASSIGN 22 IDLE\r\n", "ASSIGN 23 IDLE\r\n"},
                 0},
        SbasCase{"NothingAssignedWhenNotEnabled", "oem7700", {133}, true, false,
                 {Fault::NoAnswer("SBASCONTROL ENABLE")}, {"SBASCONTROL ENABLE\r\n"}, 1000},
        SbasCase{"StopsAtARefusedChannel", "oem7700", {133}, true, false,
                 {Fault::NoAnswer("ASSIGN 20 *")},
                 {"SBASCONTROL ENABLE\r\n", "ASSIGN 20 133 0 500\r\n"}, 3000}),
    [](const testing::TestParamInfo<SbasCase>& info) { return std::string(info.param.name); });

TEST(ConfigureSbasLineEnd, OemSixAndSevenEndAnyHalfCommandFirst)
{
    for (const char* name : {"oem6", "oem7700"}) {
        SimulatedReceiver receiver(ReceiverOptions(name));
        receiver.MakeConfigurer()->ConfigureSbas(BuildSbasPrnFlags(kAll), false, false);
        EXPECT_EQ((Lines{"\r\n", "SBASCONTROL DISABLE\r\n"}), receiver.Heard(true)) << name;
    }
}

}  // namespace
