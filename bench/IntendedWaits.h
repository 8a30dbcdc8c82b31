#ifndef GNSS_BENCH_INTENDEDWAITS_H
#define GNSS_BENCH_INTENDEDWAITS_H

// The waits a whole run of gnss-setup is meant to make: fixed pauses, and time-outs that must run
// out on its path because the receiver has nothing to say. Each is one term of a run's sum, with
// the reason it is that long (also printed in the figures' legend). What a run takes beyond their
// sum is the cost of the tool itself, of process start-up and of the line.

struct WaitTerm {
    const char* name;
    long ms;
    const char* reason;
};

// Detection.
constexpr WaitTerm kVersionProbeFound{
    "probe settle", 100,
    "the version probe sets the port to 115200 and gives the line 100 ms to settle before its first "
    "request, which a NovAtel receiver answers at once"};
constexpr WaitTerm kVersionProbeUnanswered{
    "version probe unanswered", 3 * (100 + 2 * 1000),
    "3 x (100 + 2 x 1000): at each of the three probe rates 100 ms to settle, then two requests that "
    "each read until 1000 ms have passed (an OEMV's version line is read but not recognised, so it "
    "waits the same)"};
constexpr WaitTerm kCsiProbeUnanswered{
    "\"$JAPP\" probe unanswered", 3000,
    "reads of 200 ms until more than 3000 ms have passed since the request"};
constexpr WaitTerm kPmcagProbeUnanswered{
    "\"$PMCAG\" probe unanswered", 2 * 200,
    "2 x 200: reads of 200 ms until more than 299 ms have passed, which the second read's end is the "
    "first to be"};

// NovAtel exchanges.
constexpr WaitTerm kSpeedSweep{
    "speed sweep", 5 * 10,
    "5 x 10: a speed switch sends its command at each of the five sweep rates and sleeps 10 ms at "
    "each, so that the receiver acts on it before the port moves on"};
constexpr WaitTerm kFamilySettle{
    "family settle", 100,
    "OEM6 and OEM7 let the receiver act on the filter settings (OEM7: and on the ionosphere "
    "setting) before the next group of commands"};
constexpr WaitTerm kEmptySbasCommand{
    "empty SBAS command", 500,
    "with SBAS off the OEMV/OEM-Star SBAS sequence starts with an empty command; nothing reaches the "
    "receiver, and the wait for its \"<OK\" runs out"};
constexpr WaitTerm kChannelConfigRestart{
    "channel configuration restart", 1000 + 5000,
    "1000 + 5000: after \"selectchanconfig\" the receiver restarts; 1000 ms, input discarded, 5000 ms "
    "more"};
constexpr WaitTerm kResetBreath{
    "reset breath", 10, "after \"reset\" the search for the restarted receiver starts 10 ms later"};

// The run driver.
constexpr WaitTerm kPauseBeforeSave{
    "pause before save", 1000,
    "every configuration lets the receiver act on the last output command before the "
    "configuration is (or is not) saved"};

#endif
