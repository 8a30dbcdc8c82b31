// Configuration runs through the real port: status, streams, what the driver is told, and the
// order in which the run's steps reach the receiver.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/app/InProcessRun.h"
#include "tests/support/SimulatedReceiver.h"

namespace {

// Lines that mark the run's steps on each family: ZDA switched off with the other sentences, the
// base configuration, the fix configuration (OEM6, OEM7), SBAS, GGA and ZDA switched on, the save;
// and the last of the probes.
const Lines kSteps = {"UNLOG GPZDA\r\n", "PDPFILTER ENABLE\r\n", "ASSIGNALL GLONASS AUTO\r\n",
                      "LOCKOUTSYSTEM GLONASS\r\n", "UNLOCKOUTSYSTEM GLONASS\r\n",
                      "ASSIGN 16 133\r\n", "SBASCONTROL DISABLE\r\n",
                      "LOG GPGGALONG ONTIME 0.2\r\n", "LOG GPZDA ONTIME 1.0\r\n", "SAVECONFIG\r\n",
                      "$JASC,GPZDA,0\r\n", "$JDIFF,WAAS\r\n", "$JWAASPRN,133\r\n",
                      "$JASC,GPZDA,1\r\n", "$PMCAG,004,908*5D\r\n"};

struct ConfigurationCase {
    const char* receiver;
    std::vector<const char*> arguments;
    RunOutcome outcome;
    Lines steps;  // as often and in the order heard; the last is the last line heard
};

void PrintTo(const ConfigurationCase& c, std::ostream* os)
{
    *os << c.receiver;
}

class ConfigurationRun : public testing::TestWithParam<ConfigurationCase> {};

TEST_P(ConfigurationRun, ConfiguresInOrder)
{
    const ConfigurationCase& row = GetParam();
    SimulatedReceiver receiver(row.receiver);
    EXPECT_EQ(RunAgainst(receiver, row.arguments), row.outcome);
    const Lines heard = receiver.Heard();
    EXPECT_EQ(StepsHeard(heard, kSteps), row.steps);
    EXPECT_EQ(heard.back(), row.steps.back());
}

// Without options the fix configuration is left alone, nothing is saved and only GGA is switched
// on. A CSI receiver has no model, and its extended version is its firmware; its ZDA rate is sent
// (switched off) before ZDA is switched on. An OEMV answers the NovAtel probe but is not among
// the generations detection recognises: it hears the probes and nothing else, and the run fails.
INSTANTIATE_TEST_SUITE_P(
    Families, ConfigurationRun,
    testing::Values(
        ConfigurationCase{"oem6",
                          {"--use-glonass", "--use-sbas", "-p", "133", "-z", "-Z", "1",
                           "--attempt-fix-config", "-X"},
                          {0, "", "", {{5, "060600", "OEM060600RP0000", "D2LRPGTTN"}}},
                          {"UNLOG GPZDA\r\n", "PDPFILTER ENABLE\r\n", "ASSIGNALL GLONASS AUTO\r\n",
                           "ASSIGN 16 133\r\n", "LOG GPGGALONG ONTIME 0.2\r\n",
                           "LOG GPZDA ONTIME 1.0\r\n", "SAVECONFIG\r\n"}},
        ConfigurationCase{"oem7700",
                          {},
                          {0, "", "", {{7, "070600", "EP0706000000", "FFNRNNCBES1"}}},
                          {"UNLOG GPZDA\r\n", "PDPFILTER ENABLE\r\n", "SBASCONTROL DISABLE\r\n",
                           "LOG GPGGALONG ONTIME 0.2\r\n", "UNLOG GPZDA\r\n"}},
        ConfigurationCase{"csi",
                          {"--use-sbas", "-p", "133", "-z", "-Z", "1", "-X"},
                          {0, "", "", {{1, "6.3Jun04", "6.3Jun04", ""}}},
                          {"$JASC,GPZDA,0\r\n", "$JDIFF,WAAS\r\n", "$JWAASPRN,133\r\n",
                           "$JASC,GPZDA,0\r\n", "$JASC,GPZDA,1\r\n"}},
        ConfigurationCase{"oemv",
                          {"--use-sbas", "-z", "--attempt-fix-config", "-X"},
                          {1, "", "Could not initialize GNSS receiver\n", {{9, "", "", ""}}},
                          {"$PMCAG,004,908*5D\r\n"}}),
    [](const auto& info) { return info.param.receiver; });

// The "$PMCAG" configurer's first setter needs every rate at 1 Hz or more, and ZDA starts at
// 0.2 Hz: the process ends there with SIGFPE, the end start-up scripts know for this family, before
// anything but the probes reached the receiver.
TEST(ConfigurationRunDeathTest, PmcagEndsWithSigfpe)
{
    SimulatedReceiver receiver("pmcag");
    EXPECT_EXIT(RunAgainst(receiver, {"-Z", "1"}), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EQ(receiver.Heard().back(), "$PMCAG,004,908*5D\r\n");
    EXPECT_TRUE(receiver.Sim().HeardPackets().empty());
}

}  // namespace
