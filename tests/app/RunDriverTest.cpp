#include "app/RunDriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/InProcessRun.h"
#include "tests/support/PseudoTerminal.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(RunDriverDryRun, OpensThePortAtTheRequestedRateAndPrintsTheSettings)
{
    PseudoTerminal line;
    const RunOutcome result =
        RunInProcess(line.SlavePath(), {"--dry-run", "-b", "19200", "/dev/ttyO1"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.requestedPorts, ElementsAre("/dev/ttyO1"));
    EXPECT_THAT(result.out, StartsWith("Need to configure GPS on port /dev/ttyO1 with settings:\n"));
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(line.SlaveBaud(), 19200);
    // A dry run says what it would do and does nothing on the line.
    EXPECT_EQ(line.ReceiveUntilQuiet(50), "");
}

TEST(RunDriverDryRun, APortThatCannotBeOpenedEndsWithStatusOne)
{
    const RunOutcome result = RunInProcess("/dev/no-such-receiver", {"--dry-run", "/dev/ttyO3"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.processErr,
              "failed to open /dev/no-such-receiver\niRC = 100\nerror: No such file or directory\n");
    EXPECT_EQ(result.err, "open com port: No such file or directory\n");
}

// The override is how start-up scripts name a receiver they know: no port may be touched, not
// even the default one, and the model is never part of it.
TEST(RunDriverOverride, TellsTheDriverTheTypeAndFirmwareWithoutMakingAPort)
{
    const RunOutcome oem6 = RunInProcess("/dev/no-such-receiver", {"-R", "OEM6:060600"});
    EXPECT_EQ(oem6.status, 0);
    EXPECT_THAT(oem6.requestedPorts, IsEmpty());
    EXPECT_THAT(oem6.driverTold, ElementsAre(DriverHandOver{5, "060600", "", ""}));
    EXPECT_EQ(oem6.out, "");
    EXPECT_EQ(oem6.err, "");

    // Types that no probe yields reach the driver this way only.
    const RunOutcome v1 =
        RunInProcess("/dev/no-such-receiver", {"--set-receiver-type", "V1:3.000A19", "/dev/ttyO2"});
    EXPECT_EQ(v1.status, 0);
    EXPECT_THAT(v1.requestedPorts, IsEmpty());
    EXPECT_THAT(v1.driverTold, ElementsAre(DriverHandOver{2, "3.000A19", "", ""}));
}

// Clearing the cached receiver tells the driver nothing usable is attached, and says so as a
// failure, although the receiver is there and answering.
TEST(RunDriverClearCached, TellsTheDriverUnknownAndFailsWithoutTalkingToTheReceiver)
{
    SimulatedLine line("oem7700");
    const RunOutcome result = line.Run({"-x"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.requestedPorts, ElementsAre(kConsolePort));
    EXPECT_THAT(result.driverTold, ElementsAre(DriverHandOver{9, "", "", ""}));
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "Could not initialize GNSS receiver\n");
    EXPECT_THAT(line.Heard(true), IsEmpty());
}
