#include "receivers/novatel/COEMStar.h"

#include "receivers/ReceiverType.h"
#include "util/Strings.h"

namespace {

// The receiver's own channel configurations: GPS only, GPS with GLONASS, and GPS with GLONASS
// and SBAS channels.
constexpr int kGpsChannelConfig = 2;
constexpr int kGpsGlonassChannelConfig = 3;
constexpr int kGpsGlonassSbasChannelConfig = 5;

}  // namespace

COEMStar::COEMStar(CComPort* port, bool isStarG) : OemV1Descendants(port), isStarG(isStarG)
{
}

bool COEMStar::MatchesReceiverType(int type, bool isStarG)
{
    return (isStarG && type == ReceiverType::OemStarG) || type == ReceiverType::OemStar;
}

bool COEMStar::SupportsGlonass()
{
    return isStarG;
}

bool COEMStar::ApplyFamilyConfiguration()
{
    if (!ReapplyBaudRateAndCheckAlive()) {
        return false;
    }
    return AcknowledgedInTurn({
        "DYNAMICS LAND",
        "GGAQUALITY 1 WAAS 2",
        "PDPFILTER ENABLE",
        "PDPMODE RELATIVE AUTO",
        "SETIONOTYPE AUTO",
        FormatString("COM COM2,%d,N,8,1,N,OFF,ON", m_nBaudRate),
        FormatString("COM COM1,%d,N,8,1,N,OFF,ON", m_nBaudRate),
    });
}

bool COEMStar::SetFixSbas(bool useSbas)
{
    const bool source = Acknowledged("PSRDIFFSOURCE SBAS");
    const bool control = Acknowledged(useSbas ? "SBASCONTROL ENABLE AUTO" : "SBASCONTROL DISABLE");
    return source && control;
}

bool COEMStar::ConfigureFix(bool useGps, bool useGlonass, bool /*useBeidou*/, bool /*useGalileo*/,
                            bool /*useQzss*/, bool useSbas, bool /*usePpp*/)
{
    // A fix without GPS is not something this receiver offers; it is reported as done.
    if (!useGps) {
        return true;
    }
    if (!useGlonass) {
        const bool switched = ApplyChannelConfig(kGpsChannelConfig) == 1;
        return SetFixSbas(useSbas) && switched;
    }
    if (!useSbas) {
        // SBAS stays as it was: configuration 3 has no SBAS channels to set.
        return ApplyChannelConfig(kGpsGlonassChannelConfig) == 1;
    }
    const bool switched = ApplyChannelConfig(kGpsGlonassSbasChannelConfig) == 1;
    return SetFixSbas(true) && switched;
}
