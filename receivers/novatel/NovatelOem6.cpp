#include "receivers/novatel/NovatelOem6.h"

#include "receivers/ReceiverType.h"
#include "receivers/novatel/FixCommands.h"
#include "receivers/novatel/NovatelTimeouts.h"
#include "receivers/novatel/SbasCommands.h"

#include <algorithm>
#include <array>

using NovatelCommon::kChannelAssignTimeoutMs;

namespace {

// The OEM6 models whose authorisation includes GLONASS.
const std::array<const char*, 7> kGlonassModels = {"D2L0PG0T0", "D2LRPGTT0", "D2LRPGTTN",
                                                   "D2S00G0T0", "D2L00G0TR", "D2LR0GTTR",
                                                   "D2L0PG0TN"};

// SBAS satellites go to channels 16 and 17; 18 and 19 are idled.
constexpr int kFirstSbasChannel = 16;

// The L-band commands, the differential source, SBAS on or off, and GLONASS channels automatic or
// idle.
std::vector<std::string> FixSequence(bool useGlonass, bool useSbas, bool usePpp)
{
    // GLONASS on, SBAS off and PPP on deliberately sends what GLONASS off, SBAS on and PPP on
    // sends (SBAS enabled, GLONASS idled) instead of following the pattern of the other seven
    // combinations: the receivers in service are set up so, and a unit configured again must
    // match them.
    if (useGlonass && !useSbas && usePpp) {
        useGlonass = false;
        useSbas = true;
    }
    std::vector<std::string> commands = NovatelCommon::LBandCommands(usePpp);
    commands.push_back("PSRDIFFSOURCE SBAS");
    commands.push_back(NovatelCommon::SbasControlCommand(useSbas));
    commands.push_back(useGlonass ? "ASSIGNALL GLONASS AUTO" : "ASSIGNALL GLONASS IDLE");
    return commands;
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
    if (!BeginLaterFamilyConfiguration()) {
        return false;
    }
    return AcknowledgedInTurn(
               {"PDPMODE RELATIVE AUTO\r\n", "GGAQUALITY 1 WAAS 2\r\n", "DYNAMICS LAND\r\n"}) &&
           SetLaterSerialPorts();
}

bool NovatelOem6::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool /*allowType0*/)
{
    const std::vector<int> prns = BeginLaterSbas(prnEnabled, useSbas);
    if (prns.empty()) {
        return true;
    }
    const std::vector<std::string> channels =
        NovatelCommon::SbasChannelPair(prns, kFirstSbasChannel, false);
    const bool enabled = Acknowledged("SBASCONTROL ENABLE\r\n");
    // Channel 16 is assigned even when SBAS could not be enabled, and its answer is not looked
    // at: the OEM6 receivers in service are set up so, and a unit configured again must match
    // them.
    Acknowledged(channels[0], kChannelAssignTimeoutMs);
    if (!enabled) {
        return true;
    }
    AcknowledgedInTurn({channels[1], NovatelCommon::IdleChannel(kFirstSbasChannel + 2),
                        NovatelCommon::IdleChannel(kFirstSbasChannel + 3)},
                       kChannelAssignTimeoutMs);
    return true;
}

bool NovatelOem6::ConfigureFix(bool /*useGps*/, bool useGlonass, bool /*useBeidou*/,
                               bool /*useGalileo*/, bool /*useQzss*/, bool useSbas, bool usePpp)
{
    return AcknowledgedEach(FixSequence(useGlonass, useSbas, usePpp));
}
