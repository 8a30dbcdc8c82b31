// Dry run, override and resets through the real port. What each mode prints and ends with on every
// receiver family is the fault matrix's "none" column (tests/faults).
#include <gtest/gtest.h>

#include "tests/app/InProcessRun.h"
#include "tests/support/SimulatedReceiver.h"

namespace {

const char* const kNoSuchLine = "/dev/no-such-receiver";

// The first mode that applies names the line, with the PDP-filter reset tested before the
// receiver reset (a real run does the opposite, below). Every dry run opens the port, at the
// requested rate, and says nothing on it.
TEST(DryRun, NamesTheFirstModeThatAppliesOrPrintsTheSettings)
{
    SimulatedReceiver receiver("oem6");
    const std::pair<std::vector<const char*>, std::string> cases[] = {
        {{"-E", "--list-models"},
         "Not initializing GPS or driver.  Querying GPS on port /dev/ttyO1\n"},
        {{"--list-models", "--list-current-model"}, "Listing models for your Novatel GPS\n"},
        {{"--list-current-model", "--reset-receiver"}, "List current model for your Novatel GPS\n"},
        {{"--reset-receiver", "--reset-pdp-filter"}, "Reseting PDP filter\n"},
        {{"--reset-receiver", "-x"}, "Reseting receiver\n"},
        {{"-x"}, "Initializing driver without configuring GPS for port /dev/ttyO1\n"},
        {{"-b", "19200", "--no-use-gps", "-p", "138", "-p", "120", "-F", "20", "-X"},
         "Need to configure GPS on port /dev/ttyO1 with settings:\n"
         "  bUseGps             No\n  bUseGlonass         No\n  bUseBeidou          No\n"
         "  bUseGalileo         No\n  bUseQzss            No\n  bUseSbas            No\n"
         "  bUsePpp             No\n  bAllowType0         No\n  bOutputGSA          No\n"
         "  fGSAFrequency       0\n  fGGAFrequency       20\n  PRNs                120 138 \n"
         "  bOutputVTG    No\n  fVTGFrequency 5\n  bOutputGSV    No\n  fGSVFrequency 0\n"
         "  bOutputZDA    No\n  fZDAFrequency 0.2\n  fix           No\n"
         " Save Configuration Yes\n"}};
    for (auto [arguments, out] : cases) {
        arguments.insert(arguments.begin(), "--dry-run");
        EXPECT_EQ(RunAgainst(receiver, arguments), (RunOutcome{0, out, "", {}}));
    }
    EXPECT_EQ(receiver.Sim().LineBaud(), 19200);
    EXPECT_EQ(receiver.Heard(true), Lines());
}

TEST(DryRun, APortThatCannotBeOpenedEndsWithStatusOne)
{
    EXPECT_EQ(RunOn(kNoSuchLine, {"--dry-run", kConsolePort}),
              (RunOutcome{1, "", "open com port: No such file or directory\n", {}}));
}

// The override is how start-up scripts name a receiver they know: the port is not opened (the
// line here does not exist), and the model is never part of it; V1 reaches the driver this way
// only. The second run parses a command line again in the same process, which the parser library
// once refused.
TEST(OverrideRun, TellsTheDriverWithoutOpeningThePort)
{
    EXPECT_EQ(RunOn(kNoSuchLine, {"-R", "OEM6:060600"}),
              (RunOutcome{0, "", "", {{5, "060600", "", ""}}}));
    EXPECT_EQ(RunOn(kNoSuchLine, {"--set-receiver-type", "V1:3.000A19", "/dev/ttyO2"}),
              (RunOutcome{0, "", "", {{2, "3.000A19", "", ""}}}));
}

// Given both resets, a real run resets the receiver, which comes back, and leaves its PDP filter
// alone. The PDP-filter reset alone ends with status 1 although the receiver acknowledged it:
// start-up scripts are written for that status.
TEST(ResetRun, ResetsTheReceiverBeforeThePdpFilter)
{
    SimulatedReceiver receiver("oem7500");
    EXPECT_EQ(RunAgainst(receiver, {"--reset-pdp-filter", "--reset-receiver"}),
              (RunOutcome{0, "", "", {}}));
    EXPECT_EQ(RunAgainst(receiver, {"--reset-pdp-filter"}), (RunOutcome{1, "", "", {}}));
    EXPECT_EQ(StepsHeard(receiver.Heard(), {"reset\r\n", "PDPFILTER RESET\r\n"}),
              (Lines{"reset\r\n", "PDPFILTER RESET\r\n"}));
}

}  // namespace
