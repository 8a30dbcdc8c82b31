#include "util/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SplitFields, KeepsEmptyFieldsIncludingATrailingOne)
{
    EXPECT_THAT(SplitFields("a;;b;", ";"), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(SplitFields(";", ";"), ElementsAre("", ""));
    EXPECT_THAT(SplitFields("abc", ";"), ElementsAre("abc"));
}

TEST(SplitFields, EmptyTextGivesNoFields)
{
    EXPECT_THAT(SplitFields("", ";"), IsEmpty());
}

TEST(SplitFields, CutsAtEveryCharacterOfTheSet)
{
    EXPECT_THAT(SplitFields("a,b;c", ",;"), ElementsAre("a", "b", "c"));
}

TEST(TrimChars, StripsBothEndsOnly)
{
    EXPECT_EQ(TrimChars("\"OEM7\"", "\""), "OEM7");
    EXPECT_EQ(TrimChars("\"a\"b\"", "\""), "a\"b");
    EXPECT_EQ(TrimChars("\"\"", "\""), "");
    EXPECT_EQ(TrimChars("", "\""), "");
}

TEST(StartsWith, ComparesThePrefixOnly)
{
    EXPECT_TRUE(StartsWith("<OK\r\n", "<OK"));
    EXPECT_TRUE(StartsWith("abc", ""));
    EXPECT_FALSE(StartsWith("<O", "<OK"));
    EXPECT_FALSE(StartsWith("[COM1]<OK", "<OK"));
}

TEST(SubstrRange, TakesAnInclusiveRange)
{
    EXPECT_EQ(SubstrRange("\"OEM060600RN0000\"", 4, 9), "060600");
    EXPECT_EQ(SubstrRange("abcdef", 0, 0), "a");
}

TEST(SubstrRange, StopsAtTheEndOfAShortText)
{
    EXPECT_EQ(SubstrRange("\"OEM06", 4, 9), "06");
    EXPECT_EQ(SubstrRange("\"OEM", 4, 9), "");
}

TEST(SubstrRange, NegativeLastCountsFromTheEnd)
{
    // last + length - 1: with "abcdef", -1 reaches index 4.
    EXPECT_EQ(SubstrRange("abcdef", 1, -1), "bcde");
    EXPECT_EQ(SubstrRange("abcdef", 0, -6), "");
}

TEST(SubstrRange, OutOfRangeGivesEmpty)
{
    EXPECT_EQ(SubstrRange("abc", 3, 5), "");
    EXPECT_EQ(SubstrRange("abc", 2, 1), "");
    EXPECT_EQ(SubstrRange("abc", -1, 1), "");
    EXPECT_EQ(SubstrRange("", 0, 0), "");
}

TEST(FormatString, FormatsPastTheFirstBuffer)
{
    const std::string longText(300, 'x');
    EXPECT_EQ(FormatString("<%s>", longText.c_str()), "<" + longText + ">");
    const std::string exactlyFull(127, 'y');
    EXPECT_EQ(FormatString("%s", exactlyFull.c_str()), exactlyFull);
    EXPECT_EQ(FormatString("%s!", exactlyFull.c_str()), exactlyFull + "!");
}

TEST(FormatString, FormatsNumbersAsPrintfDoes)
{
    EXPECT_EQ(FormatString("LOG %s ONTIME %.1f\r\n", "GPGSA", 1.0), "LOG GPGSA ONTIME 1.0\r\n");
    EXPECT_EQ(FormatString("%.1f", 1.0 / 0.0), "inf");
}

TEST(StringToInt, ReadsALeadingNumber)
{
    EXPECT_EQ(StringToInt("42"), 42);
    EXPECT_EQ(StringToInt(" -7"), -7);
    EXPECT_EQ(StringToInt("3abc"), 3);
}

TEST(StringToInt, ThrowsDomainErrorWhenThereIsNoNumber)
{
    for (const char* text : {"", "abc", "\"2\""}) {
        try {
            StringToInt(text);
            ADD_FAILURE() << "no exception for \"" << text << "\"";
        } catch (const std::domain_error& error) {
            EXPECT_STREQ(error.what(), "invalid string to number conversion");
        }
    }
}
