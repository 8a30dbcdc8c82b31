#include "sim/Fault.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

#include <algorithm>

using GnssSim::Fault;

namespace {

const std::string kListRequest = "log chanconfiglista once\r\n";

// The receiver restarts after "selectchanconfig": 1 s, then 5 s more, before it is asked again.
constexpr long kRestartWaitsMs = 1000 + 5000;

TEST(CurrentChannelConfig, IsTheOneTheReceiverListsAsInUse)
{
    GnssSim::SimOptions options = ReceiverOptions("oemstarg");
    options.channelConfig = 4;
    SimulatedReceiver receiver(options);
    EXPECT_EQ(4, receiver.MakeConfigurer()->GetCurrentChannelConfig());
    EXPECT_EQ(Lines{kListRequest}, receiver.Heard());
}

TEST(CurrentChannelConfig, IsMinusOneWhenTheReceiverHasNoList)
{
    SimulatedReceiver receiver(ReceiverOptions("oemv"));
    EXPECT_EQ(-1, receiver.MakeConfigurer()->GetCurrentChannelConfig());
}

struct InUseCase {
    const char* receiver;
    int config;
    bool useGlonass;
    bool alternative;
};

void PrintTo(const InUseCase& c, std::ostream* os)
{
    *os << c.receiver << " " << c.config;
}

class ChannelConfigInUse : public testing::TestWithParam<InUseCase> {};

TEST_P(ChannelConfigInUse, OnlyTheListIsAskedFor)
{
    GnssSim::SimOptions options = ReceiverOptions(GetParam().receiver);
    options.channelConfig = GetParam().config;
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    const Stopwatch clock;
    EXPECT_EQ(1, configurer->SelectChannelConfig(GetParam().useGlonass, GetParam().alternative));
    EXPECT_LT(clock.ElapsedMs(), 500);
    // The OEM6 first reads its model to learn whether it has GLONASS.
    Lines heard = receiver.Heard();
    if (!heard.empty() && heard.front() == "log versiona once\r\n") {
        heard.erase(heard.begin());
    }
    EXPECT_EQ(Lines{kListRequest}, heard);
}

INSTANTIATE_TEST_SUITE_P(Generations, ChannelConfigInUse,
                         testing::Values(InUseCase{"oemstarg", 5, true, true},
                                         InUseCase{"oem6", 2, false, true},
                                         InUseCase{"oem7500", 3, true, false}));

TEST(ChannelConfigSelection, AReceiverWithoutGlonassIsNotAsked)
{
    for (const char* name : {"oemv", "oemstar"}) {
        SimulatedReceiver receiver(ReceiverOptions(name));
        EXPECT_EQ(0, receiver.MakeConfigurer()->SelectChannelConfig(true, true)) << name;
        EXPECT_EQ(Lines{}, receiver.Heard()) << name;
    }
}

struct SwitchCase {
    const char* receiver;
    int config;
    std::string lastFamilyCommand;
};

void PrintTo(const SwitchCase& c, std::ostream* os)
{
    *os << c.receiver << " to " << c.config;
}

class ChannelConfigSwitch : public testing::TestWithParam<SwitchCase> {};

TEST_P(ChannelConfigSwitch, RestartsFindsTheReceiverAndAppliesTheFamilyConfiguration)
{
    SimulatedReceiver receiver(ReceiverOptions(GetParam().receiver));
    auto configurer = receiver.MakeConfigurer();
    const Stopwatch clock;
    EXPECT_EQ(1, configurer->ApplyChannelConfig(GetParam().config));
    ExpectTook(clock, kRestartWaitsMs + 5 * 10, 100 + 5 * 10);
    EXPECT_EQ(GetParam().config, receiver.Sim().ChannelConfig());
    const Lines heard = receiver.Heard();
    ASSERT_GE(heard.size(), 4u);
    EXPECT_EQ((Lines{kListRequest, "selectchanconfig " + std::to_string(GetParam().config) + "\r\n",
                     "echo off\r\n"}),
              Lines(heard.begin(), heard.begin() + 3));
    EXPECT_EQ(GetParam().lastFamilyCommand, heard.back());
}

INSTANTIATE_TEST_SUITE_P(
    Generations, ChannelConfigSwitch,
    testing::Values(SwitchCase{"oemstar", 2, "COM COM1,115200,N,8,1,N,OFF,ON\r\n"},
                    SwitchCase{"oemstarg", 5, "COM COM1,115200,N,8,1,N,OFF,ON\r\n"},
                    SwitchCase{"oem6", 3, "SERIALCONFIG COM1 115200 N 8 1 N OFF\r\n"},
                    SwitchCase{"oem7700", 2, "SERIALCONFIG COM1 115200 N 8 1 N OFF\r\n"}));

TEST(ChannelConfigSwitchFailure, ARefusedSwitchStillWaitsForARestartAndAppliesNothing)
{
    GnssSim::SimOptions options = ReceiverOptions("oem6");
    options.faults = {Fault::NoAnswer("SELECTCHANCONFIG *")};
    SimulatedReceiver receiver(options);
    const Stopwatch clock;
    EXPECT_EQ(0, receiver.MakeConfigurer()->ApplyChannelConfig(3));
    ExpectTook(clock, 1000 + kRestartWaitsMs);
    EXPECT_EQ((Lines{kListRequest, "selectchanconfig 3\r\n", "echo off\r\n"}), receiver.Heard());
}

// The one case that runs the full 30 s search for a restarted receiver.
TEST(ChannelConfigSwitchFailure, AReceiverThatNeverAnswersAgainCostsAbout36Seconds)
{
    GnssSim::SimOptions options = ReceiverOptions("oemstarg");
    // The sweeps between the attempts go unanswered too: on a slow machine (qemu) their "<OK" can
    // arrive after the sweep has flushed its input and be taken for the answer to "echo off".
    options.faults = {Fault::NoAnswer("ECHO OFF"), Fault::NoAnswer("COM *"),
                      Fault::NoAnswer("SERIALCONFIG *")};
    SimulatedReceiver receiver(options);
    const Stopwatch clock;
    EXPECT_EQ(0, receiver.MakeConfigurer()->ApplyChannelConfig(5));
    // The last attempt, one exchange and one sweep, may begin just before the 30 s are up.
    ExpectTook(clock, kRestartWaitsMs + 30000, 1000 + 5 * 10);
    const Lines heard = receiver.Heard();
    EXPECT_EQ((Lines{kListRequest, "selectchanconfig 5\r\n", "echo off\r\n"}),
              Lines(heard.begin(), heard.begin() + 3));
    // Between the attempts the receiver is commanded back to the line's rate.
    EXPECT_EQ("serialconfig 115200\r\n", heard.back());
    EXPECT_GE(std::count(heard.begin(), heard.end(), "echo off\r\n"), 25);
}

class ValidModels : public testing::TestWithParam<const char*> {};

TEST_P(ValidModels, AreListedInTheReceiversOrder)
{
    SimulatedReceiver receiver(ReceiverOptions(GetParam()));
    Lines expected;
    for (const GnssSim::ValidModel& model : receiver.Sim().ValidModels()) {
        expected.push_back(model.model);
    }
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(expected, receiver.MakeConfigurer()->ListValidModels());
    EXPECT_EQ(Lines{"log validmodelsa once\r\n"}, receiver.Heard());
}

INSTANTIATE_TEST_SUITE_P(Generations, ValidModels,
                         testing::Values("oemv", "oemstar", "oemstarg", "oem6", "oem7500", "oem7700"));

TEST(ValidModelsList, AnUnansweredRequestGivesNoModels)
{
    GnssSim::SimOptions options = ReceiverOptions("oem7700");
    options.faults = {Fault::NoAnswer("LOG VALIDMODELSA ONCE")};
    SimulatedReceiver receiver(options);
    EXPECT_EQ(Lines{}, receiver.MakeConfigurer()->ListValidModels());
}

}  // namespace
