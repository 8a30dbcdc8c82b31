#ifndef GNSS_RECEIVERS_SBASPRNFLAGS_H
#define GNSS_RECEIVERS_SBASPRNFLAGS_H

#include <array>
#include <set>

// SBAS satellites are PRNs 120 to 158; entry i of the flags stands for PRN 120 + i.
constexpr int kFirstSbasPrn = 120;
constexpr int kLastSbasPrn = 158;
constexpr int kSbasPrnCount = kLastSbasPrn - kFirstSbasPrn + 1;

using SbasPrnFlags = std::array<bool, kSbasPrnCount>;

// Every flag set when prns is empty ("all"), otherwise exactly the PRNs in prns.
SbasPrnFlags BuildSbasPrnFlags(const std::set<int>& prns);

#endif
