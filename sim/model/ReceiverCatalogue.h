#ifndef GNSS_SIM_MODEL_RECEIVERCATALOGUE_H
#define GNSS_SIM_MODEL_RECEIVERCATALOGUE_H

#include "sim/model/ReceiverIdentity.h"

#include <string>
#include <vector>

namespace GnssSim {

enum class Family { Novatel, Csi, Pmcag, Silent };

// The NovAtel generations, which differ in the commands and logs they know.
enum class Generation { None, OemV, OemStar, OemStarG, Oem6, Oem7500, Oem7700 };

struct ReceiverKind {
    std::string name;
    Family family = Family::Silent;
    Generation generation = Generation::None;
};

// The receivers the simulator plays, by the name the command line uses: "oemv", "oemstar",
// "oemstarg", "oem6", "oem7500", "oem7700", "csi", "pmcag", "silent".
bool FindReceiverKind(const std::string& name, ReceiverKind& kind);
std::vector<std::string> ReceiverNames();

// Plausible identity fields. They classify as the tool expects: OEM-Star software versions begin
// "L6X01" (an OEM-StarG has a G in its model), OEM6 software versions begin "OEM06", OEM7
// hardware versions begin "OEM7500" or "OEM7700", and an OEMV matches none of these.
ReceiverIdentity DefaultIdentity(const ReceiverKind& kind);

// The receiver's own model first, then another model its authorisation would accept.
std::vector<ValidModel> DefaultValidModels(const ReceiverKind& kind, const ReceiverIdentity& identity);

}

#endif
