// The picture of a session: what it makes of a wire log, and the picture itself against a golden
// file. GNSS_UPDATE_GOLDEN=1 writes the golden file anew from what the code draws now; look at the
// picture (rsvg-convert golden.svg -o golden.png) before committing it.
#include "sim/line/WireLog.h"
#include "sim/timeline/Session.h"
#include "sim/timeline/SvgWriter.h"
#include "sim/timeline/TimelineSvg.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

using namespace GnssSim;

namespace {

const std::string kFolder = std::string(GNSS_SIM_TEST_DATA) + "/timeline/";

// A hand-made session of an OEM6 (timeline/session.log): a probe at the wrong speed, a version
// log, a paced answer whose prompt has no line end, a streamed log, a reset with a command lost in
// it twice and once at the wrong speed after, a change of speed whose answer leaves at the old
// speed and does not reach the tool, a line spoilt by noise in its middle, the command's end, and
// something after it.
std::vector<WireLogEntry> HandMadeSession()
{
    std::ifstream file(kFolder + "session.log");
    std::vector<WireLogEntry> entries;
    for (std::string text; std::getline(file, text);) {
        WireLogEntry entry;
        EXPECT_TRUE(ParseWireLogLine(text, entry)) << text;
        entries.push_back(entry);
    }
    EXPECT_FALSE(entries.empty()) << "cannot read " << kFolder << "session.log";
    return entries;
}

std::string Span(double from, double to)
{
    char text[48];
    (void)std::snprintf(text, sizeof text, "%.3f-%.3f", from, to);
    return text;
}

std::vector<std::string> LineTexts(const Session& session)
{
    std::vector<std::string> texts;
    for (const SessionLine& line : session.lines) {
        texts.push_back(std::string(line.side == Side::Tool ? "tool " : "receiver ") + Span(line.start, line.end) +
                        (line.lost ? " lost" : "") + (line.streamed ? " streamed" : "") + " \"" + line.label + "\"");
    }
    return texts;
}

std::vector<std::string> SpeedTexts(const std::vector<SpeedStretch>& stretches)
{
    std::vector<std::string> texts;
    texts.reserve(stretches.size());
    for (const SpeedStretch& stretch : stretches) {
        texts.push_back(Span(stretch.from, stretch.to) + " " +
                        (stretch.restarting ? std::string("restarting") : std::to_string(stretch.baud)));
    }
    return texts;
}

// "" when the texts are the same, else the first line that differs in each.
std::string FirstDifference(const std::string& expected, const std::string& actual)
{
    std::istringstream expectedLines(expected);
    std::istringstream actualLines(actual);
    std::string left;
    std::string right;
    for (int number = 1;; ++number) {
        const bool leftEnds = !std::getline(expectedLines, left);
        const bool rightEnds = !std::getline(actualLines, right);
        if (leftEnds && rightEnds) {
            return "";
        }
        if (leftEnds != rightEnds || left != right) {
            return "line " + std::to_string(number) + "\n golden: " + (leftEnds ? "(end)" : left) +
                   "\n  drawn: " + (rightEnds ? "(end)" : right);
        }
    }
}

std::string ReadFile(const std::string& path)
{
    std::stringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

}

// What the picture shows is read from the wire log alone: who sent which line when, what was lost,
// the speeds and the waits. Paced slices make one line; nothing counts after the command's end.
TEST(Timeline, ReadsLinesSpeedsAndWaitsFromTheWireLog)
{
    const Session session = ReadSession(HandMadeSession());
    EXPECT_DOUBLE_EQ(session.end, 4.9);
    EXPECT_EQ(LineTexts(session), (std::vector<std::string>{
                                      "tool 0.100-0.100 lost \"\"",
                                      "tool 0.100-0.100 lost \"log versiona once\"",
                                      "tool 1.100-1.100 \"log versiona once\"",
                                      "receiver 1.100-1.100 \"\"",
                                      "receiver 1.100-1.100 \"<OK\"",
                                      "receiver 1.100-1.100 \"[COM1]#VERSIONA,COM1;1,GPSCARD,\"OEM060600RN0000\"*982cd131\"",
                                      "tool 1.150-1.150 \"LOG GPGGA ONTIME 0.5\"",
                                      "receiver 1.150-1.150 \"\"",
                                      "receiver 1.150-1.151 \"<OK\"",
                                      "receiver 1.151-1.151 \"[COM1]\"",
                                      "receiver 1.650-1.650 streamed \"log GPGGA\"",
                                      "receiver 2.150-2.150 streamed \"log GPGGA\"",
                                      "tool 2.400-2.400 \"reset\"",
                                      "receiver 2.400-2.400 \"\"",
                                      "receiver 2.400-2.400 \"<OK\"",
                                      "receiver 2.400-2.400 \"[COM1]\"",
                                      "tool 2.700-2.700 lost \"echo off\"",
                                      "tool 3.000-3.000 lost \"echo off\"",
                                      "tool 3.500-3.500 lost \"echo off\"",
                                      "tool 3.600-3.600 \"serialconfig 19200\"",
                                      "receiver 3.610-3.610 lost \"<OK\"",
                                      "tool 4.010-4.010 lost \"\"",
                                      "tool 4.020-4.020 lost \"echo off\"",
                                      "receiver 4.020-4.020 \"\"",
                                      "receiver 4.020-4.020 \"<ERROR:Invalid Message. Field = 1\"",
                                      "receiver 4.020-4.020 \"[COM1]\"",
                                  }));
    EXPECT_EQ(SpeedTexts(session.lineSpeeds),
              (std::vector<std::string>{"0.100-1.100 9600", "1.100-3.600 115200", "3.600-3.610 9600",
                                        "3.610-4.010 19200", "4.010-4.020 9600", "4.020-4.900 19200"}));
    EXPECT_EQ(SpeedTexts(session.receiverSpeeds),
              (std::vector<std::string>{"0.000-2.400 115200", "2.400-3.400 restarting", "3.400-3.600 9600",
                                        "3.600-4.900 19200"}));
    std::vector<std::string> waits;
    for (const Wait& wait : session.waits) {
        waits.push_back(Span(wait.from, wait.to));
    }
    EXPECT_EQ(waits, (std::vector<std::string>{"0.100-1.100", "1.151-2.400", "2.400-2.700", "2.700-3.000", "3.000-3.500",
                                               "3.610-4.010", "4.020-4.900"}));
}

TEST(Timeline, DrawsTheHandMadeSessionAsTheGoldenPicture)
{
    const std::string picture = TimelineSvg(ReadSession(HandMadeSession()), "oem6: a hand-made session");
    const std::string golden = kFolder + "golden.svg";
    const char* update = std::getenv("GNSS_UPDATE_GOLDEN");
    if (update != nullptr && std::string(update) == "1") {
        EXPECT_TRUE((std::ofstream(golden, std::ios::binary | std::ios::trunc) << picture).good());
        return;
    }
    EXPECT_EQ(FirstDifference(ReadFile(golden), picture), "")
        << "the picture differs from " << golden << "; GNSS_UPDATE_GOLDEN=1 writes it anew";
}

// Text in the picture comes from the line, the command line and the wire log, any bytes at all; a
// renderer refuses the whole picture for one that XML cannot hold.
TEST(Timeline, EscapesWhatXmlCannotHold)
{
    struct Case {
        const char* name;
        std::string text;
        std::string escaped;
    };
    const Case cases[] = {
        {"markup", "<OK & \"x\">", "&lt;OK &amp; &quot;x&quot;&gt;"},
        {"control characters, a tooltip's line ends kept", std::string("a\0b\x1b\r\tc\nd", 9), "a\\x00b\\x1b\\r\\tc\nd"},
        {"UTF-8 kept", "\xc3\x97 \xe2\x80\xa6 \xf0\x9f\x9b\xb0", "\xc3\x97 \xe2\x80\xa6 \xf0\x9f\x9b\xb0"},
        {"bytes that are not UTF-8", "\xe9t\xc3", "\\xe9t\\xc3"},
        {"overlong forms and surrogates", "\xc0\xaf\xe0\x80\xaf\xed\xa0\x80", "\\xc0\\xaf\\xe0\\x80\\xaf\\xed\\xa0\\x80"},
        {"above U+10FFFF", "\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.name);
        EXPECT_EQ(SvgWriter::Escape(example.text), example.escaped);
    }
}
