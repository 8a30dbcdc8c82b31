#include "app/RunDriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/support/PathComPort.h"
#include "tests/support/PseudoTerminal.h"

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

struct RunResult {
    int status;
    std::string out;
    std::string err;
    std::string processErr;  // what the port itself printed
    std::vector<std::string> openedPaths;
};

// Runs gnss-setup in-process with every device path opening devicePath instead.
RunResult RunInProcess(const std::string& devicePath, std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "gnss-setup");
    std::ostringstream out;
    std::ostringstream err;
    RunResult result{};
    const RunCollaborators with{
        [&](const std::string& path) -> std::unique_ptr<CComPort> {
            result.openedPaths.push_back(path);
            return std::make_unique<PathComPort>(devicePath);
        },
        [](int, const std::string&, const std::string&, const std::string&) {},
        out,
        err,
    };
    testing::internal::CaptureStderr();
    result.status = RunGnssSetup(static_cast<int>(arguments.size()), arguments.data(), with);
    result.processErr = testing::internal::GetCapturedStderr();
    result.out = out.str();
    result.err = err.str();
    return result;
}

}  // namespace

TEST(RunDriverDryRun, OpensThePortAtTheRequestedRateAndPrintsTheSettings)
{
    PseudoTerminal line;
    const RunResult result = RunInProcess(line.SlavePath(), {"--dry-run", "-b", "19200", "/dev/ttyO1"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.openedPaths, testing::ElementsAre("/dev/ttyO1"));
    EXPECT_THAT(result.out, StartsWith("Need to configure GPS on port /dev/ttyO1 with settings:\n"));
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(line.SlaveBaud(), 19200);
    // A dry run says what it would do and does nothing on the line.
    EXPECT_EQ(line.ReceiveUntilQuiet(50), "");
}

TEST(RunDriverDryRun, APortThatCannotBeOpenedEndsWithStatusOne)
{
    const RunResult result = RunInProcess("/dev/no-such-receiver", {"--dry-run", "/dev/ttyO3"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.processErr,
              "failed to open /dev/no-such-receiver\niRC = 100\nerror: No such file or directory\n");
    EXPECT_EQ(result.err, "open com port: No such file or directory\n");
}
