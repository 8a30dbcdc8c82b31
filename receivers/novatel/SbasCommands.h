#ifndef GNSS_RECEIVERS_NOVATEL_SBASCOMMANDS_H
#define GNSS_RECEIVERS_NOVATEL_SBASCOMMANDS_H

#include "receivers/SbasPrnFlags.h"

#include <string>
#include <vector>

// Which SBAS satellites to track, and the commands that say so. Pure functions.
namespace NovatelCommon {

// The PRNs whose flag is set, highest first.
std::vector<int> SelectedPrnsDescending(const SbasPrnFlags& prnEnabled);

// Every one of the 39 PRNs selected: the receiver is left to choose its SBAS satellites.
bool AllPrnsSelected(const SbasPrnFlags& prnEnabled);

// The two commands for a generation's first two SBAS channels, each with its line end: the
// highest of prns (not empty) on firstChannel, the next on the channel after it, or that channel
// idled when prns holds one PRN. withDopplerWindow: "ASSIGN <channel> <prn> 0 500", else
// "ASSIGN <channel> <prn>".
std::vector<std::string> SbasChannelPair(const std::vector<int>& prns, int firstChannel,
                                         bool withDopplerWindow);

// "ASSIGN <channel> IDLE" with its line end.
std::string IdleChannel(int channel);

// The OEM-V1 SBAS sequence, each command complete with its line end. The first entry is "" when
// SBAS is not wanted (or no PRN is selected): it is still sent, which only costs its wait.
std::vector<std::string> OemV1SbasCommands(const SbasPrnFlags& prnEnabled, bool useSbas,
                                           bool allowType0);

}  // namespace NovatelCommon

#endif
