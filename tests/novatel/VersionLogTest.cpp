#include "receivers/ReceiverType.h"
#include "receivers/novatel/CAutonomousV1.h"
#include "receivers/novatel/COEMStar.h"
#include "receivers/novatel/NovatelOem6.h"
#include "receivers/novatel/NovatelOem7.h"
#include "receivers/novatel/VersionLog.h"

#include <gtest/gtest.h>

#include <string>

using namespace NovatelCommon;

namespace {

const std::string kHeader =
    "#VERSIONA,COM1,0,55.0,FINESTEERING,1800,302400.000,02000020,3681,14970;";
const std::string kChecksum = "*4a5a9c1e\r\n";

// An OEM6 receiver's log as it arrives, with its package component.
const std::string kOem6Body =
    "2,GPSCARD,\"D2LRPGTTN\",\"BFN11340108\",\"OEM615-1.01\",\"OEM060600RN0000\","
    "\"OEM060200RB0000\",\"2014/Apr/23\",\"13:39:17\","
    "PACKAGE,\"\",\"\",\"\",\"OEM060600RP0000\",\"\",\"2014/Apr/23\",\"13:40:02\"";

std::string Line(const std::string& body, const std::string& prefix = "")
{
    return prefix + kHeader + body + kChecksum;
}

// A first component with the given model, hardware and software fields, as they are sent.
std::string Component(const std::string& model, const std::string& hw, const std::string& sw)
{
    return Line("1,GPSCARD," + model + ",\"BMHR17140001X\"," + hw + "," + sw +
                ",\"OEM070400RB0000\",\"2019/Mar/22\",\"16:47:21\"");
}

TEST(VersionLine, IsRecognisedBehindTheThreePortPromptsOnly)
{
    EXPECT_TRUE(IsVersionLine(Line(kOem6Body)));
    EXPECT_TRUE(IsVersionLine(Line(kOem6Body, "[COM1]")));
    EXPECT_TRUE(IsVersionLine(Line(kOem6Body, "[COM2]")));
    EXPECT_TRUE(IsVersionLine(Line(kOem6Body, "[COM3]")));
    EXPECT_FALSE(IsVersionLine(Line(kOem6Body, "[COM4]")));
    EXPECT_FALSE(IsVersionLine(Line(kOem6Body, "\r\n")));
    EXPECT_FALSE(IsVersionLine("#VERSIONB,COM1;1*0\r\n"));
}

TEST(VersionRecordParse, FillsTheSixFieldsWithoutQuotesWhateverThePrompt)
{
    const VersionRecord record = ParseVersionRecord(Line(kOem6Body, "[COM2]"));
    EXPECT_EQ("GPSCARD", record.strComponentType);
    EXPECT_EQ("D2LRPGTTN", record.strModel);
    EXPECT_EQ("BFN11340108", record.strPsn);
    EXPECT_EQ("OEM615-1.01", record.strHwVersion);
    EXPECT_EQ("OEM060600RN0000", record.strSwVersion);
    EXPECT_EQ("OEM060200RB0000", record.strBootVersion);
}

TEST(VersionRecordParse, QuotesOnlyGiveEmptyFields)
{
    const VersionRecord record = ParseVersionRecord(
        Line("1,GPSCARD,\"\",\"\"\"\",\",\"x\",\"\",\"\",\"2019/Mar/22\",\"16:47:21\""));
    EXPECT_EQ("", record.strModel);
    EXPECT_EQ("", record.strPsn);
    EXPECT_EQ("", record.strHwVersion);
    EXPECT_EQ("x", record.strSwVersion);
}

void ExpectEmpty(const VersionRecord& record)
{
    EXPECT_EQ("", record.strComponentType);
    EXPECT_EQ("", record.strModel);
    EXPECT_EQ("", record.strPsn);
    EXPECT_EQ("", record.strHwVersion);
    EXPECT_EQ("", record.strSwVersion);
    EXPECT_EQ("", record.strBootVersion);
}

TEST(VersionRecordParse, LinesOfTheWrongShapeGiveTheEmptyRecord)
{
    ExpectEmpty(ParseVersionRecord(""));
    ExpectEmpty(ParseVersionRecord("no header separator at all\r\n"));
    ExpectEmpty(ParseVersionRecord(Line(kOem6Body + ";extra")));
    // Eight body fields: one short of a whole component.
    ExpectEmpty(ParseVersionRecord(Line(
        "1,GPSCARD,\"D2LRPGTTN\",\"BFN11340108\",\"OEM615-1.01\",\"OEM060600RN0000\","
        "\"OEM060200RB0000\",\"2014/Apr/23\"")));
}

TEST(FirmwareVersion, IsTheSixCharactersAfterTheFamilyName)
{
    EXPECT_EQ("060600", FirmwareVersionFromLine(Line(kOem6Body)));
    EXPECT_EQ("010100", FirmwareVersionFromLine(
                            Component("\"S1R0R0TT0\"", "\"OEMSTAR-1.01\"", "\"L6X010100RN0000\"")));
    // Seven body fields are enough, though the record needs nine.
    EXPECT_EQ("060600", FirmwareVersionFromLine(
                            Line("1,GPSCARD,\"D2LRPGTTN\",\"BFN\",\"OEM615\",\"OEM060600RN0000\",\"B\"")));
    // A short field gives what exists of the six characters.
    const std::string hw = "\"OEM615\"";
    EXPECT_EQ("060\"", FirmwareVersionFromLine(Component("\"M\"", hw, "\"OEM060\"")));
    EXPECT_EQ("", FirmwareVersionFromLine(Component("\"M\"", hw, "\"OE\"")));
    EXPECT_EQ("", FirmwareVersionFromLine(Line("1,GPSCARD,\"M\",\"P\",\"H\",\"OEM060600RN0000\"")));
    EXPECT_EQ("", FirmwareVersionFromLine("OEM060600RN0000\r\n"));
}

TEST(ExtendedVersion, IsTheSoftwareVersionOfTheLastPackage)
{
    EXPECT_EQ("OEM060600RP0000", ExtendedVersionFromLine(Line(kOem6Body, "[COM1]")));
    EXPECT_EQ("OEM060700RP0000",
              ExtendedVersionFromLine(Line(kOem6Body + ",PACKAGE,\"\",\"\",\"\",\"OEM060700RP0000\","
                                                      "\"\",\"2015/May/01\",\"10:00:00\"")));
    EXPECT_EQ("", ExtendedVersionFromLine(Component("\"M\"", "\"H\"", "\"OEM060600RN0000\"")));
    EXPECT_EQ("", ExtendedVersionFromLine(Line("1,GPS")));
}

TEST(ExtendedVersion, APackageCutShortBeforeItsVersionGivesNothing)
{
    // "PACKAGE" with only three fields after it: its version would lie one past the end.
    EXPECT_EQ("", ExtendedVersionFromLine(
                      Line("2,GPSCARD,\"M\",\"P\",\"H\",\"S\",\"B\",\"D\",\"T\",PACKAGE,\"\",\"\",\"\"")));
    // That cut-short package is the last one, so it wins over a complete one before it.
    EXPECT_EQ("", ExtendedVersionFromLine(Line(kOem6Body + ",PACKAGE,\"\",\"\",\"\"")));
}

TEST(Classification, FollowsTheSoftwareAndHardwareFields)
{
    struct Case {
        std::string model, hw, sw;
        int type;
    };
    const Case cases[] = {
        {"\"S1GR0RTT0\"", "\"OEMSTAR-2.00\"", "\"L6X010101RN0000\"", ReceiverType::OemStarG},
        {"\"S1R0R0TT0\"", "\"OEMSTAR-1.01\"", "\"L6X010100RN0000\"", ReceiverType::OemStar},
        // The G may stand anywhere in the model, the quotes included in nothing else.
        {"\"S1R0R0TTG\"", "\"OEMSTAR-1.01\"", "\"L6X010100RN0000\"", ReceiverType::OemStarG},
        {"\"D2LRPGTTN\"", "\"OEM615-1.01\"", "\"OEM060600RN0000\"", ReceiverType::Oem6},
        {"\"FFNRNNCBN\"", "\"OEM7500-0.00H\"", "\"OEM070600RN0000\"", ReceiverType::Oem7500},
        {"\"FFNRNNCBES1\"", "\"OEM7700-1.01\"", "\"OEM070600RN0000\"", ReceiverType::Oem7700},
        {"\"D2LR0RCCR\"", "\"OEMV2G-2.00-2T\"", "\"3.600A9\"", ReceiverType::Unknown},
        // Without their quotes the fields match nothing.
        {"S1GR0RTT0", "OEMSTAR-2.00", "L6X010101RN0000", ReceiverType::Unknown},
        {"FFNRNNCBN", "OEM7500-0.00H", "OEM070600RN0000", ReceiverType::Unknown},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.type, ClassifyVersionLine(Component(c.model, c.hw, c.sw))) << c.hw << " " << c.sw;
    }
}

TEST(Classification, NeedsAWholeFirstComponent)
{
    EXPECT_EQ(ReceiverType::Unknown, ClassifyVersionLine(""));
    EXPECT_EQ(ReceiverType::Unknown,
              ClassifyVersionLine(Line("1,GPSCARD,\"M\",\"P\",\"\\\"OEM7700\",\"L6X01\",\"B\",\"D\"")));
}

TEST(Classification, EachConfigurerTakesItsOwnTypes)
{
    EXPECT_TRUE(COEMStar::MatchesReceiverType(ReceiverType::OemStar, false));
    EXPECT_TRUE(COEMStar::MatchesReceiverType(ReceiverType::OemStar, true));
    EXPECT_TRUE(COEMStar::MatchesReceiverType(ReceiverType::OemStarG, true));
    EXPECT_FALSE(COEMStar::MatchesReceiverType(ReceiverType::OemStarG, false));
    EXPECT_TRUE(NovatelOem6::MatchesReceiverType(ReceiverType::Oem6));
    EXPECT_FALSE(NovatelOem6::MatchesReceiverType(ReceiverType::Oem7500));
    EXPECT_TRUE(NovatelOem7::MatchesReceiverType(ReceiverType::Oem7500));
    EXPECT_TRUE(NovatelOem7::MatchesReceiverType(ReceiverType::Oem7700));
    EXPECT_FALSE(NovatelOem7::MatchesReceiverType(ReceiverType::Oem6));
    EXPECT_TRUE(CAutonomousV1::MatchesReceiverType(ReceiverType::V1));
    EXPECT_FALSE(CAutonomousV1::MatchesReceiverType(ReceiverType::Unknown));
}

}  // namespace
