#include "receivers/other/CsiCommands.h"

#include <gtest/gtest.h>

TEST(CsiRates, ClassARoundsToFiveOneOrAFifthOfAHertz)
{
    const struct {
        float requested;
        float stored;
    } cases[] = {{10.0f, 5.0f}, {3.0f, 5.0f},  {2.99f, 1.0f}, {0.6f, 1.0f}, {0.59f, 0.2f},
                 {0.1f, 0.2f},  {0.09f, 0.0f}, {0.05f, 0.0f}, {0.0f, 0.0f}, {-1.0f, 0.0f}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.stored, QuantiseCsiRateClassA(c.requested)) << c.requested;
    }
}

TEST(CsiRates, ClassBIsOnceASecondOrOff)
{
    EXPECT_EQ(1.0f, QuantiseCsiRateClassB(20.0f));
    EXPECT_EQ(1.0f, QuantiseCsiRateClassB(0.5f));
    EXPECT_EQ(0.0f, QuantiseCsiRateClassB(0.4f));
}

TEST(CsiCommands, OutputCommandUsesDotTwoOnlyForClassAOnAtAFifthOfAHertz)
{
    EXPECT_EQ("\r\n$JASC,GPGGA,.2\r\n", BuildCsiOutputCommand("GPGGA", 0.2f, true, true));
    EXPECT_EQ("\r\n$JASC,GPGGA,0\r\n", BuildCsiOutputCommand("GPGGA", 0.2f, false, true));
    EXPECT_EQ("\r\n$JASC,GPZDA,5\r\n", BuildCsiOutputCommand("GPZDA", 5.0f, true, true));
    EXPECT_EQ("\r\n$JASC,GPGSV,0\r\n", BuildCsiOutputCommand("GPGSV", 0.2f, true, false));
    EXPECT_EQ("\r\n$JASC,GPGSA,1\r\n", BuildCsiOutputCommand("GPGSA", 1.0f, true, false));
}

TEST(CsiCommands, DiffSourceNamesThreeSourcesAndNothingElse)
{
    EXPECT_EQ("\r\n$JDIFF,NONE\r\n", BuildCsiDiffSourceCommand(0));
    EXPECT_EQ("\r\n$JDIFF,WAAS\r\n", BuildCsiDiffSourceCommand(1));
    EXPECT_EQ("\r\n$JDIFF,BEACON\r\n", BuildCsiDiffSourceCommand(2));
    EXPECT_EQ("", BuildCsiDiffSourceCommand(3));
    EXPECT_EQ("", BuildCsiDiffSourceCommand(-1));
}

TEST(CsiCommands, SbasPrnListTakesTheFirstTwoOrAuto)
{
    SbasPrnFlags flags{};
    EXPECT_EQ("$JWAASPRN,,,AUTO\r\n", BuildCsiSbasPrnCommand(flags));
    flags.fill(true);
    EXPECT_EQ("$JWAASPRN,,,AUTO\r\n", BuildCsiSbasPrnCommand(flags));

    flags.fill(false);
    flags[133 - 120] = flags[135 - 120] = flags[138 - 120] = true;
    EXPECT_EQ("$JWAASPRN,133,135\r\n", BuildCsiSbasPrnCommand(flags));
    flags.fill(false);
    flags[158 - 120] = true;
    EXPECT_EQ("$JWAASPRN,158\r\n", BuildCsiSbasPrnCommand(flags));
    flags.fill(true);
    flags[120 - 120] = false;
    EXPECT_EQ("$JWAASPRN,121,122\r\n", BuildCsiSbasPrnCommand(flags));
}
