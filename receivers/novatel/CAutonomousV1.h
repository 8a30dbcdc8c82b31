#ifndef GNSS_RECEIVERS_NOVATEL_CAUTONOMOUSV1_H
#define GNSS_RECEIVERS_NOVATEL_CAUTONOMOUSV1_H

#include "receivers/novatel/OemV1Descendants.h"

// NovAtel OEMV receivers: everything but the GGA quality mapping is the common layer's. They have
// no GLONASS and no fix configuration.
class CAutonomousV1 : public NovatelCommon::OemV1Descendants {
public:
    explicit CAutonomousV1(CComPort* port);

    // Whether a classified receiver type is one this class configures (ReceiverType::V1).
    static bool MatchesReceiverType(int type);

    bool SupportsFeature2() override;  // false
    bool SupportsGlonass() override;   // false
    // Re-applies the baud rate and sets the GGA quality mapping once the receiver answers.
    bool ApplyFamilyConfiguration() override;
    // Not available on this receiver: false, nothing sent.
    bool ConfigureFix(bool useGps, bool useGlonass, bool useBeidou, bool useGalileo, bool useQzss,
                      bool useSbas, bool usePpp) override;
};

#endif
