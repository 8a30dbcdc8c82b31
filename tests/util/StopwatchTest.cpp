#include "util/Sleep.h"
#include "util/Stopwatch.h"

#include <gtest/gtest.h>

TEST(SleepAndStopwatch, SleepLastsItsTimeAndStopwatchSeesIt)
{
    Stopwatch stopwatch;
    SleepMs(50);
    const long elapsed = stopwatch.ElapsedMs();
    EXPECT_GE(elapsed, 50);
    EXPECT_LT(elapsed, 80);
    EXPECT_NEAR(stopwatch.ElapsedSeconds(), elapsed / 1000.0, 0.002);
}
