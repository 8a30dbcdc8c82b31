#ifndef GNSS_RECEIVERS_NOVATEL_NOVATELOEM6_H
#define GNSS_RECEIVERS_NOVATEL_NOVATELOEM6_H

#include "receivers/novatel/OemV1Descendants.h"

// NovAtel OEM6 receivers. GLONASS capability follows from the model name; SBAS satellites go to
// channels 16 to 19; the fix configuration is one of eight fixed command sequences.
class NovatelOem6 : public NovatelCommon::OemV1Descendants {
public:
    explicit NovatelOem6(CComPort* port);

    // Whether a classified receiver type is one this class configures (ReceiverType::Oem6).
    static bool MatchesReceiverType(int type);

    bool SupportsFeature2() override;  // false
    // true when the receiver's model name is exactly one of the GLONASS-capable OEM6 models.
    bool SupportsGlonass() override;
    // SBAS off: "SBASCONTROL DISABLE". All PRNs: the receiver chooses. Otherwise the two highest
    // PRNs on channels 16 and 17, channels 18 and 19 idle. Stops at the first refusal. allowType0
    // is ignored. Always true: the run driver does not look at it.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;
    // Re-applies the baud rate, then (once the receiver answers) PDP filter, GGA quality,
    // dynamics and both serial ports, stopping at the first refusal.
    bool ApplyFamilyConfiguration() override;
    // One fixed sequence per combination of useGlonass, useSbas and usePpp, always sent whole;
    // true when every command was acknowledged. The other flags are ignored.
    bool ConfigureFix(bool useGps, bool useGlonass, bool useBeidou, bool useGalileo, bool useQzss,
                      bool useSbas, bool usePpp) override;
};

#endif
