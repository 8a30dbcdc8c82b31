#include "receivers/novatel/NovatelOem7.h"

#include "receivers/ReceiverType.h"
#include "receivers/novatel/FixCommands.h"
#include "receivers/novatel/NovatelTimeouts.h"
#include "receivers/novatel/SbasCommands.h"
#include "util/Sleep.h"
#include "util/Strings.h"

#include <string>
#include <vector>

namespace {

// SBAS satellites go to channels 20 and 21; 22 and 23 are idled.
constexpr int kFirstSbasChannel = 20;

std::string SystemLockout(bool use, const char* system)
{
    return FormatString("%sLOCKOUTSYSTEM %s", use ? "UN" : "", system);
}

std::vector<std::string> FixCommands(bool useGlonass, bool useBeidou, bool useGalileo,
                                     bool useQzss, bool useSbas, bool usePpp)
{
    std::vector<std::string> commands = {
        SystemLockout(useGlonass, "GLONASS"),
        SystemLockout(useBeidou, "BEIDOU"),
        SystemLockout(useGalileo, "GALILEO"),
        SystemLockout(useQzss, "QZSS"),
    };
    if (useSbas) {
        commands.push_back("PSRDIFFSOURCE SBAS");
    }
    commands.push_back(NovatelCommon::SbasControlCommand(useSbas));
    const std::vector<std::string> lBand = NovatelCommon::LBandCommands(usePpp);
    commands.insert(commands.end(), lBand.begin(), lBand.end());
    return commands;
}

}  // namespace

NovatelOem7::NovatelOem7(CComPort* port) : OemV1Descendants(port)
{
}

bool NovatelOem7::MatchesReceiverType(int type)
{
    return type == ReceiverType::Oem7500 || type == ReceiverType::Oem7700;
}

bool NovatelOem7::SupportsFeature2()
{
    return false;
}

bool NovatelOem7::SupportsGlonass()
{
    return true;
}

bool NovatelOem7::ApplyFamilyConfiguration()
{
    bool alive = BeginLaterFamilyConfiguration();
    if (alive) {
        alive = AcknowledgedInTurn({"PDPMODE RELATIVE AUTO\r\n", "GGAQUALITY 1 WAAS 2\r\n",
                                    "DYNAMICS LAND\r\n", "SETIONOTYPE AUTO\r\n"});
    }
    SleepMs(NovatelCommon::kFamilySettleMs);
    return alive && Acknowledged("RADARCONFIG ENABLE 36.11\r\n") && SetLaterSerialPorts();
}

bool NovatelOem7::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool /*allowType0*/)
{
    const std::vector<int> prns = BeginLaterSbas(prnEnabled, useSbas);
    if (prns.empty() || !Acknowledged("SBASCONTROL ENABLE\r\n")) {
        return true;
    }
    std::vector<std::string> channels = NovatelCommon::SbasChannelPair(prns, kFirstSbasChannel, true);
    channels.push_back(NovatelCommon::IdleChannel(kFirstSbasChannel + 2));
    channels.push_back(NovatelCommon::IdleChannel(kFirstSbasChannel + 3));
    AcknowledgedInTurn(channels, NovatelCommon::kChannelAssignTimeoutMs);
    return true;
}

bool NovatelOem7::ConfigureFix(bool /*useGps*/, bool useGlonass, bool useBeidou, bool useGalileo,
                               bool useQzss, bool useSbas, bool usePpp)
{
    return AcknowledgedEach(
        FixCommands(useGlonass, useBeidou, useGalileo, useQzss, useSbas, usePpp));
}
