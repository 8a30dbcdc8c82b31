#include "receivers/novatel/FixCommands.h"

namespace NovatelCommon {

std::string SbasControlCommand(bool useSbas)
{
    return useSbas ? "SBASCONTROL ENABLE AUTO" : "SBASCONTROL DISABLE";
}

std::vector<std::string> LBandCommands(bool usePpp)
{
    if (usePpp) {
        return {"ASSIGNLBANDBEAM AUTO", "PPPDYNAMICS AUTO"};
    }
    return {"ASSIGNLBANDBEAM IDLE"};
}

}  // namespace NovatelCommon
