#ifndef GNSS_RECEIVERS_RECEIVERDETECTION_H
#define GNSS_RECEIVERS_RECEIVERDETECTION_H

#include "receivers/CGPSConfigurer.h"
#include "receivers/ReceiverProbe.h"

#include <memory>

// Which receiver family is on the probe's port, and the configurer for it.
//
// The families are asked in a fixed order: the NovAtel version log (which may leave the port at
// another rate), then the CSI "$JAPP" probe, then the "$PMCAG" probe. A silent line costs all
// three: about 7 to 9.5 s, 3 s and 0.3 s.

// The cached type when there is one and force is false (the port is not touched); otherwise the
// type found by asking every family in turn, which is cached: OemStar ... Oem7700, CSI, Novatel
// (a "$PMCAG" receiver) or Unknown. No probe finds V1 or Other: an OEMV receiver is Unknown.
int DetectReceiverType(ReceiverProbe& probe, bool force);

// A new configurer for the cached type, detecting first when there is none yet. The caller owns
// it. Unknown, Other and Uninitialized get the generic configurer, which sends nothing; a type
// outside the catalogue gets none (null).
std::unique_ptr<CGPSConfigurer> CreateConfigurer(ReceiverProbe& probe);

// Detects afresh and requires one of the NovAtel generations OemStar ... Oem7700 (not V1). On
// success probe.cachedType is that type and probe.novatelConfigurer holds its configurer, owned by
// the probe. Otherwise throws Error with "Did not detect a compatible receiver".
void RequireNovatelReceiver(ReceiverProbe& probe);

#endif
