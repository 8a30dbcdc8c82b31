#include "receivers/novatel/SbasCommands.h"

#include "util/Strings.h"

#include <algorithm>

namespace NovatelCommon {

namespace {

// The OEM-V1 receivers track SBAS on channels 12 and 13 only.
constexpr int kOemV1FirstSbasChannel = 12;

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

std::string IdleChannel(int channel)
{
    return FormatString("ASSIGN %d IDLE\r\n", channel);
}

std::vector<std::string> SbasChannelPair(const std::vector<int>& prns, int firstChannel,
                                         bool withDopplerWindow)
{
    // The window tells the receiver the satellite's Doppler is 0 and to search 500 Hz either side.
    const char* const format = withDopplerWindow ? "ASSIGN %d %d 0 500\r\n" : "ASSIGN %d %d\r\n";
    const int secondChannel = firstChannel + 1;
    return {FormatString(format, firstChannel, prns[0]),
            prns.size() > 1 ? FormatString(format, secondChannel, prns[1])
                            : IdleChannel(secondChannel)};
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
    const std::vector<std::string> channels =
        AllPrnsSelected(prnEnabled)
            ? std::vector<std::string>{"ASSIGN 12 AUTO\r\n", "ASSIGN 13 AUTO\r\n"}
            : SbasChannelPair(prns, kOemV1FirstSbasChannel, true);
    commands.insert(commands.end(), channels.begin(), channels.end());
    return commands;
}

}  // namespace NovatelCommon
