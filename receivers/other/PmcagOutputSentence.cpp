#include "receivers/other/PmcagOutputSentence.h"

#include "receivers/other/NmeaChecksum.h"
#include "util/Strings.h"

#include <signal.h>

#include <csignal>
#include <cstdlib>

namespace {

// Any rate faster than 1 Hz is sent as this period: the receiver's "as fast as you can".
constexpr int kFastestPeriod = 999;

// A rate below 1 Hz ends the process with SIGFPE, as a trapped integer division of 1 by its whole
// hertz would: start-up scripts know that end (status 136) for this family. An integer division by
// zero is undefined in C++ and some ARM cores return 0 instead of trapping, so the signal is raised
// here on purpose, with the default action: whatever handler or mask a caller has set up cannot
// turn it into something else.
[[noreturn]] void EndProcessAsDivisionByZero()
{
    struct sigaction defaultAction {};
    defaultAction.sa_handler = SIG_DFL;
    sigaction(SIGFPE, &defaultAction, nullptr);
    sigset_t fpe;
    sigemptyset(&fpe);
    sigaddset(&fpe, SIGFPE);
    pthread_sigmask(SIG_UNBLOCK, &fpe, nullptr);
    (void)std::raise(SIGFPE);
    // cppcheck-suppress unreachableCode ; raise() is not [[noreturn]], so the compiler needs this
    std::abort();  // not reached: SIGFPE's default action ends the process
}

// 1 / (the rate truncated to whole hertz), for rates below 2 Hz. Only rates above -2 are
// converted, so the conversion is always defined; from -2 down the quotient is 0.
int PeriodOfSlowRate(float hz)
{
    if (!(hz > -2.0f)) {
        return 0;  // the whole hertz is -2 or less, and 1 / n truncates to 0
    }
    const int wholeHertz = static_cast<int>(hz);
    if (wholeHertz == 0) {
        EndProcessAsDivisionByZero();
    }
    return 1 / wholeHertz;
}

std::string MessageField(const char* name, const PmcagMessageOutput& message,
                         const std::string& periodText)
{
    return FormatString(",%s,%s", name, message.on ? periodText.c_str() : "000");
}

}  // namespace

std::string PmcagPeriodText(float hz)
{
    if (hz != hz) {
        EndProcessAsDivisionByZero();  // a rate that is not a number truncates to 0 on the console
    }
    const int period = (hz >= 2.0f) ? kFastestPeriod : PeriodOfSlowRate(hz);
    return FormatString("%03d", period);
}

std::string BuildPmcagOutputSentence(const PmcagOutputSettings& settings)
{
    const std::string vtg = PmcagPeriodText(settings.vtg.hz);
    const std::string gga = PmcagPeriodText(settings.gga.hz);
    const std::string gsa = PmcagPeriodText(settings.gsa.hz);
    const std::string gsv = PmcagPeriodText(settings.gsv.hz);
    const std::string zda = PmcagPeriodText(settings.zda.hz);
    const std::string sentence = "$PMCAG,005,0" + MessageField("GGA", settings.gga, gga) +
                                 MessageField("GSA", settings.gsa, gsa) +
                                 MessageField("GSV", settings.gsv, gsv) +
                                 MessageField("VTG", settings.vtg, vtg) +
                                 MessageField("ZDA", settings.zda, zda);
    return FinishNmeaSentence(sentence);
}
