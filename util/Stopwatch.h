#ifndef GNSS_UTIL_STOPWATCH_H
#define GNSS_UTIL_STOPWATCH_H

#include <sys/time.h>

// Measures wall-clock time from its start (construction or Restart), with microsecond
// resolution. Receiver exchanges compare whole milliseconds against their time-outs.
class Stopwatch {
public:
    Stopwatch();

    void Restart();
    long ElapsedMs() const;
    double ElapsedSeconds() const;

private:
    timeval m_start;
};

#endif
