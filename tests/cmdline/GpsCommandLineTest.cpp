#include "cmdline/GpsCommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using ::testing::ElementsAre;

namespace {

GpsSettings Parse(std::vector<const char*> arguments,
                  ParseEnding ending = ParseEnding::ExitsProcess)
{
    arguments.insert(arguments.begin(), "gnss-setup");
    GpsSettings settings;
    ParseGpsCommandLine(static_cast<int>(arguments.size()), arguments.data(), settings, ending);
    return settings;
}

}  // namespace

// The other defaults are what a dry run without arguments prints, which the end-to-end scenarios
// compare; the port's name and rate it does not print.
TEST(GpsCommandLine, NoArgumentsGiveTheBoardsPortAt115200)
{
    const GpsSettings settings = Parse({});
    EXPECT_EQ(settings.bParsedOk, 1);
    EXPECT_EQ(settings.strPort, "/dev/ttymxc0");
    EXPECT_EQ(settings.nBaudRate, 115200);
}

TEST(GpsCommandLine, EveryOptionReachesItsField)
{
    const GpsSettings settings =
        Parse({"/dev/ttyO1", "-x", "--no-use-gps", "--use-glonass", "--use-beidou",
               "--use-galileo", "--use-qzss", "--use-sbas", "--use-ppp", "-0", "-a", "-v", "-g",
               "-z", "-X", "-Q", "--dry-run", "--list-models", "--list-current-model",
               "--attempt-fix-config", "--reset-receiver", "--reset-pdp-filter", "-b", "19200",
               "-F", "10", "-A", "1.5", "-V", "2", "-G", "0.5", "-Z", "1", "--prn", "135", "-p",
               "120", "-p", "135"});
    EXPECT_EQ(settings.strPort, "/dev/ttyO1");
    EXPECT_FALSE(settings.bConfigure);
    EXPECT_TRUE(settings.bNoUseGps && settings.bUseGlonass && settings.bUseBeidou &&
                settings.bUseGalileo && settings.bUseQzss && settings.bUseSbas &&
                settings.bUsePpp && settings.bAllowType0);
    EXPECT_TRUE(settings.bOutputGSA && settings.bOutputVTG && settings.bOutputGSV &&
                settings.bOutputZDA);
    EXPECT_TRUE(settings.bSaveConfig && settings.bQueryOnly && settings.bDryRun &&
                settings.bListModels && settings.bListCurrentModel && settings.bFix &&
                settings.bResetReceiver && settings.bResetPdpFilter);
    EXPECT_FALSE(settings.bExtendedQuery);
    EXPECT_EQ(settings.nBaudRate, 19200);
    EXPECT_FLOAT_EQ(settings.fGGAFrequency, 10.0f);
    EXPECT_FLOAT_EQ(settings.fGSAFrequency, 1.5f);
    EXPECT_FLOAT_EQ(settings.fVTGFrequency, 2.0f);
    EXPECT_FLOAT_EQ(settings.fGSVFrequency, 0.5f);
    EXPECT_FLOAT_EQ(settings.fZDAFrequency, 1.0f);
    // The same PRN given twice is one PRN.
    EXPECT_THAT(settings.PRNs, ElementsAre(120, 135));
}

// The override fills type and firmware, never the extended version.
TEST(GpsCommandLine, ExtendedImpliesQueryAndOverrideFillsType)
{
    const GpsSettings settings = Parse({"-E", "-R", "OEM 7700:OM7CR0800"});
    EXPECT_TRUE(settings.bExtendedQuery && settings.bQueryOnly);
    EXPECT_EQ(settings.nReceiverType, 7);
    EXPECT_EQ(settings.strFirmware, "OM7CR0800");
    EXPECT_EQ(settings.strExtendedVersion, "");
}

TEST(GpsCommandLine, ParsesAgainInTheSameProcess)
{
    // The library keeps a note of optional positional arguments for the whole process.
    EXPECT_EQ(Parse({"/dev/ttyO1"}).strPort, "/dev/ttyO1");
    const GpsSettings again = Parse({"/dev/ttyO3"});
    EXPECT_EQ(again.bParsedOk, 1);
    EXPECT_EQ(again.strPort, "/dev/ttyO3");
}

// A caller that parses many command lines in one process, such as the fuzz target, gets help,
// version and refusals back instead of the end of the process.
TEST(GpsCommandLine, ReturnsOnHelpVersionAndRefusalWhenAsked)
{
    for (const char* shown : {"--help", "--version"}) {
        testing::internal::CaptureStdout();
        const GpsSettings settings = Parse({shown}, ParseEnding::ReturnsToCaller);
        EXPECT_NE(testing::internal::GetCapturedStdout(), "") << shown;
        EXPECT_TRUE(settings.bHelpShown) << shown;
        EXPECT_EQ(settings.bParsedOk, 0) << shown;
    }
    testing::internal::CaptureStderr();
    const GpsSettings refused =
        Parse({"-b", "9600", "/dev/ttyO1"}, ParseEnding::ReturnsToCaller);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "error: Value '9600' does not meet constraint: Baudrate must be either 115200 or "
              "19200 for arg Argument: -b (--baudrate)\n");
    EXPECT_EQ(refused.bParsedOk, 0);
    EXPECT_FALSE(refused.bHelpShown);
}
