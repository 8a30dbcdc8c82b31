#ifndef GNSS_RECEIVERS_NOVATEL_COEMSTAR_H
#define GNSS_RECEIVERS_NOVATEL_COEMSTAR_H

#include "receivers/novatel/OemV1Descendants.h"

// NovAtel OEM-Star receivers and their GLONASS variant OEM-StarG. The fix configuration chooses
// one of the receiver's numbered channel configurations; the serial ports are set with "COM".
class COEMStar : public NovatelCommon::OemV1Descendants {
public:
    // isStarG: the receiver is an OEM-StarG (GLONASS-capable); fixed for the object's life.
    COEMStar(CComPort* port, bool isStarG);

    // Whether a classified receiver type is one this class configures: an OEM-Star always, an
    // OEM-StarG only for the StarG variant.
    static bool MatchesReceiverType(int type, bool isStarG);

    bool SupportsGlonass() override;  // isStarG
    // Re-applies the baud rate, then (once the receiver answers) dynamics, GGA quality, PDP
    // filter, ionosphere model and both serial ports, stopping at the first refusal.
    bool ApplyFamilyConfiguration() override;
    // GPS off: nothing sent, true. Otherwise channel configuration 2 (GPS), 3 (GPS and GLONASS,
    // SBAS left as it is) or 5 (GPS, GLONASS and SBAS), with SBAS set where the row says so.
    // Only useGps, useGlonass and useSbas count.
    bool ConfigureFix(bool useGps, bool useGlonass, bool useBeidou, bool useGalileo, bool useQzss,
                      bool useSbas, bool usePpp) override;

private:
    // The SBAS commands of a fix configuration, all sent; true when all were acknowledged.
    bool SetFixSbas(bool useSbas);

    const bool isStarG;
};

#endif
