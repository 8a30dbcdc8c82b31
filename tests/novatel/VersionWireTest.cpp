#include "receivers/ReceiverType.h"
#include "receivers/novatel/VersionLog.h"
#include "sim/Fault.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

using namespace NovatelCommon;
using GnssSim::Fault;

namespace {

const std::string kRequest = "log versiona once\r\n";

class VersionStrings : public testing::TestWithParam<const char*> {};

TEST_P(VersionStrings, ComeFromTheReceiversOwnLog)
{
    SimulatedReceiver receiver(ReceiverOptions(GetParam()));
    auto configurer = receiver.MakeConfigurer();
    const GnssSim::ReceiverIdentity identity = receiver.Sim().Identity();
    const GnssSim::Component& main = identity.Main();

    const std::string raw = configurer->GetRawVersionInfo();
    EXPECT_EQ(0u, raw.find("[COM1]#VERSIONA,")) << raw;
    EXPECT_EQ("\r\n", raw.substr(raw.size() - 2));
    // Characters 4 to 9 of the field as sent, opening quote at 0 (an OEMV's short version ends in
    // its closing quote).
    const std::string quotedSw = "\"" + main.swVersion + "\"";
    EXPECT_EQ(quotedSw.substr(4, 6), configurer->GetFirmwareVersion());
    EXPECT_EQ(identity.Package() != nullptr ? identity.Package()->swVersion : "",
              configurer->GetExtendedVersion());
    EXPECT_EQ(main.model, configurer->GetModel());
    const VersionRecord record = configurer->GetVersionRecord();
    EXPECT_EQ(main.type, record.strComponentType);
    EXPECT_EQ(main.psn, record.strPsn);
    EXPECT_EQ(main.hwVersion, record.strHwVersion);
    EXPECT_EQ(main.swVersion, record.strSwVersion);
    EXPECT_EQ(main.bootVersion, record.strBootVersion);
    // Nothing is kept: every string is asked for again.
    EXPECT_EQ(Lines(5, kRequest), receiver.Heard());
}

INSTANTIATE_TEST_SUITE_P(Generations, VersionStrings,
                         testing::Values("oemv", "oemstar", "oemstarg", "oem6", "oem7500", "oem7700"));

TEST(VersionLog, AnUnansweredRequestIsMadeTwiceThenGivesEmptyStrings)
{
    GnssSim::SimOptions options = ReceiverOptions("oem6");
    options.faults = {Fault::NoAnswer("LOG VERSIONA ONCE")};
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    const Stopwatch clock;
    EXPECT_EQ("", configurer->ReadVersionLog());
    ExpectTook(clock, 2 * 1000, 2 * 500);
    EXPECT_EQ("", configurer->GetFirmwareVersion());
    EXPECT_EQ(Lines(4, kRequest), receiver.Heard());
}

TEST(RequestVersionLog, AsksAfreshEveryHundredMilliseconds)
{
    GnssSim::SimOptions options = ReceiverOptions("oem7700");
    options.faults = {Fault::NoAnswer("LOG VERSIONA ONCE")};
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    const Stopwatch clock;
    EXPECT_FALSE(configurer->RequestVersionLog(250));
    // Slices of 100, 100 and 50 ms, each read at most half its slice late.
    ExpectTook(clock, 250, 50 + 50 + 25);
    EXPECT_FALSE(configurer->RequestVersionLog(0));
    EXPECT_EQ(Lines(3, "LOG VERSIONA ONCE\r\n"), receiver.Heard());
}

TEST(RequestVersionLog, StopsAtTheFirstAcknowledgement)
{
    SimulatedReceiver receiver(ReceiverOptions("oem6"));
    auto configurer = receiver.MakeConfigurer();
    EXPECT_TRUE(configurer->RequestVersionLog(5000));
    EXPECT_EQ(Lines{"LOG VERSIONA ONCE\r\n"}, receiver.Heard());
}

struct IdentifyCase {
    const char* receiver;
    int type;
};

void PrintTo(const IdentifyCase& c, std::ostream* os)
{
    *os << c.receiver;
}

class Identify : public testing::TestWithParam<IdentifyCase> {};

TEST_P(Identify, RecognisesTheGenerationAtTheConsolesRate)
{
    SimulatedReceiver receiver(ReceiverOptions(GetParam().receiver), 9600);
    EXPECT_EQ(GetParam().type, IdentifyNovatelReceiver(receiver.Port()));
    EXPECT_EQ(115200, receiver.Port().GetBaudRate());
    EXPECT_EQ(Lines{kRequest}, receiver.Heard());
}

INSTANTIATE_TEST_SUITE_P(Generations, Identify,
                         testing::Values(IdentifyCase{"oemstar", ReceiverType::OemStar},
                                         IdentifyCase{"oemstarg", ReceiverType::OemStarG},
                                         IdentifyCase{"oem6", ReceiverType::Oem6},
                                         IdentifyCase{"oem7500", ReceiverType::Oem7500},
                                         IdentifyCase{"oem7700", ReceiverType::Oem7700}),
                         [](const testing::TestParamInfo<IdentifyCase>& info) {
                             return std::string(info.param.receiver);
                         });

TEST(IdentifyAtOtherRates, AReceiverAt9600IsFoundLastAndTheLineStaysThere)
{
    GnssSim::SimOptions options = ReceiverOptions("oem6");
    options.startupBaud = 9600;
    SimulatedReceiver receiver(options);
    const Stopwatch clock;
    EXPECT_EQ(ReceiverType::Oem6, IdentifyNovatelReceiver(receiver.Port()));
    // Two rates of two unanswered one-second windows each, and three settling pauses.
    ExpectTook(clock, 3 * 100 + 4 * 1000, 4 * 500);
    EXPECT_EQ(9600, receiver.Port().GetBaudRate());
    EXPECT_EQ(Lines{kRequest}, receiver.Heard());
}

TEST(IdentifyAtOtherRates, AnOemvIsNotRecognisedAndTheLineGoesBackToItsEntryRate)
{
    SimulatedReceiver receiver(ReceiverOptions("oemv"), 57600);
    const Stopwatch clock;
    EXPECT_EQ(ReceiverType::Unknown, IdentifyNovatelReceiver(receiver.Port()));
    ExpectTook(clock, 3 * 100 + 6 * 1000, 6 * 500);
    EXPECT_EQ(57600, receiver.Port().GetBaudRate());
    EXPECT_EQ(Lines(2, kRequest), receiver.Heard());
}

}  // namespace
