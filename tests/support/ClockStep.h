#ifndef GNSS_TESTS_SUPPORT_CLOCKSTEP_H
#define GNSS_TESTS_SUPPORT_CLOCKSTEP_H

#include "tests/support/ProcessRunner.h"

#include <string>

// The wall clock of a program of this build, stepped while it runs, as a console's clock is set at
// boot. libfaketime (in the cross build a preload of our own that reads the same variables,
// ClockStepPreload.cpp), preloaded into the program, moves CLOCK_REALTIME alone (the monotonic
// clock stays true) by an offset it reads from a file on every call, so writing the file steps the
// program's wall clock at once.
namespace ClockStep {

// One hour, the step the tests take back and forward: far longer than any wait of the tool, so a
// wait that measured the wall clock would visibly end at once or not at all.
constexpr long kStepSeconds = 3600;

// Why the clock cannot be stepped in this build (libfaketime is missing), or "" when it can.
std::string WhyUnavailable();

// The library to preload, beside any other.
std::string Preload();

// The program's variables besides the preload: the offset read from offsetFile on every call, the
// monotonic clock left alone. Writes the file with no offset.
ProgramEnvironment Variables(const std::string& offsetFile);

// Steps the program's wall clock to seconds away from the true time (negative: back).
void SetOffset(const std::string& offsetFile, long seconds);

}  // namespace ClockStep

#endif
