#ifndef GNSS_SIM_MODEL_OUTPUTSCHEDULE_H
#define GNSS_SIM_MODEL_OUTPUTSCHEDULE_H

#include "sim/line/SimClock.h"

#include <map>
#include <string>
#include <vector>

namespace GnssSim {

// When each log that is switched on is next due. A log switched on (or given a new period) is
// first due one period later, and then every period after that.
class OutputSchedule {
public:
    // Follows the logs switched on (name to period in seconds): new ones are scheduled, changed
    // periods rescheduled, and logs no longer listed dropped.
    void Follow(const std::map<std::string, double>& logs, TimePoint now);

    // The logs due at now, each rescheduled one period on. A log that fell more than a period behind
    // (the simulator was not scheduled in time) skips the outputs it missed rather than bunch them.
    std::vector<std::string> TakeDue(TimePoint now);

    TimePoint NextDue() const;

    void Clear() { m_entries.clear(); }

private:
    struct Entry {
        double period;
        TimePoint due;
    };

    std::map<std::string, Entry> m_entries;
};

}

#endif
