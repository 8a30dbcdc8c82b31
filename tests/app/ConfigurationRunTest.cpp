// Configuration runs against simulated receivers through the real port: what the driver is told,
// the status, and the order in which the run's steps reach the receiver.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <string>
#include <vector>

#include "tests/app/InProcessRun.h"
#include "tests/app/NovatelGenerations.h"

using ::testing::AnyOfArray;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Lines = std::vector<std::string>;

namespace {

const char* const kNotInitialized = "Could not initialize GNSS receiver\n";

// The lines of heard that are among landmarks, in the order heard.
Lines LandmarksHeard(const Lines& heard, const Lines& landmarks)
{
    const std::set<std::string> wanted(landmarks.begin(), landmarks.end());
    Lines found;
    for (const std::string& line : heard) {
        if (wanted.count(line) != 0) {
            found.push_back(line);
        }
    }
    return found;
}

struct ConfigurationCase {
    const char* name;
    const char* receiver;
    std::vector<const char*> arguments;
    // Lines that mark the run's steps, in the order the receiver must hear them (every time it
    // hears them); the last is the last line it hears.
    Lines landmarks;
    Lines neverHeard;
};

void PrintTo(const ConfigurationCase& c, std::ostream* os)
{
    *os << c.name;
}

class NovatelConfigurationRun : public testing::TestWithParam<ConfigurationCase> {};

TEST_P(NovatelConfigurationRun, ConfiguresInOrderAndTellsTheDriverWhatIsAttached)
{
    const ConfigurationCase& c = GetParam();
    const NovatelGeneration& generation = RecognisedNovatelGeneration(c.receiver);
    SimulatedLine line(generation.Options());
    const RunOutcome result = line.Run(c.arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.driverTold,
                ElementsAre(DriverHandOver{generation.type, generation.firmware,
                                           generation.packageVersion, generation.main.model}));
    const Lines heard = line.Heard();
    EXPECT_EQ(LandmarksHeard(heard, c.landmarks), c.landmarks);
    EXPECT_EQ(LastOf(heard), c.landmarks.back());
    for (const std::string& never : c.neverHeard) {
        EXPECT_EQ(CountOf(heard, never), 0) << never;
    }
}

// Each case's landmarks begin with the last sentence switched off (ZDA), then the first command
// of the generation's base configuration, the fix configuration when asked for, SBAS, and end
// with ZDA switched on and the save when asked for.
const char* const kZdaOff = "UNLOG GPZDA\r\n";
const char* const kZdaOn = "LOG GPZDA ONTIME 1.0\r\n";
const char* const kSave = "SAVECONFIG\r\n";

INSTANTIATE_TEST_SUITE_P(
    NovatelGenerations, NovatelConfigurationRun,
    testing::Values(
        // GPS, GLONASS and SBAS ask for channel configuration 5, which this OEM-Star does not
        // have; the fix's SBAS commands follow all the same.
        ConfigurationCase{"OemStarWithGlonass",
                          "oemstar",
                          {"--use-glonass", "--use-sbas", "-p", "133", "-z", "-Z", "1",
                           "--attempt-fix-config", "-X"},
                          {kZdaOff, "DYNAMICS LAND\r\n", "selectchanconfig 5\r\n",
                           "PSRDIFFSOURCE SBAS\r\n", "SBASCONTROL ENABLE AUTO\r\n",
                           "psrdiffsource sbas\r\n", "ASSIGN 12 133 0 500\r\n",
                           "ASSIGN 13 IDLE\r\n", kZdaOn, kSave},
                          {}},
        // Without GLONASS the fix asks for configuration 2; the StarG restarts into it and gets
        // its base configuration again.
        ConfigurationCase{"OemStarGWithoutGlonass",
                          "oemstarg",
                          {"--use-sbas", "-p", "133", "-z", "-Z", "1", "--attempt-fix-config",
                           "-X"},
                          {kZdaOff, "DYNAMICS LAND\r\n", "selectchanconfig 2\r\n",
                           "DYNAMICS LAND\r\n", "PSRDIFFSOURCE SBAS\r\n",
                           "SBASCONTROL ENABLE AUTO\r\n", "psrdiffsource sbas\r\n",
                           "ASSIGN 12 133 0 500\r\n", "ASSIGN 13 IDLE\r\n", kZdaOn, kSave},
                          {}},
        ConfigurationCase{"Oem6WithGlonassAndSbas",
                          "oem6",
                          {"--use-glonass", "--use-sbas", "-p", "133", "-z", "-Z", "1",
                           "--attempt-fix-config", "-X"},
                          {kZdaOff, "PDPFILTER ENABLE\r\n", "ASSIGNLBANDBEAM IDLE\r\n",
                           "PSRDIFFSOURCE SBAS\r\n", "SBASCONTROL ENABLE AUTO\r\n",
                           "ASSIGNALL GLONASS AUTO\r\n", "SBASCONTROL ENABLE\r\n",
                           "ASSIGN 16 133\r\n", "ASSIGN 17 IDLE\r\n", kZdaOn, kSave},
                          {}},
        // Each satellite system is switched by itself on OEM7, so these two cases together
        // show every flag reaching the fix configuration in its own place.
        ConfigurationCase{"Oem7500WithGlonassGalileoAndSbas",
                          "oem7500",
                          {"--use-glonass", "--use-galileo", "--use-sbas", "-p", "133", "-z",
                           "-Z", "1", "--attempt-fix-config", "-X"},
                          {kZdaOff, "PDPFILTER ENABLE\r\n", "UNLOCKOUTSYSTEM GLONASS\r\n",
                           "LOCKOUTSYSTEM BEIDOU\r\n", "UNLOCKOUTSYSTEM GALILEO\r\n",
                           "LOCKOUTSYSTEM QZSS\r\n", "PSRDIFFSOURCE SBAS\r\n",
                           "SBASCONTROL ENABLE AUTO\r\n", "ASSIGNLBANDBEAM IDLE\r\n",
                           "SBASCONTROL ENABLE\r\n", "ASSIGN 20 133 0 500\r\n",
                           "ASSIGN 21 IDLE\r\n", kZdaOn, kSave},
                          {}},
        ConfigurationCase{"Oem7700WithBeidouQzssAndPpp",
                          "oem7700",
                          {"--use-beidou", "--use-qzss", "--use-ppp", "-z", "-Z", "1",
                           "--attempt-fix-config", "-X"},
                          {kZdaOff, "PDPFILTER ENABLE\r\n", "LOCKOUTSYSTEM GLONASS\r\n",
                           "UNLOCKOUTSYSTEM BEIDOU\r\n", "LOCKOUTSYSTEM GALILEO\r\n",
                           "UNLOCKOUTSYSTEM QZSS\r\n", "SBASCONTROL DISABLE\r\n",
                           "ASSIGNLBANDBEAM AUTO\r\n", "PPPDYNAMICS AUTO\r\n",
                           "SBASCONTROL DISABLE\r\n", kZdaOn, kSave},
                          {}},
        // Without the options the fix configuration is left alone, nothing is saved and every
        // sentence but GGA stays off.
        ConfigurationCase{"Oem7700WithoutOptions",
                          "oem7700",
                          {},
                          {kZdaOff, "PDPFILTER ENABLE\r\n", "SBASCONTROL DISABLE\r\n",
                           "LOG GPGGALONG ONTIME 0.2\r\n", kZdaOff},
                          {"LOCKOUTSYSTEM GLONASS\r\n", "UNLOCKOUTSYSTEM GLONASS\r\n",
                           "ASSIGNLBANDBEAM IDLE\r\n", kSave}}),
    [](const testing::TestParamInfo<ConfigurationCase>& info) {
        return std::string(info.param.name);
    });

// What a receiver that is not recognised hears: the three probes and nothing else.
const Lines kProbeLines{"log versiona once\r\n", "$JAPP\r\n", "$PMCAG,004,908*5D\r\n"};

class UnrecognisedConfigurationRun : public testing::TestWithParam<const char*> {};

// No configurer can do anything for these, and the run says so. An OEMV answers the NovAtel
// probe but is not one of the generations detection recognises.
TEST_P(UnrecognisedConfigurationRun, ConfiguresNothingAndFails)
{
    SimulatedLine line(GetParam());
    const RunOutcome result = line.Run({"--use-sbas", "-z", "--attempt-fix-config", "-X"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, kNotInitialized);
    EXPECT_THAT(result.driverTold, ElementsAre(DriverHandOver{9, "", "", ""}));
    EXPECT_THAT(line.Heard(), Each(AnyOfArray(kProbeLines)));
}

INSTANTIATE_TEST_SUITE_P(NotRecognised, UnrecognisedConfigurationRun,
                         testing::Values("silent", "oemv"),
                         [](const testing::TestParamInfo<const char*>& info) {
                             return std::string(info.param);
                         });

TEST(OtherFamilyConfigurationRun, CsiReceiverIsConfiguredAndReportedAsCsi)
{
    SimulatedLine line("csi");
    const RunOutcome result = line.Run({"--use-sbas", "-p", "133", "-z", "-Z", "1", "-X"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    // A CSI receiver has no model, and its extended version is its firmware.
    EXPECT_THAT(result.driverTold, ElementsAre(DriverHandOver{1, "6.3Jun04", "6.3Jun04", ""}));
    const Lines heard = line.Heard();
    // Sentences off, then the corrections, and ZDA switched on last.
    const long zdaOff = IndexOf(heard, "$JASC,GPZDA,0\r\n");
    const long waas = IndexOf(heard, "$JDIFF,WAAS\r\n");
    EXPECT_GE(zdaOff, 0);
    EXPECT_LT(zdaOff, waas);
    EXPECT_LT(waas, IndexOf(heard, "$JWAASPRN,133\r\n"));
    EXPECT_EQ(LastOf(heard), "$JASC,GPZDA,1\r\n");
}

// The "$PMCAG" configurer's first setter needs every rate at 1 Hz or more, and ZDA starts at
// 0.2 Hz: the process has always ended there with SIGFPE, before anything but the probes reached
// the receiver and before the driver was told anything.
TEST(OtherFamilyConfigurationRun, PmcagReceiverEndsTheProcessWithSigfpe)
{
    SimulatedLine line("pmcag");
    EXPECT_EXIT(line.Run({"-Z", "1"}, PortMessages::Left), testing::KilledBySignal(SIGFPE), "");
    EXPECT_THAT(line.Heard(), Each(AnyOfArray(kProbeLines)));
    EXPECT_EQ(CountOf(line.Heard(), "$PMCAG,004,908*5D\r\n"), 1);
    EXPECT_THAT(line.Sim().HeardPackets(), IsEmpty());
}

}  // namespace
