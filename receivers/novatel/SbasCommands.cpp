#include "receivers/novatel/SbasCommands.h"

#include "util/Strings.h"

#include <algorithm>

namespace NovatelCommon {

namespace {

// The OEM-V1 receivers track SBAS on these two channels only.
constexpr int kFirstSbasChannel = 12;
constexpr int kSbasChannelEnd = 14;

// The receiver is told the satellite's Doppler is 0 and to search 500 Hz either side of it.
const char* const kAssignPrnFormat = "ASSIGN %d %d 0 500\r\n";

// The explicit channel commands: the two highest selected PRNs, the highest on the first channel,
// and the second channel idled when only one PRN is selected.
void AppendExplicitAssignments(const std::vector<int>& prns, std::vector<std::string>& commands)
{
    int channel = kFirstSbasChannel;
    for (const int prn : prns) {
        commands.push_back(FormatString(kAssignPrnFormat, channel, prn));
        if (++channel == kSbasChannelEnd) {
            return;
        }
    }
    commands.push_back(FormatString("ASSIGN %d IDLE\r\n", channel));
}

}  // namespace

std::vector<int> SelectedPrnsDescending(const SbasPrnFlags& prnEnabled)
{
    std::vector<int> prns;
    for (int i = kSbasPrnCount - 1; i >= 0; --i) {
        if (prnEnabled[static_cast<size_t>(i)]) {
            prns.push_back(kFirstSbasPrn + i);
        }
    }
    return prns;
}

bool AllPrnsSelected(const SbasPrnFlags& prnEnabled)
{
    return std::all_of(prnEnabled.begin(), prnEnabled.end(), [](bool on) { return on; });
}

std::vector<std::string> OemV1SbasCommands(const SbasPrnFlags& prnEnabled, bool useSbas,
                                           bool allowType0)
{
    const std::vector<int> prns = SelectedPrnsDescending(prnEnabled);
    if (!useSbas || prns.empty()) {
        return {"", "sbascontrol disable\r\n"};
    }
    // "zerototwo" lets the receiver take RTCM type 0 test messages as type 2 corrections.
    std::vector<std::string> commands = {
        "psrdiffsource sbas\r\n",
        FormatString("sbascontrol enable auto 0 %s\r\n", allowType0 ? "zerototwo" : "none")};
    if (AllPrnsSelected(prnEnabled)) {
        commands.push_back("ASSIGN 12 AUTO\r\n");
        commands.push_back("ASSIGN 13 AUTO\r\n");
        return commands;
    }
    AppendExplicitAssignments(prns, commands);
    return commands;
}

}  // namespace NovatelCommon
