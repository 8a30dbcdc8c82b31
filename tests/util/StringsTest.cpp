#include "util/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SplitFields, CutsAtEveryDelimiterKeepingEmptyFields)
{
    EXPECT_THAT(SplitFields("a;;b;", ";"), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(SplitFields(";", ";"), ElementsAre("", ""));
    EXPECT_THAT(SplitFields("abc", ";"), ElementsAre("abc"));
    EXPECT_THAT(SplitFields("a,b;c", ",;"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(SplitFields("", ";"), IsEmpty());
}

TEST(TrimCharsAndStartsWith, LookAtTheEndsOnly)
{
    EXPECT_EQ(TrimChars("\"OEM7\"", "\""), "OEM7");
    EXPECT_EQ(TrimChars("\"a\"b\"", "\""), "a\"b");
    EXPECT_EQ(TrimChars("\"\"", "\""), "");
    EXPECT_EQ(TrimChars("", "\""), "");
    EXPECT_TRUE(StartsWith("<OK\r\n", "<OK"));
    EXPECT_TRUE(StartsWith("abc", ""));
    EXPECT_FALSE(StartsWith("<O", "<OK"));
    EXPECT_FALSE(StartsWith("[COM1]<OK", "<OK"));
}

TEST(SubstrRange, TakesAnInclusiveRangeAsFarAsTheTextGoes)
{
    struct Case {
        const char* text;
        int first, last;
        const char* expected;
    } const cases[] = {
        {"\"OEM060600RN0000\"", 4, 9, "060600"}, {"abcdef", 0, 0, "a"},
        {"\"OEM06", 4, 9, "06"}, {"\"OEM", 4, 9, ""},
        // A negative last counts from the end, as last + length - 1: with "abcdef", -1 is index 4.
        {"abcdef", 1, -1, "bcde"}, {"abcdef", 0, -6, ""},
        {"abc", 3, 5, ""}, {"abc", 2, 1, ""}, {"abc", -1, 1, ""}, {"", 0, 0, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(SubstrRange(c.text, c.first, c.last), c.expected)
            << c.text << " from " << c.first << " to " << c.last;
    }
}

TEST(FormatString, FormatsPastTheFirstBuffer)
{
    const std::string longText(300, 'x');
    EXPECT_EQ(FormatString("<%s>", longText.c_str()), "<" + longText + ">");
    const std::string exactlyFull(127, 'y');
    EXPECT_EQ(FormatString("%s", exactlyFull.c_str()), exactlyFull);
    EXPECT_EQ(FormatString("%s!", exactlyFull.c_str()), exactlyFull + "!");
}

TEST(StringToInt, ReadsALeadingNumberOrThrowsDomainError)
{
    EXPECT_EQ(StringToInt("42"), 42);
    EXPECT_EQ(StringToInt(" -7"), -7);
    EXPECT_EQ(StringToInt("3abc"), 3);
    for (const char* text : {"", "abc", "\"2\""}) {
        EXPECT_THROW(StringToInt(text), std::domain_error) << text;
    }
}
