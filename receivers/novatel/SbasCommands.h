#ifndef GNSS_RECEIVERS_NOVATEL_SBASCOMMANDS_H
#define GNSS_RECEIVERS_NOVATEL_SBASCOMMANDS_H

#include "receivers/SbasPrnFlags.h"

#include <string>
#include <vector>

// Which SBAS satellites to track, and the OEM-V1 commands that say so. Pure functions.
namespace NovatelCommon {

// The PRNs whose flag is set, highest first.
std::vector<int> SelectedPrnsDescending(const SbasPrnFlags& prnEnabled);

// Every one of the 39 PRNs selected: the receiver is left to choose its SBAS satellites.
bool AllPrnsSelected(const SbasPrnFlags& prnEnabled);

// The OEM-V1 SBAS sequence, each command complete with its line end. The first entry is "" when
// SBAS is not wanted (or no PRN is selected): it is still sent, which only costs its wait.
std::vector<std::string> OemV1SbasCommands(const SbasPrnFlags& prnEnabled, bool useSbas,
                                           bool allowType0);

}  // namespace NovatelCommon

#endif
