// The query print-out for every receiver the simulator plays, and the extended one for a NovAtel
// generation, through the real port. Other families' extended print-out is the fault matrix's and
// the end-to-end scenarios'.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "sim/receivers/NovatelLogs.h"
#include "tests/app/InProcessRun.h"
#include "tests/support/SimulatedReceiver.h"

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

std::string PrintOut(const std::string& type, const std::string& firmware)
{
    return "Receiver \n  Type:        " + type + "\n  Firmware:    " + firmware + "\n";
}

// The receiver, its type's name and its firmware.
using QueryCase = std::tuple<std::string, std::string, std::string>;

class QueryRun : public testing::TestWithParam<QueryCase> {};

TEST_P(QueryRun, PrintsTypeAndFirmware)
{
    const auto& [name, type, firmware] = GetParam();
    SimulatedReceiver receiver(name);
    EXPECT_EQ(RunAgainst(receiver, {"-Q"}), (RunOutcome{0, PrintOut(type, firmware), "", {}}));
}

// The "$PMCAG" receivers are NovAtel's by name only and are not asked for a version; no probe
// recognises an OEMV, although it answers the version request.
const QueryCase kEveryReceiver[] = {
    {"oemstar", "OEM-Star", "010100"}, {"oemstarg", "OEM-StarG", "010101"},
    {"oem6", "OEM6", "060600"},        {"oem7500", "OEM 7500", "070600"},
    {"oem7700", "OEM 7700", "070600"}, {"csi", "CSI", "6.3Jun04"},
    {"pmcag", "Novatel", ""},          {"oemv", "Unknown", ""},
    {"silent", "Unknown", ""}};

INSTANTIATE_TEST_SUITE_P(EveryReceiver, QueryRun, testing::ValuesIn(kEveryReceiver),
                         [](const auto& info) { return std::get<0>(info.param); });

// A field report's own version line, played by a receiver of another generation, is classified by
// the line alone: the same type and firmware the unit itself would get.
TEST(QueryRun, ClassifiesAUnitsOwnVersionLine)
{
    struct Case {
        const char* name;
        const char* receiver;
        const char* line;
        const char* type;
        const char* firmware;
    };
    const Case cases[] = {
        {"an OEM6 unit's line", "oem7700",
         "#VERSIONA,COM1,0,80.0,FINESTEERING,2318,302400.106,02000020,b1f6,16809;2,GPSCARD,\"D2LRPGTTN\","
         "\"BFN11340108\",\"OEM615-1.01\",\"OEM060600RN0000\",\"OEM060200RB0000\",\"2014/Apr/23\",\"13:39:17\","
         "PACKAGE,\"\",\"\",\"\",\"OEM060600RP0000\",\"\",\"2014/Apr/23\",\"13:39:17\"*982cd131\r\n",
         "OEM6", "060600"},
        {"an OEMV unit's line", "oem6",
         "#VERSIONA,COM1,0,80.0,FINESTEERING,2318,302400.102,02000020,b1f6,16809;2,GPSCARD,\"L12RV\","
         "\"DZZ06040010\",\"OEMV2G-2.00-2T\",\"3.000A19\",\"3.000A9\",\"2006/Feb/ 9\",\"17:14:33\",PACKAGE,"
         "\"\",\"\",\"\",\"3.000A19P\",\"\",\"2006/Feb/ 9\",\"17:14:33\"*c33123e8\r\n",
         "Unknown", ""},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.name);
        GnssSim::SimOptions options = TestReceiverOptions(example.receiver);
        options.versionLine = example.line;
        SimulatedReceiver receiver(options);
        EXPECT_EQ(RunAgainst(receiver, {"-Q"}), (RunOutcome{0, PrintOut(example.type, example.firmware), "", {}}));
    }
}

// Every item of the print-out asks the receiver afresh, and the firmware is asked for once more
// before it: with detection, six version requests, the count field engineers find in wire logs.
// The version line is printed as the receiver sent it, its line end included.
TEST(ExtendedQueryRun, NovatelShowsVersionRecordAndRawLine)
{
    SimulatedReceiver receiver("oem6");
    RunOutcome result = RunAgainst(receiver, {"-Q", "-E"});
    EXPECT_THAT(result.out, AllOf(StartsWith(PrintOut("OEM6", "060600") +
                                             "  Ext Ver:     OEM060600RP0000\n"
                                             "  Model:       D2LRPGTTN\n"
                                             "  PSN:         BFN11340108\n"
                                             "  HW Version:  OEM615-1.01\n"
                                             "  SW Version:  OEM060600RN0000\n"
                                             "  Boot:        OEM060200RB0000\n"
                                             "  Raw Info:    [COM1]#VERSIONA,COM1,"),
                                  HasSubstr(GnssSim::VersionLogBody(receiver.Sim().Identity())),
                                  EndsWith("\r\n\n")));
    result.out.clear();
    EXPECT_EQ(result, (RunOutcome{0, "", "", {}}));
    EXPECT_EQ(receiver.Heard(), Lines(6, "log versiona once\r\n"));
}

}  // namespace
