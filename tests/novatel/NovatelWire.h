#ifndef GNSS_TESTS_NOVATEL_NOVATELWIRE_H
#define GNSS_TESTS_NOVATEL_NOVATELWIRE_H

#include "sim/line/Fault.h"
#include "tests/support/SimulatedNovatel.h"
#include "tests/support/TestTiming.h"
#include "util/Stopwatch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Lines = std::vector<std::string>;
using GnssSim::Fault;
using NovatelCommon::OemV1Descendants;

// Each line with its line end; "" stands for a line end on its own.
inline Lines WithLineEnds(Lines lines)
{
    for (std::string& line : lines) {
        line += "\r\n";
    }
    return lines;
}

// Names a parameterised case after its member name.
const auto kCaseName = [](const auto& info) { return std::string(info.param.name); };

// A receiver that never acknowledges command, nor a rate switch, whose "<OK" a slow machine (qemu)
// may read only after the sweep flushed its input, and take for the next exchange's answer.
inline std::vector<Fault> SilentTo(const char* command)
{
    return {Fault::NoAnswer(command), Fault::NoAnswer("COM *"), Fault::NoAnswer("SERIALCONFIG *")};
}

// An operation meant to wait waitMs took that long (less 1 ms for each of a few read deadlines, as
// the port counts whole milliseconds), and at most overrunMs more plus the machine's slack.
inline void ExpectTook(long tookMs, long waitMs, long overrunMs = 0)
{
    EXPECT_GE(tookMs, waitMs - 5);
    EXPECT_LT(tookMs, waitMs + overrunMs + kSchedulingSlackMs);
}

// On a loaded machine the simulator may read the tool's bytes only after a sweep moved the line to
// its next speed, and misjudge them. A scenario that sweeps speeds runs up to three times, with a
// fresh receiver each, until its outcome is the expected one: a fault of the tool shows in all.
template <class Outcome, class Scenario>
Outcome RunSweeping(const Scenario& scenario, const Outcome& expected)
{
    Outcome outcome = scenario();
    for (int run = 1; run < 3 && !(outcome == expected); ++run) {
        outcome = scenario();
    }
    return outcome;
}

#endif
