#include "tools/SimCommandLine.h"
#include "tools/SimProgram.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

using namespace GnssSim;

namespace {

bool Parse(const std::vector<std::string>& args, SimProgramOptions& options, std::string& error)
{
    options = SimProgramOptions();
    error.clear();
    return ParseSimCommandLine(args, options, error);
}

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// Runs the gnss-sim program (under the emulator in a cross build) through the shell; returns its
// exit status, with standard error in err.
int RunProgram(const std::string& arguments, std::string& err)
{
    char errPath[] = "/tmp/gnss-sim-err-XXXXXX";
    close(mkstemp(errPath));
    const std::string command =
        std::string(GNSS_SIM_EMULATOR) + " " + GNSS_SIM_PROGRAM + " " + arguments + " 2>" + errPath;
    const int status = std::system(command.c_str());
    err = ReadFile(errPath);
    unlink(errPath);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

const char kSendVersionRequest[] =
    "-- sh -c 'stty -F \"$GNSS_SIM_PORT\" %d raw -echo && printf \"log versiona once\\r\\n\" > \"$GNSS_SIM_PORT\""
    " && sleep 0.3'";

std::string SendVersionRequestAt(int baud)
{
    char text[256];
    std::snprintf(text, sizeof text, kSendVersionRequest, baud);
    return text;
}

}

TEST(SimCommandLine, ReadsReceiverIdentityLineAndFaults)
{
    SimProgramOptions options;
    std::string error;
    ASSERT_TRUE(Parse({"--receiver", "oem6", "--baud=9600", "--model", "D2L0PG0T0", "--package-version", "",
                       "--no-answer", "SBASCONTROL ENABLE", "--delay", "250:echo off", "--split=300",
                       "--long-line-before", "log versiona once", "--long-line-length", "2000", "--pace", "--",
                       "gnss-setup", "-q"},
                      options, error))
        << error;
    EXPECT_EQ(options.sim.receiver, "oem6");
    EXPECT_EQ(options.sim.startupBaud, 9600);
    EXPECT_TRUE(options.sim.pace);
    EXPECT_EQ(options.sim.identity->Main().model, "D2L0PG0T0");
    EXPECT_EQ(options.sim.identity->Main().swVersion.rfind("OEM06", 0), 0u) << "other fields keep the receiver's own";
    EXPECT_EQ(options.sim.identity->Package(), nullptr);
    ASSERT_EQ(options.sim.faults.size(), 4u);
    EXPECT_EQ(options.sim.faults[0].command, "SBASCONTROL ENABLE");
    EXPECT_EQ(options.sim.faults[1].kind, FaultKind::Delay);
    EXPECT_EQ(options.sim.faults[1].value, 250);
    EXPECT_EQ(options.sim.faults[1].command, "echo off");
    EXPECT_EQ(options.sim.faults[2].command, "*");
    EXPECT_EQ(options.sim.faults[3].kind, FaultKind::LongLineBeforeAnswer);
    EXPECT_EQ(options.sim.faults[3].value, 2000) << "the length applies wherever it stands";
    EXPECT_EQ(options.command, (std::vector<std::string>{"gnss-setup", "-q"}));
}

TEST(SimCommandLine, RejectsWhatItCannotUse)
{
    SimProgramOptions options;
    std::string error;
    EXPECT_FALSE(Parse({"--baud", "9600"}, options, error));
    EXPECT_EQ(error, "--receiver is required");
    EXPECT_FALSE(Parse({"--receiver", "oem8"}, options, error));
    EXPECT_EQ(error, "unknown receiver \"oem8\"");
    EXPECT_FALSE(Parse({"--receiver", "oem6", "--bogus"}, options, error));
    EXPECT_EQ(error, "unknown option \"--bogus\"");
    EXPECT_FALSE(Parse({"--receiver", "oem6", "--delay"}, options, error));
    EXPECT_EQ(error, "--delay needs a value");
    EXPECT_FALSE(Parse({"--receiver", "oem6", "--delay", "soon:echo off"}, options, error));
    EXPECT_EQ(error, "--delay needs a number, not \"soon\"");
    EXPECT_TRUE(Parse({"--help"}, options, error));
    EXPECT_TRUE(options.help);
}

TEST(SimCommandLine, HelpDocumentsEveryOption)
{
    const char* const options[] = {"--receiver", "--baud", "--port", "--echo", "--restart-ms", "--channel-config ",
                                   "--channel-configs", "--valid-models", "--component-type", "--model", "--psn",
                                   "--hw-version", "--sw-version", "--boot-version", "--package-version", "--link",
                                   "--pace", "--seed", "--log", "--heard", "--no-answer", "--delay", "--split",
                                   "--nul-in", "--nul-before", "--long-line-in", "--long-line-before",
                                   "--long-line-length", "--noise-between", "--hang-up-after", "--start-baud",
                                   "--quiet", "--help"};
    const std::string usage = SimUsage();
    for (const char* option : options) {
        EXPECT_NE(usage.find(option), std::string::npos) << option;
    }
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(RunSimProgram({"--help"}, out, err), 0);
    EXPECT_EQ(out.str(), usage);
}

TEST(SimProgram, AVersionRequestAtTheReceiversSpeedGetsOkAndALogWithARightCrc)
{
    char heard[] = "/tmp/gnss-sim-heard-XXXXXX";
    close(mkstemp(heard));
    std::string err;
    EXPECT_EQ(RunProgram("--receiver oem7700 --heard " + std::string(heard) + " " + SendVersionRequestAt(115200), err),
              0);
    EXPECT_NE(err.find("line: <OK, then VERSIONA"), std::string::npos) << err;
    EXPECT_NE(err.find("[#VERSIONA CRC "), std::string::npos) << err;
    EXPECT_NE(err.find(" right]"), std::string::npos) << err;
    EXPECT_EQ(ReadFile(heard), "line \"log versiona once\\r\\n\" -> <OK, then VERSIONA\n");
    unlink(heard);
}

TEST(SimProgram, AVersionRequestAtTheWrongSpeedIsNoiseOnly)
{
    char heard[] = "/tmp/gnss-sim-heard-XXXXXX";
    close(mkstemp(heard));
    std::string err;
    EXPECT_EQ(RunProgram("--receiver oem7700 --heard " + std::string(heard) + " " + SendVersionRequestAt(9600), err), 0);
    EXPECT_EQ(err.find("VERSIONA CRC"), std::string::npos) << err;
    EXPECT_EQ(ReadFile(heard), "noise at 9600 baud, receiver at 115200\n");
    unlink(heard);
}

TEST(SimProgram, ExitsWithTheCommandsStatus)
{
    std::string err;
    EXPECT_EQ(RunProgram("--receiver silent -- sh -c 'exit 3'", err), 3);
    EXPECT_EQ(RunProgram("--receiver silent -- /nonexistent/command", err), 127);
    EXPECT_EQ(RunProgram("--receiver oem9", err), 2);
    EXPECT_NE(err.find("unknown receiver"), std::string::npos);
}

// Golden files compare the command's standard error, which the command shares with gnss-sim.
TEST(SimProgram, QuietLeavesTheCommandsStandardErrorAlone)
{
    std::string err;
    EXPECT_EQ(RunProgram("--receiver oem6 --quiet -- sh -c 'echo from the command >&2'", err), 0);
    EXPECT_EQ(err, "from the command\n");
    EXPECT_EQ(RunProgram("--receiver oem6 -- sh -c 'echo from the command >&2'", err), 0);
    EXPECT_NE(err.find("gnss-sim: heard 0 lines"), std::string::npos) << err;
}
