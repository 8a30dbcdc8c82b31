#include "receivers/SbasPrnFlags.h"

SbasPrnFlags BuildSbasPrnFlags(const std::set<int>& prns)
{
    SbasPrnFlags flags{};
    for (int i = 0; i < kSbasPrnCount; ++i) {
        flags[i] = prns.empty() || prns.count(kFirstSbasPrn + i) > 0;
    }
    return flags;
}
