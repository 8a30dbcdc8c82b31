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

// The port counts its waits in whole milliseconds, so a few waits in a row may end this much early.
constexpr long kTruncationMs = 5;

// An operation that waits waitMs took that long, give or take the port's truncation, the
// operation's own overrunMs and the machine's slack.
inline void ExpectTook(const Stopwatch& clock, long waitMs, long overrunMs = 0)
{
    EXPECT_GE(clock.ElapsedMs(), waitMs - kTruncationMs);
    EXPECT_LT(clock.ElapsedMs(), waitMs + overrunMs + kSlackMs);
}

#endif
