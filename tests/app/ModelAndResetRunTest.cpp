// The model listings and the two resets, against simulated receivers through the real port.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/app/InProcessRun.h"
#include "tests/app/NovatelGenerations.h"

using ::testing::IsEmpty;

namespace {

const char* const kReset = "reset\r\n";
const char* const kPdpFilterReset = "PDPFILTER RESET\r\n";
const char* const kIncompatible = "Did not detect a compatible receiver\n";

class ModelListingRun : public testing::TestWithParam<NovatelGeneration> {};

TEST_P(ModelListingRun, ListsEveryAcceptedModelAndTheCurrentOne)
{
    const NovatelGeneration& generation = GetParam();
    SimulatedLine line(generation.Options());

    const RunOutcome models = line.Run({"--list-models"});
    EXPECT_EQ(models.status, 0);
    EXPECT_EQ(models.out,
              std::string("\t") + generation.main.model + "\n\t" + generation.otherModel + "\n");
    EXPECT_EQ(models.err, "");

    const RunOutcome current = line.Run({"--list-current-model"});
    EXPECT_EQ(current.status, 0);
    EXPECT_EQ(current.out, generation.main.model + "\n");
    EXPECT_EQ(current.err, "");
    EXPECT_THAT(current.driverTold, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(NovatelGenerations, ModelListingRun,
                         testing::ValuesIn(RecognisedNovatelGenerations()),
                         [](const testing::TestParamInfo<NovatelGeneration>& info) {
                             return std::string(info.param.receiver);
                         });

// Only the NovAtel generations that detection recognises have models to list.
TEST(ModelListingRun, CsiReceiverIsNotCompatible)
{
    SimulatedLine line("csi");
    const RunOutcome result = line.Run({"--list-models"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, kIncompatible);
}

TEST(ModelListingRun, SilentLineIsNotCompatible)
{
    SimulatedLine line("silent");
    const RunOutcome result = line.Run({"--list-current-model"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, kIncompatible);
}

TEST(ReceiverResetRun, NovatelReceiverThatComesBackIsASuccess)
{
    SimulatedLine line("oem7500");
    const RunOutcome result = line.Run({"--reset-receiver"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.driverTold, IsEmpty());
    EXPECT_EQ(CountOf(line.Heard(), kReset), 1);
}

TEST(ReceiverResetRun, CsiReceiverCannotBeReset)
{
    SimulatedLine line("csi");
    const RunOutcome result = line.Run({"--reset-receiver"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Do not know how to reset this receiver\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(LastOf(line.Heard()), "$JAPP\r\n");
}

// The receiver's acknowledgement counts as failure: start-up scripts have always seen status 1.
TEST(PdpFilterResetRun, AcknowledgedResetStillEndsWithStatusOne)
{
    SimulatedLine line("oem7700");
    const RunOutcome result = line.Run({"--reset-pdp-filter"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    const std::vector<std::string> heard = line.Heard();
    EXPECT_EQ(LastOf(heard), kPdpFilterReset);
    EXPECT_EQ(CountOf(heard, kPdpFilterReset), 1);
}

TEST(PdpFilterResetRun, CsiReceiverHasNoPdpFilter)
{
    SimulatedLine line("csi");
    const RunOutcome result = line.Run({"--reset-pdp-filter"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Do not know how to reset PDP filter on this receiver\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(LastOf(line.Heard()), "$JAPP\r\n");
}

// Given both resets, the dry run announces the PDP-filter reset but a real run resets the
// receiver and leaves its PDP filter alone.
TEST(ReceiverResetRun, BothResetsResetTheReceiverOnly)
{
    SimulatedLine line("oem6");
    const RunOutcome dryRun = line.Run({"--dry-run", "--reset-receiver", "--reset-pdp-filter"});
    EXPECT_EQ(dryRun.out, "Reseting PDP filter\n");
    EXPECT_THAT(line.Heard(), IsEmpty());

    const RunOutcome result = line.Run({"--reset-pdp-filter", "--reset-receiver"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    const std::vector<std::string> heard = line.Heard();
    EXPECT_EQ(CountOf(heard, kReset), 1);
    EXPECT_EQ(CountOf(heard, kPdpFilterReset), 0);
}

}  // namespace
