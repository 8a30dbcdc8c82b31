#include "receivers/novatel/COEMStar.h"
#include "receivers/novatel/NovatelOem6.h"
#include "receivers/novatel/NovatelOem7.h"
#include "sim/Fault.h"
#include "sim/ReceiverCatalogue.h"
#include "tests/novatel/SimulatedReceiver.h"
#include "tests/novatel/WireTestSupport.h"

using GnssSim::Fault;

namespace {

struct Systems {
    bool gps, glonass, beidou, galileo, qzss, sbas, ppp;
};

bool ConfigureFix(NovatelCommon::OemV1Descendants& configurer, const Systems& s)
{
    return configurer.ConfigureFix(s.gps, s.glonass, s.beidou, s.galileo, s.qzss, s.sbas, s.ppp);
}

// Lines without their line ends, as the fix tables are written.
Lines WithLineEnds(const Lines& commands)
{
    Lines lines;
    for (const std::string& command : commands) {
        lines.push_back(command + "\r\n");
    }
    return lines;
}

struct FixCase {
    const char* name;
    const char* receiver;
    int channelConfig;  // the one in use when the fix is configured
    Systems systems;
    std::vector<Fault> faults;
    bool result;
    Lines heard;
};

void PrintTo(const FixCase& c, std::ostream* os)
{
    *os << c.name;
}

class ConfigureFixOnTheWire : public testing::TestWithParam<FixCase> {};

TEST_P(ConfigureFixOnTheWire, SendsTheWholeSequence)
{
    const FixCase& c = GetParam();
    GnssSim::SimOptions options = ReceiverOptions(c.receiver);
    options.channelConfig = c.channelConfig;
    options.faults = c.faults;
    SimulatedReceiver receiver(options);
    auto configurer = receiver.MakeConfigurer();
    EXPECT_EQ(c.result, ConfigureFix(*configurer, c.systems));
    EXPECT_EQ(WithLineEnds(c.heard), receiver.Heard());
}

const auto kCaseName = [](const testing::TestParamInfo<FixCase>& info) {
    return std::string(info.param.name);
};

// GPS, BeiDou, Galileo and QZSS mean nothing to an OEM6; they are set against the grain here.
INSTANTIATE_TEST_SUITE_P(
    Oem6, ConfigureFixOnTheWire,
    testing::Values(
        FixCase{"Nothing", "oem6", 1, {false, false, true, true, true, false, false}, {}, true,
                {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL DISABLE",
                 "ASSIGNALL GLONASS IDLE"}},
        FixCase{"Ppp", "oem6", 1, {true, false, false, false, false, false, true}, {}, true,
                {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS",
                 "SBASCONTROL DISABLE", "ASSIGNALL GLONASS IDLE"}},
        FixCase{"Sbas", "oem6", 1, {true, false, false, false, false, true, false}, {}, true,
                {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
                 "ASSIGNALL GLONASS IDLE"}},
        FixCase{"SbasPpp", "oem6", 1, {true, false, false, false, false, true, true}, {}, true,
                {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS",
                 "SBASCONTROL ENABLE AUTO", "ASSIGNALL GLONASS IDLE"}},
        FixCase{"Glonass", "oem6", 1, {true, true, false, false, false, false, false}, {}, true,
                {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL DISABLE",
                 "ASSIGNALL GLONASS AUTO"}},
        // The exception: the SBAS-and-PPP sequence, GLONASS idled and SBAS enabled.
        FixCase{"GlonassPpp", "oem6", 1, {true, true, false, false, false, false, true}, {}, true,
                {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS",
                 "SBASCONTROL ENABLE AUTO", "ASSIGNALL GLONASS IDLE"}},
        FixCase{"GlonassSbas", "oem6", 1, {true, true, false, false, false, true, false}, {}, true,
                {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
                 "ASSIGNALL GLONASS AUTO"}},
        FixCase{"GlonassSbasPpp", "oem6", 1, {false, true, true, true, true, true, true}, {}, true,
                {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS",
                 "SBASCONTROL ENABLE AUTO", "ASSIGNALL GLONASS AUTO"}},
        FixCase{"NoEarlyStop", "oem6", 1, {true, true, false, false, false, true, true},
                {Fault::NoAnswer("ASSIGNLBANDBEAM AUTO"), Fault::NoAnswer("PSRDIFFSOURCE SBAS")}, false,
                {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS",
                 "SBASCONTROL ENABLE AUTO", "ASSIGNALL GLONASS AUTO"}}),
    kCaseName);

INSTANTIATE_TEST_SUITE_P(
    Oem7, ConfigureFixOnTheWire,
    testing::Values(
        FixCase{"AllOff", "oem7700", 1, {false, false, false, false, false, false, false}, {}, true,
                {"LOCKOUTSYSTEM GLONASS", "LOCKOUTSYSTEM BEIDOU", "LOCKOUTSYSTEM GALILEO",
                 "LOCKOUTSYSTEM QZSS", "SBASCONTROL DISABLE", "ASSIGNLBANDBEAM IDLE"}},
        FixCase{"AllOn", "oem7500", 1, {true, true, true, true, true, true, true}, {}, true,
                {"UNLOCKOUTSYSTEM GLONASS", "UNLOCKOUTSYSTEM BEIDOU", "UNLOCKOUTSYSTEM GALILEO",
                 "UNLOCKOUTSYSTEM QZSS", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
                 "ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO"}},
        FixCase{"EachSystemByItself", "oem7700", 1, {true, true, false, true, false, false, true}, {},
                true,
                {"UNLOCKOUTSYSTEM GLONASS", "LOCKOUTSYSTEM BEIDOU", "UNLOCKOUTSYSTEM GALILEO",
                 "LOCKOUTSYSTEM QZSS", "SBASCONTROL DISABLE", "ASSIGNLBANDBEAM AUTO",
                 "PPPDYNAMICS AUTO"}},
        FixCase{"NoEarlyStop", "oem7700", 1, {true, true, false, true, true, true, false},
                {Fault::NoAnswer("LOCKOUTSYSTEM BEIDOU")}, false,
                {"UNLOCKOUTSYSTEM GLONASS", "LOCKOUTSYSTEM BEIDOU", "UNLOCKOUTSYSTEM GALILEO",
                 "UNLOCKOUTSYSTEM QZSS", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
                 "ASSIGNLBANDBEAM IDLE"}}),
    kCaseName);

// The channel configuration asked for is already in use, so only its list request goes out.
INSTANTIATE_TEST_SUITE_P(
    OemStar, ConfigureFixOnTheWire,
    testing::Values(
        FixCase{"WithoutGpsNothing", "oemstarg", 1, {false, true, true, true, true, true, true}, {},
                true, {}},
        FixCase{"GpsWithoutSbas", "oemstar", 2, {true, false, true, true, true, false, true}, {}, true,
                {"log chanconfiglista once", "PSRDIFFSOURCE SBAS", "SBASCONTROL DISABLE"}},
        FixCase{"GpsSbas", "oemstar", 2, {true, false, false, false, false, true, false}, {}, true,
                {"log chanconfiglista once", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO"}},
        FixCase{"GlonassLeavesSbasAlone", "oemstarg", 3, {true, true, false, false, false, false, false},
                {}, true, {"log chanconfiglista once"}},
        FixCase{"GlonassSbas", "oemstarg", 5, {true, true, false, false, false, true, false}, {}, true,
                {"log chanconfiglista once", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO"}},
        // A refused channel configuration costs its restart wait; the SBAS commands still follow.
        FixCase{"RefusedConfigurationStillSetsSbas", "oemstar", 1,
                {true, false, false, false, false, true, false},
                {Fault::NoAnswer("SELECTCHANCONFIG *")}, false,
                {"log chanconfiglista once", "selectchanconfig 2", "echo off", "PSRDIFFSOURCE SBAS",
                 "SBASCONTROL ENABLE AUTO"}}),
    kCaseName);

INSTANTIATE_TEST_SUITE_P(OemV, ConfigureFixOnTheWire,
                         testing::Values(FixCase{"NotAvailable", "oemv", 1,
                                                 {true, true, true, true, true, true, true}, {},
                                                 false, {}}),
                         kCaseName);

// A receiver with the given model name in its version log.
GnssSim::SimOptions WithModel(const char* receiver, const std::string& model)
{
    GnssSim::SimOptions options = ReceiverOptions(receiver);
    GnssSim::ReceiverKind kind;
    GnssSim::FindReceiverKind(receiver, kind);
    GnssSim::ReceiverIdentity identity = GnssSim::DefaultIdentity(kind);
    identity.Main().model = model;
    options.identity = identity;
    return options;
}

TEST(Glonass, AnOem6HasItOnlyWithOneOfItsModelsExactly)
{
    const std::pair<std::string, bool> cases[] = {
        {"D2LR0GTTR", true}, {"D2L0PG0TN", true},  {"D2LR0GTTR ", false},
        {"d2lr0gttr", false}, {"D2LR0RTTR", false}, {"", false},
    };
    for (const auto& [model, glonass] : cases) {
        SimulatedReceiver receiver(WithModel("oem6", model));
        EXPECT_EQ(glonass, NovatelOem6(&receiver.Port()).SupportsGlonass()) << "'" << model << "'";
    }
}

TEST(Glonass, EveryOem7HasIt)
{
    SimulatedReceiver receiver(WithModel("oem7500", ""));
    EXPECT_TRUE(NovatelOem7(&receiver.Port()).SupportsGlonass());
    EXPECT_EQ(Lines{}, receiver.Heard());
}

TEST(Glonass, AnOemStarHasItOnlyAsTheStarGVariant)
{
    SimulatedReceiver receiver(ReceiverOptions("oemstarg"));
    EXPECT_FALSE(COEMStar(&receiver.Port(), false).SupportsGlonass());
    EXPECT_TRUE(COEMStar(&receiver.Port(), true).SupportsGlonass());
    EXPECT_EQ(Lines{}, receiver.Heard());
}

}  // namespace
