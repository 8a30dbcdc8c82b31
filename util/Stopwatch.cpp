#include "util/Stopwatch.h"

namespace {

timespec Now()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now;
}

long long NanosecondsSince(const timespec& start)
{
    const timespec now = Now();
    return (static_cast<long long>(now.tv_sec) - start.tv_sec) * 1000000000LL +
           (static_cast<long long>(now.tv_nsec) - start.tv_nsec);
}

}  // namespace

Stopwatch::Stopwatch() : m_start(Now()) {}

void Stopwatch::Restart()
{
    m_start = Now();
}

long Stopwatch::ElapsedMs() const
{
    return static_cast<long>(NanosecondsSince(m_start) / 1000000LL);
}

double Stopwatch::ElapsedSeconds() const
{
    return static_cast<double>(NanosecondsSince(m_start)) / 1e9;
}
