#include "receivers/novatel/LogCommand.h"

#include "receivers/novatel/NovatelExchange.h"
#include "serial/CComPort.h"
#include "util/Sleep.h"
#include "util/Strings.h"

namespace NovatelCommon {

namespace {

// The receiver acknowledges a log command almost at once; a longer wait would only slow down a
// receiver that does not acknowledge at all.
constexpr int kLogOkTimeoutMs = 100;
// A receiver that missed the acknowledgement is given this long to settle before the next command.
constexpr int kMissedOkPauseMs = 200;

}  // namespace

int SendLogCommand(CComPort& port, const std::string& logName, const std::string& periodText,
                   bool on)
{
    const std::string tail = on ? " ONTIME " + periodText : std::string();
    const std::string command =
        FormatString("%sLOG %s%s\r\n", on ? "" : "UN", logName.c_str(), tail.c_str());
    int written = 0;
    const int result = port.WriteString(command.c_str(), &written);
    if (!WaitForOk(port, kLogOkTimeoutMs)) {
        SleepMs(kMissedOkPauseMs);
    }
    port.Drain();
    return result;
}

std::string FormatLogPeriod(float rateHz, bool twoDecimals)
{
    const double period = 1.0 / static_cast<double>(rateHz);
    return twoDecimals ? FormatString("%.2f", period) : FormatString("%.1f", period);
}

}  // namespace NovatelCommon
