// The query print-out against every receiver the simulator plays, through the real port.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "sim/Checksums.h"
#include "sim/NovatelLogs.h"
#include "tests/app/InProcessRun.h"
#include "tests/app/NovatelGenerations.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

const char* const kVersionRequest = "log versiona once\r\n";
const char* const kCsiIdentityRequest = "$JI\r\n";

// A CSI receiver's identity; the "$>JI" reply carries the software version as the firmware.
GnssSim::ReceiverIdentity CsiIdentity()
{
    GnssSim::ReceiverIdentity identity;
    identity.components.push_back(
        {"DGPS", "MBX-4", "810133", "3", "6.3Jun04", "1.2", "09061998", "12:00:00"});
    return identity;
}

std::string QueryPrintOut(const std::string& typeName, const std::string& firmware)
{
    return "Receiver \n"
           "  Type:        " + typeName + "\n"
           "  Firmware:    " + firmware + "\n";
}

struct QueryCase {
    const char* receiver;
    const char* typeName;
    const char* firmware;
    std::optional<GnssSim::ReceiverIdentity> identity;
};

void PrintTo(const QueryCase& c, std::ostream* os)
{
    *os << c.receiver;
}

std::vector<QueryCase> EveryReceiver()
{
    std::vector<QueryCase> cases;
    for (const NovatelGeneration& generation : RecognisedNovatelGenerations()) {
        cases.push_back({generation.receiver, generation.typeName, generation.firmware,
                         generation.Identity()});
    }
    cases.push_back({"csi", "CSI", "6.3Jun04", CsiIdentity()});
    // The "$PMCAG" receivers are NovAtel's by name only and are not asked for a version.
    cases.push_back({"pmcag", "Novatel", "", std::nullopt});
    // No probe recognises an OEMV, although it answers the version request.
    cases.push_back({"oemv", "Unknown", "", std::nullopt});
    cases.push_back({"silent", "Unknown", "", std::nullopt});
    return cases;
}

class QueryRun : public testing::TestWithParam<QueryCase> {};

TEST_P(QueryRun, PrintsTheDetectedTypeAndFirmware)
{
    GnssSim::SimOptions options = ShortRestartOptions(GetParam().receiver);
    options.identity = GetParam().identity;
    SimulatedLine line(options);
    const RunOutcome result = line.Run({"-Q"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, QueryPrintOut(GetParam().typeName, GetParam().firmware));
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.driverTold, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(EveryReceiver, QueryRun, testing::ValuesIn(EveryReceiver()),
                         [](const testing::TestParamInfo<QueryCase>& info) {
                             return std::string(info.param.receiver);
                         });

// What follows "  Raw Info:    " up to the end of the print-out.
std::string RawInfoOf(const std::string& printOut)
{
    const std::string label = "  Raw Info:    ";
    const std::size_t at = printOut.rfind(label);
    return at == std::string::npos ? std::string() : printOut.substr(at + label.size());
}

// The version log line is printed exactly as the receiver sent it: its checksum still matches
// what lies between "#" and "*", and its own line end comes before the print-out's.
void ExpectIntactVersionLine(const std::string& rawInfo, const GnssSim::ReceiverIdentity& identity)
{
    EXPECT_THAT(rawInfo, StartsWith("[COM1]#VERSIONA,COM1,"));
    EXPECT_THAT(rawInfo, testing::HasSubstr(";" + GnssSim::VersionLogBody(identity) + "*"));
    const std::size_t hash = rawInfo.find('#');
    const std::size_t star = rawInfo.find('*');
    ASSERT_NE(star, std::string::npos);
    const std::string checked = rawInfo.substr(hash + 1, star - hash - 1);
    EXPECT_EQ(rawInfo.substr(star),
              "*" + GnssSim::NovatelCrcText(GnssSim::NovatelCrc32(checked)) + "\r\n\n");
}

struct ExtendedCase {
    const char* receiver;
    std::vector<const char*> arguments;
};

void PrintTo(const ExtendedCase& c, std::ostream* os)
{
    *os << c.receiver;
}

class ExtendedQueryRun : public testing::TestWithParam<ExtendedCase> {};

TEST_P(ExtendedQueryRun, PrintsTheVersionRecordAndTheRawVersionLineLast)
{
    const NovatelGeneration& generation = RecognisedNovatelGeneration(GetParam().receiver);
    SimulatedLine line(generation.Options());
    const RunOutcome result = line.Run(GetParam().arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    const GnssSim::Component& main = generation.main;
    EXPECT_THAT(result.out,
                StartsWith(QueryPrintOut(generation.typeName, generation.firmware) +
                           "  Ext Ver:     " + generation.packageVersion + "\n" +
                           "  Model:       " + main.model + "\n" +
                           "  PSN:         " + main.psn + "\n" +
                           "  HW Version:  " + main.hwVersion + "\n" +
                           "  SW Version:  " + main.swVersion + "\n" +
                           "  Boot:        " + main.bootVersion + "\n" +
                           "  Raw Info:    "));
    ExpectIntactVersionLine(RawInfoOf(result.out), generation.Identity());
}

// The extended query implies the query; given both, it is the same run.
INSTANTIATE_TEST_SUITE_P(
    NovatelGenerations, ExtendedQueryRun,
    testing::Values(ExtendedCase{"oemstar", {"-E"}}, ExtendedCase{"oemstarg", {"-Q", "-E"}},
                    ExtendedCase{"oem6", {"--extended-query"}},
                    ExtendedCase{"oem7500", {"--query-only", "--extended-query"}},
                    ExtendedCase{"oem7700", {"-E"}}),
    [](const testing::TestParamInfo<ExtendedCase>& info) {
        return std::string(info.param.receiver);
    });

// Other families have no version record: their extended version and raw information are the
// firmware again, and there is no "Ext Ver" line.
TEST(ExtendedQueryRun, CsiReceiverShowsItsFirmwareAsRawInformation)
{
    GnssSim::SimOptions options = ShortRestartOptions("csi");
    options.identity = CsiIdentity();
    SimulatedLine line(options);
    const RunOutcome result = line.Run({"-E"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, QueryPrintOut("CSI", "6.3Jun04") + "  Raw Info:    6.3Jun04\n");
    EXPECT_EQ(result.err, "");
}

TEST(ExtendedQueryRun, PmcagReceiverHasNoVersionToShow)
{
    SimulatedLine line("pmcag");
    const RunOutcome result = line.Run({"-Q", "-E"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, QueryPrintOut("Novatel", "") + "  Raw Info:    \n");
    EXPECT_EQ(result.err, "");
}

// Every item of the print-out asks the receiver afresh, and the firmware is asked for once more
// before the print-out, as the console's tool always did: receivers and their logs have always
// seen that many requests. Detection asks a NovAtel receiver once.
TEST(QueryRequests, NovatelReceiverIsAskedForItsVersionOnceMoreThanPrinted)
{
    SimulatedLine query(RecognisedNovatelGeneration("oem6").Options());
    query.Run({"-Q"});
    EXPECT_THAT(query.Heard(), ElementsAre(kVersionRequest, kVersionRequest, kVersionRequest));

    SimulatedLine extended(RecognisedNovatelGeneration("oem6").Options());
    extended.Run({"-E"});
    const std::vector<std::string> heard = extended.Heard();
    EXPECT_EQ(heard.size(), 6u);
    EXPECT_THAT(heard, Each(kVersionRequest));
}

TEST(QueryRequests, CsiReceiverIsAskedForItsIdentityOnceMoreThanPrinted)
{
    SimulatedLine line("csi");
    line.Run({"-E"});
    const std::vector<std::string> heard = line.Heard();
    ASSERT_GE(heard.size(), 5u);
    EXPECT_THAT(std::vector<std::string>(heard.end() - 5, heard.end()),
                ElementsAre("$JAPP\r\n", kCsiIdentityRequest, kCsiIdentityRequest,
                            kCsiIdentityRequest, kCsiIdentityRequest));
}

}  // namespace
