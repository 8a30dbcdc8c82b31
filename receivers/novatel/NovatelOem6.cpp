#include "receivers/novatel/NovatelOem6.h"

#include "receivers/ReceiverType.h"
#include "receivers/novatel/NovatelTimeouts.h"
#include "receivers/novatel/SbasCommands.h"
#include "util/Sleep.h"
#include "util/Strings.h"

#include <algorithm>
#include <array>

using NovatelCommon::kChannelAssignTimeoutMs;

namespace {

// The OEM6 models whose authorisation includes GLONASS.
const std::array<const char*, 7> kGlonassModels = {"D2L0PG0T0", "D2LRPGTT0", "D2LRPGTTN",
                                                   "D2S00G0T0", "D2L00G0TR", "D2LR0GTTR",
                                                   "D2L0PG0TN"};

using Sequence = std::vector<std::string>;

// Indexed by GLONASS * 4 + SBAS * 2 + PPP. Row 5 (GLONASS on, SBAS off, PPP on) deliberately
// repeats row 3 (SBAS enabled, GLONASS idled) instead of following the pattern of the others:
// receivers in service have always been set up so, and it stays.
const Sequence kFixSequences[8] = {
    {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL DISABLE", "ASSIGNALL GLONASS IDLE"},
    {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS", "SBASCONTROL DISABLE",
     "ASSIGNALL GLONASS IDLE"},
    {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
     "ASSIGNALL GLONASS IDLE"},
    {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
     "ASSIGNALL GLONASS IDLE"},
    {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL DISABLE", "ASSIGNALL GLONASS AUTO"},
    {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
     "ASSIGNALL GLONASS IDLE"},
    {"ASSIGNLBANDBEAM IDLE", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
     "ASSIGNALL GLONASS AUTO"},
    {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO",
     "ASSIGNALL GLONASS AUTO"},
};

const Sequence& FixSequence(bool useGlonass, bool useSbas, bool usePpp)
{
    return kFixSequences[(useGlonass ? 4 : 0) + (useSbas ? 2 : 0) + (usePpp ? 1 : 0)];
}

}  // namespace

NovatelOem6::NovatelOem6(CComPort* port) : OemV1Descendants(port)
{
}

bool NovatelOem6::MatchesReceiverType(int type)
{
    return type == ReceiverType::Oem6;
}

bool NovatelOem6::SupportsFeature2()
{
    return false;
}

bool NovatelOem6::SupportsGlonass()
{
    const std::string model = GetVersionRecord().strModel;
    return std::any_of(kGlonassModels.begin(), kGlonassModels.end(),
                       [&model](const char* glonassModel) { return model == glonassModel; });
}

bool NovatelOem6::ApplyFamilyConfiguration()
{
    bool alive = ReapplyBaudRateAndCheckAlive();
    WriteBareLineEnd();
    if (alive) {
        alive = Acknowledged("PDPFILTER ENABLE\r\n");
    }
    SleepMs(NovatelCommon::kFamilySettleMs);
    if (!alive) {
        return false;
    }
    return AcknowledgedInTurn({
        "PDPMODE RELATIVE AUTO\r\n",
        "GGAQUALITY 1 WAAS 2\r\n",
        "DYNAMICS LAND\r\n",
        FormatString("SERIALCONFIG COM2 %d N 8 1 N OFF\r\n", m_nBaudRate),
        FormatString("SERIALCONFIG COM1 %d N 8 1 N OFF\r\n", m_nBaudRate),
    });
}

bool NovatelOem6::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool /*allowType0*/)
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
    const std::string channel16 = FormatString("ASSIGN 16 %d\r\n", prns[0]);
    const std::string channel17 =
        prns.size() > 1 ? FormatString("ASSIGN 17 %d\r\n", prns[1]) : "ASSIGN 17 IDLE\r\n";
    const bool enabled = Acknowledged("SBASCONTROL ENABLE\r\n");
    // Channel 16 is assigned even when SBAS could not be enabled, and its answer is not looked
    // at: the OEM6 set-up has always done so.
    Acknowledged(channel16, kChannelAssignTimeoutMs);
    if (!enabled) {
        return true;
    }
    AcknowledgedInTurn({channel17, "ASSIGN 18 IDLE\r\n", "ASSIGN 19 IDLE\r\n"},
                       kChannelAssignTimeoutMs);
    return true;
}

bool NovatelOem6::ConfigureFix(bool /*useGps*/, bool useGlonass, bool /*useBeidou*/,
                               bool /*useGalileo*/, bool /*useQzss*/, bool useSbas, bool usePpp)
{
    bool allOk = true;
    for (const std::string& command : FixSequence(useGlonass, useSbas, usePpp)) {
        // Every command is sent whatever the ones before it answered.
        allOk = Acknowledged(command) && allOk;
    }
    return allOk;
}
