#include "receivers/other/CsiCommands.h"

#include "util/Strings.h"

#include <algorithm>
#include <cmath>

namespace {

// A rate the receiver can output and the lowest request that rounds to it. Requests are compared
// in double precision, so a float 0.6 or 0.1 from the command line, which lies just above the
// double, rounds up: the receivers in service were given their rates so.
struct RateStep {
    double fromHz;
    float hz;
};

// GGA, VTG and ZDA: 5 Hz, once a second or every 5 s.
constexpr float kEveryFiveSecondsHz = 0.2f;
constexpr RateStep kClassASteps[] = {{3.0, 5.0f}, {0.6, 1.0f}, {0.1, kEveryFiveSecondsHz}};
// GSA and GSV: once a second from half a hertz up.
constexpr RateStep kClassBSteps[] = {{0.5, 1.0f}};

// A stored rate this close to 0.2 Hz is the 5 s rate.
constexpr double kEveryFiveSecondsTolerance = 0.001;

// The receiver takes at most two SBAS PRNs.
constexpr int kMaxCsiSbasPrns = 2;

// The first step that hz reaches, from the fastest down; 0 (off) below them all.
template <std::size_t StepCount>
float RoundToStep(float hz, const RateStep (&steps)[StepCount])
{
    for (const RateStep& step : steps) {
        if (static_cast<double>(hz) >= step.fromHz) {
            return step.hz;
        }
    }
    return 0.0f;
}

bool IsEveryFiveSeconds(float hz)
{
    return std::fabs(static_cast<double>(hz) - kEveryFiveSecondsHz) < kEveryFiveSecondsTolerance;
}

}  // namespace

float QuantiseCsiRateClassA(float hz)
{
    return RoundToStep(hz, kClassASteps);
}

float QuantiseCsiRateClassB(float hz)
{
    return RoundToStep(hz, kClassBSteps);
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
