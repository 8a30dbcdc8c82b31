#ifndef GNSS_RECEIVERS_NOVATEL_FIXCOMMANDS_H
#define GNSS_RECEIVERS_NOVATEL_FIXCOMMANDS_H

#include <string>
#include <vector>

// Pieces that the fix configurations of several generations share. The commands carry no line
// end; the exchange adds it. Pure functions.
namespace NovatelCommon {

// SBAS corrections on ("SBASCONTROL ENABLE AUTO") or off ("SBASCONTROL DISABLE").
std::string SbasControlCommand(bool useSbas);

// L-band PPP corrections: the beam assigned automatically and the PPP dynamics set, or the beam
// idled and nothing more (OEM6, OEM7).
std::vector<std::string> LBandCommands(bool usePpp);

}  // namespace NovatelCommon

#endif
