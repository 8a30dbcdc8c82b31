#include "sim/model/OutputSchedule.h"

#include <algorithm>
#include <iterator>

namespace GnssSim {

namespace {

SimClock::duration PeriodOf(double seconds)
{
    return std::chrono::duration_cast<SimClock::duration>(std::chrono::duration<double>(seconds));
}

}

void OutputSchedule::Follow(const std::map<std::string, double>& logs, TimePoint now)
{
    for (auto entry = m_entries.begin(); entry != m_entries.end();) {
        entry = logs.count(entry->first) == 0 ? m_entries.erase(entry) : std::next(entry);
    }
    for (const auto& log : logs) {
        const auto existing = m_entries.find(log.first);
        if (existing == m_entries.end() || existing->second.period != log.second) {
            m_entries[log.first] = Entry{log.second, now + PeriodOf(log.second)};
        }
    }
}

std::vector<std::string> OutputSchedule::TakeDue(TimePoint now)
{
    std::vector<std::string> due;
    for (auto& entry : m_entries) {
        if (entry.second.due <= now) {
            due.push_back(entry.first);
            const TimePoint next = entry.second.due + PeriodOf(entry.second.period);
            entry.second.due = next > now ? next : now + PeriodOf(entry.second.period);
        }
    }
    return due;
}

TimePoint OutputSchedule::NextDue() const
{
    TimePoint next = Never();
    for (const auto& entry : m_entries) {
        next = std::min(next, entry.second.due);
    }
    return next;
}

}
