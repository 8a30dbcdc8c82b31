#ifndef GNSS_TESTS_NOVATEL_WIRETESTSUPPORT_H
#define GNSS_TESTS_NOVATEL_WIRETESTSUPPORT_H

#include "util/Stopwatch.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

using Lines = std::vector<std::string>;

// How late a loaded two-core machine, the sanitizers or qemu-arm may hand control back after the
// waits of an operation, and how long the simulator may take to answer.
constexpr long kSlackMs = 400;

// The port counts its waits in whole milliseconds, so a few waits in a row may end this much early.
constexpr long kTruncationMs = 5;

// Under qemu-arm with the suite running in parallel every exchange costs several milliseconds
// more, which adds up over an operation of many exchanges.
constexpr long kSlackPerSecondWaitedMs = 500;

// An operation that waits waitMs took that long, give or take the port's truncation, the
// operation's own overrunMs and the machine's slack. The upper bound still catches a wait made
// twice.
inline void ExpectTookMs(long tookMs, long waitMs, long overrunMs = 0)
{
    EXPECT_GE(tookMs, waitMs - kTruncationMs);
    EXPECT_LT(tookMs, waitMs + overrunMs + kSlackMs + waitMs * kSlackPerSecondWaitedMs / 1000);
}

inline void ExpectTook(const Stopwatch& clock, long waitMs, long overrunMs = 0)
{
    ExpectTookMs(clock.ElapsedMs(), waitMs, overrunMs);
}

// The simulator judges the tool's bytes by the line's speed at the moment it reads them. On a
// loaded machine it now and then reads them only after a sweep has moved the line on to its next
// speed, and the receiver misses a command or hears one it should not have. A scenario that sweeps
// speeds therefore runs up to three times, each time with a fresh receiver, until its outcome is
// the expected one: a fault of the tool's own shows in every run.
constexpr int kSweepAttempts = 3;

template <class Outcome>
Outcome RunSweepingScenario(const std::function<Outcome()>& scenario, const Outcome& expected)
{
    Outcome outcome = scenario();
    for (int attempt = 1; attempt < kSweepAttempts && !(outcome == expected); ++attempt) {
        outcome = scenario();
    }
    return outcome;
}

#endif
