#ifndef GNSS_BENCH_SPECIFIEDWAITS_H
#define GNSS_BENCH_SPECIFIEDWAITS_H

// The waits a whole run of gnss-setup is meant to make: fixed pauses, and time-outs that must run
// out on its path because the receiver has nothing to say. Each is one term of a run's sum, with
// the reason it is that long. What a run takes beyond their sum is the cost of the tool itself,
// of process start-up and of the line.

struct WaitTerm {
    const char* name;
    long ms;
};

// Detection.
// The version probe sets the port to 115200 first and gives the line 100 ms to settle before its
// first request; a NovAtel receiver answers that request at once.
constexpr WaitTerm kVersionProbeFound{"probe settle 100", 100};
// A line with no NovAtel receiver on it: at each of the three probe rates 100 ms to settle, then
// two requests that each read until 1000 ms have passed (an OEMV's version line is read but not
// recognised, so it waits the same).
constexpr WaitTerm kVersionProbeUnanswered{"version probe 3 x (100 + 2 x 1000)", 3 * (100 + 2 * 1000)};
// "$JAPP" unanswered: reads of 200 ms until more than 3000 ms have passed since the request.
constexpr WaitTerm kCsiProbeUnanswered{"$JAPP probe 3000", 3000};
// "$PMCAG,004,908" unanswered: reads of 200 ms until more than 299 ms have passed, which the
// second read's end is the first to be.
constexpr WaitTerm kPmcagProbeUnanswered{"$PMCAG probe 2 x 200", 2 * 200};

// NovAtel exchanges.
// A speed switch sends its command at each of the five sweep rates and sleeps 10 ms at each so
// that the receiver can act on it before the port moves on.
constexpr WaitTerm kSpeedSweep{"speed sweep 5 x 10", 5 * 10};
// OEM6 and OEM7 let the receiver act on the filter settings before the next group of commands.
constexpr WaitTerm kFamilySettle{"settle 100", 100};
// The OEMV/OEM-Star SBAS sequence sends an empty first command when SBAS is off; nothing reaches
// the receiver, and its wait for "<OK" (500 ms) runs out.
constexpr WaitTerm kEmptySbasCommand{"empty SBAS command 500", 500};
// After "selectchanconfig" the receiver restarts: 1000 ms, input discarded, 5000 ms more.
constexpr WaitTerm kChannelConfigRestart{"channel config restart 1000 + 5000", 1000 + 5000};
// After "reset" the search for the restarted receiver starts after 10 ms.
constexpr WaitTerm kResetBreath{"reset breath 10", 10};

// The run driver.
// Lets the receiver act on the last output command before the configuration is (or is not) saved.
constexpr WaitTerm kPauseBeforeSave{"pause before save 1000", 1000};

#endif
