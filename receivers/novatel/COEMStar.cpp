#include "receivers/novatel/COEMStar.h"

#include "receivers/ReceiverType.h"
#include "receivers/novatel/FixCommands.h"
#include "util/Strings.h"

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
    return AcknowledgedInTurnOnceAlive({
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
    return AcknowledgedEach({"PSRDIFFSOURCE SBAS", NovatelCommon::SbasControlCommand(useSbas)});
}

bool COEMStar::ConfigureFix(bool useGps, bool useGlonass, bool /*useBeidou*/, bool /*useGalileo*/,
                            bool /*useQzss*/, bool useSbas, bool /*usePpp*/)
{
    // A fix without GPS is not something this receiver offers; it is reported as done.
    if (!useGps) {
        return true;
    }
    if (!useGlonass) {
        const bool switched = ApplyChannelConfig(kGpsOnlyChannelConfig) == kChannelConfigDone;
        return SetFixSbas(useSbas) && switched;
    }
    if (!useSbas) {
        // SBAS stays as it was: configuration 3 has no SBAS channels to set.
        return ApplyChannelConfig(kGlonassChannelConfig) == kChannelConfigDone;
    }
    const bool switched =
        ApplyChannelConfig(kGlonassAlternativeChannelConfig) == kChannelConfigDone;
    return SetFixSbas(true) && switched;
}
