#ifndef GNSS_RECEIVERS_NOVATEL_NOVATELTIMEOUTS_H
#define GNSS_RECEIVERS_NOVATEL_NOVATELTIMEOUTS_H

// Waits shared by the NovAtel generations. Each operation's own waits live beside it.
namespace NovatelCommon {

// A NovAtel receiver acknowledges a command within a fraction of a second; a second allows for
// one that is busy sending logs.
constexpr int kCommandTimeoutMs = 1000;

// Before a family configuration the receiver has just been commanded to its rate and may still be
// restarting its port: it is given five seconds to acknowledge a version-log request.
constexpr int kAliveTimeoutMs = 5000;

// Channel assignments make the receiver reshuffle its tracking, which takes longer to acknowledge.
constexpr int kChannelAssignTimeoutMs = 3000;

// Lets the receiver finish acting on the filter and ionosphere settings before the port settings
// follow (OEM6, OEM7).
constexpr int kFamilySettleMs = 100;

}  // namespace NovatelCommon

#endif
