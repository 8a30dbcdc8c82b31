// The parser library prints help, version and argument errors itself and ends the process, so
// these cases run the built gnss-setup.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/support/ProcessRunner.h"

using ::testing::HasSubstr;

namespace {

ProcessResult RunGnssSetup(const std::vector<std::string>& arguments)
{
    return RunBuiltProgram(GNSS_SETUP_BINARY, "gnss-setup", arguments);
}

std::string ReadGolden(const std::string& name)
{
    std::ifstream file(std::string(GNSS_TEST_SOURCE_DIR) + "/golden/" + name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace

TEST(CommandLineProcess, HelpListsEveryOptionAndEndsWithZero)
{
    const ProcessResult result = RunGnssSetup({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, ReadGolden("help.txt"));
    EXPECT_EQ(result.err, "");
}

TEST(CommandLineProcess, VersionOfADevelopmentBuildIsDevel)
{
    const ProcessResult result = RunGnssSetup({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("version: devel"));
}

TEST(CommandLineProcess, RefusedValueEndsWithStatusOne)
{
    const ProcessResult result = RunGnssSetup({"--dry-run", "-b", "9600"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("PARSE ERROR: Argument: -b (--baudrate)\n"
                                      "             Value '9600' does not meet constraint: "
                                      "Baudrate must be either 115200 or 19200\n"));
}

// An unknown option is not among them: the parser takes it as the port name.
TEST(CommandLineProcess, EveryBadArgumentEndsWithStatusOne)
{
    const std::vector<std::vector<std::string>> badCommandLines = {
        {"-p", "119"},         {"-p", "159"},        {"-R", "OEM6"},
        {"-R", "oem6:1.0"},    {"-R", "Unknown:1.0"}, {"-R", "OEM-StarG:v1.2:OEMVPN2854LL211"},
        {"-F", "fast"},        {"-b"},               {"/dev/ttyO1", "/dev/ttyO2"},
    };
    for (const std::vector<std::string>& arguments : badCommandLines) {
        const ProcessResult result = RunGnssSetup(arguments);
        EXPECT_EQ(result.status, 1) << arguments[0];
        EXPECT_THAT(result.err, HasSubstr("PARSE ERROR")) << arguments[0];
    }
}
