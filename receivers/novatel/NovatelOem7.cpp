#include "receivers/novatel/NovatelOem7.h"

#include "receivers/ReceiverType.h"
#include "receivers/novatel/NovatelTimeouts.h"
#include "receivers/novatel/SbasCommands.h"
#include "util/Sleep.h"
#include "util/Strings.h"

#include <string>
#include <vector>

using NovatelCommon::kChannelAssignTimeoutMs;

namespace {

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
        commands.push_back("SBASCONTROL ENABLE AUTO");
    } else {
        commands.push_back("SBASCONTROL DISABLE");
    }
    if (usePpp) {
        commands.push_back("ASSIGNLBANDBEAM AUTO");
        commands.push_back("PPPDYNAMICS AUTO");
    } else {
        commands.push_back("ASSIGNLBANDBEAM IDLE");
    }
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
    bool alive = ReapplyBaudRateAndCheckAlive();
    WriteBareLineEnd();
    if (alive) {
        alive = Acknowledged("PDPFILTER ENABLE\r\n");
    }
    SleepMs(NovatelCommon::kFamilySettleMs);
    if (alive) {
        alive = AcknowledgedInTurn({"PDPMODE RELATIVE AUTO\r\n", "GGAQUALITY 1 WAAS 2\r\n",
                                    "DYNAMICS LAND\r\n", "SETIONOTYPE AUTO\r\n"});
    }
    SleepMs(NovatelCommon::kFamilySettleMs);
    if (!alive) {
        return false;
    }
    return AcknowledgedInTurn({
        "RADARCONFIG ENABLE 36.11\r\n",
        FormatString("SERIALCONFIG COM2 %d N 8 1 N OFF\r\n", m_nBaudRate),
        FormatString("SERIALCONFIG COM1 %d N 8 1 N OFF\r\n", m_nBaudRate),
    });
}

bool NovatelOem7::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool /*allowType0*/)
{
    const std::vector<int> prns = NovatelCommon::SelectedPrnsDescending(prnEnabled);
    WriteBareLineEnd();
    if (!useSbas || prns.empty()) {
        Acknowledged("SBASCONTROL DISABLE\r\n");
        return true;
    }
    if (NovatelCommon::AllPrnsSelected(prnEnabled)) {
        AcknowledgedInTurn(
            {"PSRDIFFSOURCE SBAS\r\n", "SBASCONTROL ENABLE AUTO\r\n", "ASSIGNALL SBAS AUTO\r\n"});
        return true;
    }
    if (!Acknowledged("SBASCONTROL ENABLE\r\n")) {
        return true;
    }
    // The satellite's Doppler is given as 0 with a 500 Hz search window either side.
    AcknowledgedInTurn({FormatString("ASSIGN 20 %d 0 500\r\n", prns[0]),
                        prns.size() > 1 ? FormatString("ASSIGN 21 %d 0 500\r\n", prns[1])
                                        : std::string("ASSIGN 21 IDLE\r\n"),
                        "ASSIGN 22 IDLE\r\n", "ASSIGN 23 IDLE\r\n"},
                       kChannelAssignTimeoutMs);
    return true;
}

bool NovatelOem7::ConfigureFix(bool /*useGps*/, bool useGlonass, bool useBeidou, bool useGalileo,
                               bool useQzss, bool useSbas, bool usePpp)
{
    bool allOk = true;
    for (const std::string& command :
         FixCommands(useGlonass, useBeidou, useGalileo, useQzss, useSbas, usePpp)) {
        // Every command is sent whatever the ones before it answered.
        allOk = Acknowledged(command) && allOk;
    }
    return allOk;
}
