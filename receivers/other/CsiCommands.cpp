#include "receivers/other/CsiCommands.h"

#include "util/Strings.h"

#include <algorithm>
#include <cmath>

namespace {

// The receiver's three rates for GGA, VTG and ZDA, and the thresholds that round to them.
constexpr float kFastHz = 5.0f;
constexpr float kOnceASecondHz = 1.0f;
constexpr float kEveryFiveSecondsHz = 0.2f;
constexpr float kFastFromHz = 3.0f;
// These two are compared in double precision, as the console's tool did: a float 0.6 or 0.1
// from the command line lies just above the double and so rounds up.
constexpr double kOnceASecondFromHz = 0.6;
constexpr double kEveryFiveSecondsFromHz = 0.1;
// GSA and GSV: once a second from half a hertz up, otherwise off.
constexpr double kClassBOnFromHz = 0.5;

// A stored rate this close to 0.2 Hz is the 5 s rate.
constexpr double kEveryFiveSecondsTolerance = 0.001;

// The receiver takes at most two SBAS PRNs.
constexpr int kMaxCsiSbasPrns = 2;

bool IsEveryFiveSeconds(float hz)
{
    return std::fabs(static_cast<double>(hz) - kEveryFiveSecondsHz) < kEveryFiveSecondsTolerance;
}

}  // namespace

float QuantiseCsiRateClassA(float hz)
{
    if (hz >= kFastFromHz) {
        return kFastHz;
    }
    if (static_cast<double>(hz) >= kOnceASecondFromHz) {
        return kOnceASecondHz;
    }
    if (static_cast<double>(hz) >= kEveryFiveSecondsFromHz) {
        return kEveryFiveSecondsHz;
    }
    return 0.0f;
}

float QuantiseCsiRateClassB(float hz)
{
    return static_cast<double>(hz) >= kClassBOnFromHz ? kOnceASecondHz : 0.0f;
}

std::string BuildCsiOutputCommand(const char* sentence, float storedHz, bool on, bool classA)
{
    if (classA && on && IsEveryFiveSeconds(storedHz)) {
        return FormatString("\r\n$JASC,%s,.2\r\n", sentence);
    }
    // Stored rates are always quantised (5, 1, 0.2 or 0), so the truncation is well defined.
    const int value = on ? static_cast<int>(storedHz) : 0;
    return FormatString("\r\n$JASC,%s,%d\r\n", sentence, value);
}

std::string BuildCsiDiffSourceCommand(int source)
{
    switch (source) {
    case 0: return "\r\n$JDIFF,NONE\r\n";
    case 1: return "\r\n$JDIFF,WAAS\r\n";
    case 2: return "\r\n$JDIFF,BEACON\r\n";
    default: return "";
    }
}

std::string BuildCsiSbasPrnCommand(const SbasPrnFlags& prnEnabled)
{
    std::string command = "$JWAASPRN";
    const bool allEqual = std::all_of(prnEnabled.begin(), prnEnabled.end(),
                                      [&](bool flag) { return flag == prnEnabled.front(); });
    if (allEqual) {
        command += ",,,AUTO";
    } else {
        int listed = 0;
        for (int i = 0; i < kSbasPrnCount && listed < kMaxCsiSbasPrns; ++i) {
            if (prnEnabled[static_cast<std::size_t>(i)]) {
                command += FormatString(",%d", kFirstSbasPrn + i);
                ++listed;
            }
        }
    }
    return command + "\r\n";
}
