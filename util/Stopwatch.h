#ifndef GNSS_UTIL_STOPWATCH_H
#define GNSS_UTIL_STOPWATCH_H

#include <ctime>

// Measures the time since its start (construction or Restart) on the monotonic clock, which no
// setting of the wall clock moves: a console sets its clock at boot, from its RTC, the network or
// GNSS time, while the tool may be waiting for a receiver. Receiver exchanges compare whole
// milliseconds against their time-outs.
class Stopwatch {
public:
    Stopwatch();

    void Restart();
    // Whole milliseconds, rounded down: a time-out of N ms is reached only once N full
    // milliseconds have passed.
    long ElapsedMs() const;
    double ElapsedSeconds() const;

private:
    timespec m_start;
};

#endif
