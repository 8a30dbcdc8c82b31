#include "receivers/ReceiverType.h"
#include "receivers/novatel/LogReplies.h"
#include "receivers/novatel/VersionLog.h"

#include <gtest/gtest.h>

using namespace NovatelCommon;
using namespace ReceiverType;

namespace {

std::string Line(const std::string& body, const std::string& prefix = "")
{
    return prefix + "#VERSIONA,COM1,0,55.0,FINESTEERING,1800,302400.000,02000020,3681,14970;" +
           body + "*4a5a9c1e\r\n";
}

// A one-component log with the given model, hardware and software fields as they are sent.
std::string Component(const std::string& model, const std::string& hw, const std::string& sw)
{
    return Line("1,GPSCARD," + model + ",\"P\"," + hw + "," + sw + ",\"B\",\"D\",\"T\"");
}

TEST(VersionLine, GivesRecordFirmwarePackageAndGeneration)
{
    const std::string oem6 = "2,GPSCARD,\"D2LRPGTTN\",\"BFN1\",\"OEM615-1.01\",\"OEM060600RN0000\","
                             "\"OEM060200RB0000\",\"2014/Apr/23\",\"13:39:17\"";
    const std::string package = ",PACKAGE,\"\",\"\",\"\",\"OEM060600RP0000\",\"\",\"D\",\"T\"";
    const VersionRecord r = ParseVersionRecord(Line(oem6, "[COM2]"));
    EXPECT_EQ("GPSCARD|D2LRPGTTN|BFN1|OEM615-1.01|OEM060600RN0000|OEM060200RB0000",
              r.strComponentType + "|" + r.strModel + "|" + r.strPsn + "|" + r.strHwVersion + "|" +
                  r.strSwVersion + "|" + r.strBootVersion);
    struct Case {
        std::string line, model, firmware, package;
        int type;
    };
    const Case cases[] = {
        {Line(oem6 + package, "[COM3]"), "D2LRPGTTN", "060600", "OEM060600RP0000", Oem6},
        // Behind another prompt it is no version line, though its fields can still be read.
        {Line(oem6 + package, "[COM4]"), "D2LRPGTTN", "", "", Oem6},
        {Line(oem6 + ";x"), "", "060600", "", Oem6},
        // Eight body fields make no record, but the firmware needs only seven.
        {Line("1,G,\"M\",\"P\",\"H\",\"OEM060600RN0000\",\"B\",\"D\""), "", "060600", "", Unknown},
        {Line("1,GPSCARD,\"M\",\"P\",\"H\",\"OEM060600RN0000\""), "", "", "", Unknown},
        {Component("\"\"\"\"", "\"", "\"x\""), "", "", "", Unknown},
        {Component("\"M\"", "\"H\"", "\"OEM070\""), "M", "070\"", "", Unknown},
        // The last package wins, also when it is cut short before its version.
        {Line(oem6 + package + ",PACKAGE,\"\",\"\",\"\",\"OEM060700RP0000\",\"\""), "D2LRPGTTN",
         "060600", "OEM060700RP0000", Oem6},
        {Line(oem6 + package + ",PACKAGE,\"\",\"\",\"\""), "D2LRPGTTN", "060600", "", Oem6},
        {Component("\"S1R0R0TTG\"", "\"H\"", "\"L6X010100RN0000\""), "S1R0R0TTG", "010100", "",
         OemStarG},
        {Component("\"S1R0R0TT0\"", "\"H\"", "\"L6X010100RN0000\""), "S1R0R0TT0", "010100", "",
         OemStar},
        {Component("\"M\"", "\"OEM7500-0.00H\"", "\"OEM07\""), "M", "07\"", "", Oem7500},
        {Component("\"M\"", "\"OEM7700-1.01\"", "\"OEM07\""), "M", "07\"", "", Oem7700},
        // Unquoted fields match no generation.
        {Component("S1GR0RTT0", "OEM7500-0.00H", "L6X010101RN0000"), "S1GR0RTT0", "10101R",
         "", Unknown},
        {"", "", "", "", Unknown},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.model, ParseVersionRecord(c.line).strModel) << c.line;
        EXPECT_EQ(c.firmware, FirmwareVersionFromLine(c.line)) << c.line;
        EXPECT_EQ(c.package, ExtendedVersionFromLine(c.line)) << c.line;
        EXPECT_EQ(c.type, ClassifyVersionLine(c.line)) << c.line;
    }
}

TEST(ListReplies, ChannelConfigAndModelsAsFarAsCountAndFieldsGo)
{
    const std::pair<std::string, int> configs[] = {
        {"#CHANCONFIGLISTA,COM1,0,55.0;3,5,2,16,GPSL1,4,SBASL1*8f1a2b3c\r\n", 3},
        {"#CHANCONFIGLISTA,COM1;x,5,2*00\r\n", -1},
        {"#CHANCONFIGLISTA,COM1;,5,2*00\r\n", -1},
        {"#CHANCONFIGLISTA,COM1,3,5\r\n", -1},
        {"<OK;3\r\n", -1},
        {"", -1},
    };
    for (const auto& [reply, config] : configs) {
        EXPECT_EQ(config, ParseChannelConfigReply(reply)) << reply;
    }
    const std::string header = "#VALIDMODELSA,COM1,0,55.0,FINESTEERING,1800,302400.000;";
    const std::pair<std::string, std::vector<std::string>> models[] = {
        {header + "2,\"D2LRPGTTN\",0,0,0,\"D2L0PG0T0\",2025,12,31*12ab34cd\r\n",
         {"D2LRPGTTN", "D2L0PG0T0"}},
        // Fields too short to be quoted names are kept as they are.
        {header + "4,\",0,0,0,\"\",0,0,0,\"A\",0,0,0,BARE,0,0,0*00\r\n",
         {"\"", "\"\"", "A", "BARE"}},
        {header + "7,\"A\",0,0,0,\"B\",0,0,0*00\r\n", {"A", "B"}},
        {header + "1,\"A\",0,0,0,\"B\",0,0,0*00\r\n", {"A"}},
        {header + "x,\"A\",0,0,0*00\r\n", {}},
        {header + "1,\"A\",0,0*00\r\n", {}},
        {header + "1,\"A\",0,0,0;extra*00\r\n", {}},
        {"", {}},
    };
    for (const auto& [reply, names] : models) {
        EXPECT_EQ(names, ParseValidModelsReply(reply)) << reply;
    }
}

}  // namespace
