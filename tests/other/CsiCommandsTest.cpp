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
