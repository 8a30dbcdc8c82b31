#include "SimTestSupport.h"

#include "sim/ByteText.h"
#include "sim/Fault.h"
#include "sim/NovatelLogs.h"
#include "sim/PacketDecoder.h"
#include "sim/ReceiverCatalogue.h"
#include "sim/WireLog.h"

#include <gtest/gtest.h>

using namespace GnssSim;

TEST(FaultMatching, ComparesWholeCommandsWordByWordWithoutCase)
{
    struct Case {
        const char* pattern;
        const char* heard;
        bool matches;
    };
    const Case cases[] = {
        {"SBASCONTROL ENABLE", "sbascontrol enable\r\n", true},
        {"SBASCONTROL ENABLE", "SBASCONTROL ENABLE AUTO\r\n", false},
        {"SBASCONTROL DISABLE", "SBASCONTROL  DISABLE", true},
        {"LOCKOUTSYSTEM BEIDOU", "UNLOCKOUTSYSTEM BEIDOU\r\n", false},
        {"COM COM1 115200", "COM COM1,115200\r\n", true},
        {"ASSIGN *", "ASSIGN 12 AUTO\r\n", true},
        {"ASSIGN *", "ASSIGNALL SBAS AUTO\r\n", false},
        {"*", "anything at all\r\n", true},
        {"$PMCAG,004,908", "$PMCAG,004,908*5D\r\n", true},
        {"$JASC *", "$JASC,GPGGA,5\r\n", true},
        {"", "\r\n", false},
    };
    for (const Case& example : cases) {
        EXPECT_EQ(CommandMatches(example.pattern, example.heard), example.matches)
            << example.pattern << " / " << EscapeBytes(example.heard);
    }
}

TEST(PacketDecoding, TellsPacketsSentencesAndRejectsApart)
{
    struct Case {
        std::string input;
        DecodedItem::Kind kind;
        bool valid;
        const char* problem;
    };
    const Case cases[] = {
        {std::string("\x01\x6e\x91\x01\x40\x41\x01", 7), DecodedItem::Kind::Packet, true, ""},
        {std::string("\x01\x6e\x91\x01\x40\x42\x01", 7), DecodedItem::Kind::Packet, false, "bad sum (322, should be 321)"},
        {std::string("\x01\x6e\x90", 3), DecodedItem::Kind::Other, false, "0x01 not followed by an id and its complement"},
        {std::string("\x01\x0a\xf5\x00\x00\x01", 6), DecodedItem::Kind::Packet, true, ""},
        {"$PMCAG,004,908*5D\r\n", DecodedItem::Kind::Sentence, true, ""},
        {"$PMCAG,004,908*5d\r\n", DecodedItem::Kind::Sentence, true, ""},
        {"$PMCAG,004,908*5E\r\n", DecodedItem::Kind::Sentence, false, "bad checksum (5E, should be 5D)"},
        {"$PMCAG,004,908\r\n", DecodedItem::Kind::Sentence, false, "no checksum"},
        {"hello\r\n", DecodedItem::Kind::Other, false, "not a sentence"},
        {"\r\n", DecodedItem::Kind::Other, false, "empty line"},
    };
    for (const Case& example : cases) {
        PacketDecoder decoder;
        std::size_t pos = 0;
        for (std::size_t i = 0; i < example.input.size() && !decoder.HasItem(); ++i) {
            pos = decoder.Take(example.input.substr(0, i + 1), pos);
        }
        ASSERT_TRUE(decoder.HasItem()) << EscapeBytes(example.input);
        EXPECT_EQ(pos, example.input.size()) << EscapeBytes(example.input);
        const DecodedItem item = decoder.PopItem();
        EXPECT_EQ(item.kind, example.kind) << EscapeBytes(example.input);
        EXPECT_EQ(item.valid, example.valid) << EscapeBytes(example.input);
        EXPECT_EQ(item.problem, example.problem) << EscapeBytes(example.input);
    }
}

TEST(PacketDecoding, NoiseInsideAPacketSpoilsItButNoiseBetweenItemsDoesNot)
{
    const std::string packet("\x01\x6e\x91\x01\x40\x41\x01", 7);
    PacketDecoder decoder;
    decoder.OnNoise();
    decoder.Take(packet, 0);
    EXPECT_TRUE(decoder.PopItem().valid);
    std::size_t pos = decoder.Take(packet.substr(0, 4), 0);
    decoder.OnNoise();
    pos = decoder.Take(packet, pos);
    const DecodedItem spoiled = decoder.PopItem();
    EXPECT_FALSE(spoiled.valid);
    EXPECT_TRUE(spoiled.garbled);
}

TEST(WireLogFormat, LinesParseBackIntoWhatWasLogged)
{
    WireLogEntry entry;
    entry.seconds = 12.5;
    entry.direction = WireDirection::Out;
    entry.lineBaud = 9600;
    entry.receiverBaud = 115200;
    entry.bytes = std::string("\r\n<OK \"x\"\\\0\xff", 12);
    entry.meaning = "noise (line at 9600, receiver at 115200): <OK";
    const std::string line = FormatWireLogEntry(entry);
    EXPECT_EQ(line, "12.500000 out 9600 115200 \"\\r\\n<OK \\\"x\\\"\\\\\\x00\\xff\" "
                    "noise (line at 9600, receiver at 115200): <OK");
    WireLogEntry parsed;
    ASSERT_TRUE(ParseWireLogLine(line, parsed));
    EXPECT_EQ(parsed.direction, WireDirection::Out);
    EXPECT_EQ(parsed.lineBaud, 9600);
    EXPECT_EQ(parsed.receiverBaud, 115200);
    EXPECT_EQ(parsed.bytes, entry.bytes);
    EXPECT_EQ(parsed.meaning, entry.meaning);
    EXPECT_FALSE(ParseWireLogLine("12.5 sideways 0 0 \"\" x", parsed));
    EXPECT_FALSE(ParseWireLogLine("12.5 in 0 0 \"\\q\" x", parsed));
}

namespace {

// The tool's rule for telling NovAtel generations apart by their version log, written out again
// here: software "L6X01" is an OEM-Star (with a G in the model an OEM-StarG), "OEM06" an OEM6,
// hardware "OEM7500" or "OEM7700" an OEM7; anything else is not recognised.
std::string Classify(const std::vector<std::string>& body)
{
    const std::string& model = body[2];
    const std::string& hw = body[4];
    const std::string& sw = body[5];
    if (sw.rfind("\"L6X01", 0) == 0) {
        return model.find('G') != std::string::npos ? "oemstarg" : "oemstar";
    }
    if (sw.rfind("\"OEM06", 0) == 0) {
        return "oem6";
    }
    if (hw.rfind("\"OEM7500", 0) == 0) {
        return "oem7500";
    }
    return hw.rfind("\"OEM7700", 0) == 0 ? "oem7700" : "unknown";
}

}

TEST(VersionLog, EachReceiverClassifiesAsItsGenerationAndCarriesAPackageVersion)
{
    const char* const novatel[] = {"oemv", "oemstar", "oemstarg", "oem6", "oem7500", "oem7700"};
    for (const char* name : novatel) {
        ReceiverKind kind;
        ASSERT_TRUE(FindReceiverKind(name, kind));
        const std::string body = VersionLogBody(DefaultIdentity(kind));
        const std::vector<std::string> fields = SplitKeepingEmpty(body, ',');
        ASSERT_EQ(fields.size(), 17u) << body;
        EXPECT_EQ(fields[0], "2");
        EXPECT_EQ(fields[1], "GPSCARD");
        EXPECT_EQ(Classify(fields), std::string(name) == "oemv" ? "unknown" : name) << body;
        EXPECT_EQ(fields[9], "PACKAGE");
        EXPECT_GT(fields[13].size(), 2u) << "the package version, quoted, four fields after PACKAGE";
        EXPECT_EQ(body.find(';'), std::string::npos);
        EXPECT_EQ(body.find('*'), std::string::npos);
    }
}

TEST(VersionLog, HeaderHasTenFieldsAndTheCrcCoversEverythingBetweenHashAndStar)
{
    const std::string log = FormatNovatelLog("VERSIONA", NovatelLogHeader(), "1,GPSCARD");
    EXPECT_EQ(log, "#VERSIONA,COM1,0,80.0,FINESTEERING,2318,302400.000,02000020,b1f6,16809;1,GPSCARD*" +
                       log.substr(log.size() - 10, 8) + "\r\n");
    EXPECT_EQ(SplitKeepingEmpty(log.substr(1, log.find(';') - 1), ',').size(), 10u);
    EXPECT_TRUE(HasValidNovatelCrc(log));
    EXPECT_EQ(ChanConfigListLogBody(3, 2), "3,2,2,12,GPSL1,2,SBASL1,2,14,GPSL1,2,SBASL1");
}
