#ifndef GNSS_TESTS_NOVATEL_WIRETESTSUPPORT_H
#define GNSS_TESTS_NOVATEL_WIRETESTSUPPORT_H

#include "util/Stopwatch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// How late a loaded two-core machine, the sanitizers or qemu-arm may hand control back after the
// waits of an operation, and how long the simulator may take to answer.
constexpr long kSlackMs = 400;

// An operation that waits waitMs took at least that long and not much more.
inline void ExpectTook(const Stopwatch& clock, long waitMs, long overrunMs = 0)
{
    EXPECT_GE(clock.ElapsedMs(), waitMs);
    EXPECT_LT(clock.ElapsedMs(), waitMs + overrunMs + kSlackMs);
}

#endif
