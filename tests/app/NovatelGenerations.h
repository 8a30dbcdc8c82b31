#ifndef GNSS_TESTS_APP_NOVATELGENERATIONS_H
#define GNSS_TESTS_APP_NOVATELGENERATIONS_H

#include <ostream>
#include <vector>

#include "sim/ReceiverIdentity.h"
#include "sim/SimOptions.h"

// One NovAtel generation as the simulator plays it, with the identity it is given in these tests
// and what the tool should make of that identity.
struct NovatelGeneration {
    const char* receiver;  // the simulator's name for it
    int type;
    const char* typeName;
    GnssSim::Component main;
    const char* packageVersion;
    const char* firmware;    // characters 4 to 9 of the quoted software version
    const char* otherModel;  // a second model the receiver's authorisation accepts

    GnssSim::ReceiverIdentity Identity() const;
    // The receiver's own model first, then otherModel with an expiry date.
    std::vector<GnssSim::ValidModel> ValidModels() const;
    // This receiver with this identity and models list, with short restarts.
    GnssSim::SimOptions Options() const;
};
void PrintTo(const NovatelGeneration& generation, std::ostream* os);

// OEM-Star, OEM-StarG, OEM6, OEM 7500 and OEM 7700: the generations that detection recognises.
const std::vector<NovatelGeneration>& RecognisedNovatelGenerations();
const NovatelGeneration& RecognisedNovatelGeneration(const char* receiver);

#endif
