#include "receivers/novatel/CAutonomousV1.h"

#include "receivers/ReceiverType.h"

CAutonomousV1::CAutonomousV1(CComPort* port) : OemV1Descendants(port)
{
}

bool CAutonomousV1::MatchesReceiverType(int type)
{
    return type == ReceiverType::V1;
}

bool CAutonomousV1::SupportsFeature2()
{
    return false;
}

bool CAutonomousV1::SupportsGlonass()
{
    return false;
}

bool CAutonomousV1::ApplyFamilyConfiguration()
{
    // Fix quality 1 with WAAS corrections is reported as 2, which the console shows as DGPS.
    return AcknowledgedInTurnOnceAlive({"GGAQUALITY 1 WAAS 2"});
}

bool CAutonomousV1::ConfigureFix(bool /*useGps*/, bool /*useGlonass*/, bool /*useBeidou*/,
                                 bool /*useGalileo*/, bool /*useQzss*/, bool /*useSbas*/,
                                 bool /*usePpp*/)
{
    return false;
}
