#ifndef GNSS_SIM_LINE_SIMCLOCK_H
#define GNSS_SIM_LINE_SIMCLOCK_H

#include <chrono>

namespace GnssSim {

// The simulator measures everything on the monotonic clock: a wall-clock step while a test runs
// must not shift a receiver's restart or a delayed answer.
using SimClock = std::chrono::steady_clock;
using TimePoint = SimClock::time_point;

// "Nothing is due": later than any real deadline.
inline TimePoint Never()
{
    return TimePoint::max();
}

inline TimePoint MsAfter(TimePoint start, long ms)
{
    return start + std::chrono::milliseconds(ms);
}

}

#endif
