#include "util/Stopwatch.h"

namespace {

long long MicrosecondsSince(const timeval& start)
{
    timeval now;
    gettimeofday(&now, nullptr);
    return (static_cast<long long>(now.tv_sec) - start.tv_sec) * 1000000LL +
           (static_cast<long long>(now.tv_usec) - start.tv_usec);
}

}  // namespace

Stopwatch::Stopwatch()
{
    Restart();
}

void Stopwatch::Restart()
{
    gettimeofday(&m_start, nullptr);
}

long Stopwatch::ElapsedMs() const
{
    return static_cast<long>(MicrosecondsSince(m_start) / 1000);
}

double Stopwatch::ElapsedSeconds() const
{
    return static_cast<double>(MicrosecondsSince(m_start)) / 1e6;
}
