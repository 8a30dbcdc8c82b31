#ifndef GNSS_RECEIVERS_NOVATEL_NOVATELOEM7_H
#define GNSS_RECEIVERS_NOVATEL_NOVATELOEM7_H

#include "receivers/novatel/OemV1Descendants.h"

// NovAtel OEM7 receivers, the OEM 7500 and the OEM 7700 alike. Every model tracks GLONASS; SBAS
// satellites go to channels 20 to 23; the fix configuration locks each satellite system in or out
// by itself.
class NovatelOem7 : public NovatelCommon::OemV1Descendants {
public:
    explicit NovatelOem7(CComPort* port);

    // Whether a classified receiver type is one this class configures (OEM 7500 or OEM 7700).
    static bool MatchesReceiverType(int type);

    bool SupportsFeature2() override;  // false
    bool SupportsGlonass() override;   // true
    // SBAS off: "SBASCONTROL DISABLE". All PRNs: the receiver chooses. Otherwise SBAS is enabled,
    // then the two highest PRNs go to channels 20 and 21 and channels 22 and 23 are idled,
    // stopping at the first refusal. allowType0 is ignored. Always true.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;
    // Re-applies the baud rate, then (once the receiver answers) PDP filter, GGA quality,
    // dynamics, ionosphere model, radar band and both serial ports, stopping at the first refusal.
    bool ApplyFamilyConfiguration() override;
    // GLONASS, BeiDou, Galileo and QZSS locked in or out, SBAS and L-band PPP on or off: six to
    // eight commands, always all sent; true when every one was acknowledged. GPS is never locked
    // out, so useGps is ignored.
    bool ConfigureFix(bool useGps, bool useGlonass, bool useBeidou, bool useGalileo, bool useQzss,
                      bool useSbas, bool usePpp) override;
};

#endif
