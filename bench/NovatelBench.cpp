// Runs each NovAtel operation once against a simulated receiver that answers at once, and prints
// how long it took (wall and the tool's own CPU time) beside the sum of the waits the operation
// is meant to make: fixed pauses, and time-outs that must run out (an empty command's wait for
// "<OK"). What is left over is the cost of the tool itself and of the line. The aim: no more than
// 30 ms and 2 % over the waits, and, where there are waits, CPU under 1 % of the wall time.
//
//   novatel_bench            all operations
//   novatel_bench FILTER     only operations whose name contains FILTER

#include "receivers/SbasPrnFlags.h"
#include "receivers/novatel/NovatelExchange.h"
#include "receivers/novatel/VersionLog.h"
#include "tests/support/SimulatedNovatel.h"

#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// The aim: no more than this over the intended waits, plus this share of them.
constexpr double kAllowedOverrunMs = 30.0;
constexpr double kAllowedOverrunShare = 0.02;
// The tool should be asleep nearly all the time it waits.
constexpr double kAllowedCpuShare = 0.01;

double NowMs(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6;
}

// A simulated receiver, the tool's port on its line and the generation's configurer.
struct Bench {
    explicit Bench(const GnssSim::SimOptions& options) : receiver(options) {}

    SimulatedNovatel receiver;
    PathComPort* port = &receiver.Port();
    NovatelCommon::OemV1Descendants* configurer = &receiver.Configurer();
};

struct Operation {
    std::string name;
    std::string receiver;
    long intendedWaitsMs;
    std::function<void(Bench&)> run;
    std::function<void(GnssSim::SimOptions&)> adjust = [](GnssSim::SimOptions&) {};
};

SbasPrnFlags Prns(const std::set<int>& prns)
{
    return BuildSbasPrnFlags(prns);
}

// Pauses of the operations, as they are meant to be.
constexpr long kSweepMs = 5L * 10;
constexpr long kProbeSettleMs = 100;
constexpr long kFamilyPauseMs = 100;
constexpr long kRestartWaitsMs = 1000 + 5000;
constexpr long kEmptySbasCommandMs = 500;
constexpr long kResetBreathMs = 10;

std::vector<Operation> Operations()
{
    std::vector<Operation> ops = {
        {"ExchangeCommand", "oem6", 0,
         [](Bench& b) { NovatelCommon::ExchangeCommand(*b.port, "echo off", "<OK", 1000); }},
        {"SetBaudRate", "oem7700", kSweepMs, [](Bench& b) { b.configurer->SetBaudRate(115200); }},
        {"FindReceiverBaud", "oem6", 2 * kSweepMs, [](Bench& b) { b.configurer->FindReceiverBaud(); }},
        {"IdentifyNovatelReceiver", "oem7500", kProbeSettleMs,
         [](Bench& b) { NovatelCommon::IdentifyNovatelReceiver(*b.port); }},
        {"ReadVersionLog", "oem6", 0, [](Bench& b) { b.configurer->ReadVersionLog(); }},
        {"RequestVersionLog", "oem6", 0, [](Bench& b) { b.configurer->RequestVersionLog(5000); }},
        {"GetFirmwareVersion", "oemstar", 0, [](Bench& b) { b.configurer->GetFirmwareVersion(); }},
        {"GetExtendedVersion", "oem7700", 0, [](Bench& b) { b.configurer->GetExtendedVersion(); }},
        {"GetModel", "oem6", 0, [](Bench& b) { b.configurer->GetModel(); }},
        {"GetVersionRecord", "oemv", 0, [](Bench& b) { b.configurer->GetVersionRecord(); }},
        {"OutputGGA", "oem6", 0, [](Bench& b) { b.configurer->OutputGGA(true); }},
        {"OutputGSA", "oem7700", 0, [](Bench& b) { b.configurer->OutputGSA(true); }},
        {"OutputGSV", "oemstar", 0, [](Bench& b) { b.configurer->OutputGSV(true); }},
        {"OutputVTG", "oemv", 0, [](Bench& b) { b.configurer->OutputVTG(true); }},
        {"OutputZDA", "oem7500", 0, [](Bench& b) { b.configurer->OutputZDA(true); }},
        {"SetGGAFrequency (on)", "oem6", 0,
         [](Bench& b) {
             b.configurer->OutputGGA(true);
             b.configurer->SetGGAFrequency(20.0f);
         }},
        {"ConfigureSbas disabled", "oemstar", kEmptySbasCommandMs,
         [](Bench& b) { b.configurer->ConfigureSbas(Prns({}), false, false); }},
        {"ConfigureSbas two PRNs", "oemstarg", 0,
         [](Bench& b) { b.configurer->ConfigureSbas(Prns({131, 138}), true, true); }},
        {"ConfigureSbas two PRNs", "oem6", 0,
         [](Bench& b) { b.configurer->ConfigureSbas(Prns({131, 138}), true, false); }},
        {"ConfigureSbas one PRN", "oem7700", 0,
         [](Bench& b) { b.configurer->ConfigureSbas(Prns({133}), true, false); }},
        {"GetCurrentChannelConfig", "oemstarg", 0,
         [](Bench& b) { b.configurer->GetCurrentChannelConfig(); }},
        {"SelectChannelConfig in use", "oem6", 0,
         [](Bench& b) { b.configurer->SelectChannelConfig(false, false); },
         [](GnssSim::SimOptions& o) { o.channelConfig = 2; }},
        {"ApplyChannelConfig switch", "oemstarg", kRestartWaitsMs + kSweepMs,
         [](Bench& b) { b.configurer->ApplyChannelConfig(5); }},
        {"ApplyChannelConfig switch", "oem7500", kRestartWaitsMs + kSweepMs + 2 * kFamilyPauseMs,
         [](Bench& b) { b.configurer->ApplyChannelConfig(3); }},
        {"ListValidModels", "oem6", 0, [](Bench& b) { b.configurer->ListValidModels(); }},
        // The receiver is back at once, at its start-up rate: one search round, then the switch.
        {"ResetReceiver", "oem6", kResetBreathMs + 3 * kSweepMs,
         [](Bench& b) { b.configurer->ResetReceiver(-1); },
         [](GnssSim::SimOptions& o) { o.restartMs = 0; }},
        {"ResetPdpFilter", "oem7700", 0, [](Bench& b) { b.configurer->ResetPdpFilter(); }},
        {"SaveConfiguration", "oemstar", 0, [](Bench& b) { b.configurer->SaveConfiguration(); }},
        {"ApplyFamilyConfiguration", "oemv", kSweepMs,
         [](Bench& b) { b.configurer->ApplyFamilyConfiguration(); }},
        {"ApplyFamilyConfiguration", "oemstar", kSweepMs,
         [](Bench& b) { b.configurer->ApplyFamilyConfiguration(); }},
        {"ApplyFamilyConfiguration", "oem6", kSweepMs + kFamilyPauseMs,
         [](Bench& b) { b.configurer->ApplyFamilyConfiguration(); }},
        {"ApplyFamilyConfiguration", "oem7700", kSweepMs + 2 * kFamilyPauseMs,
         [](Bench& b) { b.configurer->ApplyFamilyConfiguration(); }},
        {"ConfigureFix", "oemstarg", 0,
         [](Bench& b) { b.configurer->ConfigureFix(true, true, false, false, false, true, false); },
         [](GnssSim::SimOptions& o) { o.channelConfig = 5; }},
        {"ConfigureFix", "oem6", 0,
         [](Bench& b) { b.configurer->ConfigureFix(true, true, false, false, false, false, true); }},
        {"ConfigureFix", "oem7500", 0,
         [](Bench& b) { b.configurer->ConfigureFix(true, true, true, true, true, true, true); }},
        {"SupportsGlonass", "oem6", 0, [](Bench& b) { b.configurer->SupportsGlonass(); }},
    };
    return ops;
}

struct Measurement {
    double wallMs;
    double cpuMs;
};

bool Measure(const Operation& op, Measurement& result)
{
    GnssSim::SimOptions options;
    options.receiver = op.receiver;
    op.adjust(options);
    std::unique_ptr<Bench> bench;
    try {
        bench = std::make_unique<Bench>(options);
    } catch (const std::runtime_error& error) {
        (void)std::fprintf(stderr, "%s\n", error.what());
        return false;
    }
    const double wallStart = NowMs(CLOCK_MONOTONIC);
    const double cpuStart = NowMs(CLOCK_THREAD_CPUTIME_ID);
    op.run(*bench);
    result.cpuMs = NowMs(CLOCK_THREAD_CPUTIME_ID) - cpuStart;
    result.wallMs = NowMs(CLOCK_MONOTONIC) - wallStart;
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::string filter = argc > 1 ? argv[1] : "";
    std::printf("%-28s %-9s %10s %10s %9s %7s %9s  %s\n", "operation", "receiver", "waits ms",
                "wall ms", "cpu ms", "cpu %", "over ms", "aim");
    int missed = 0;
    double totalWallMs = 0.0;
    double totalCpuMs = 0.0;
    for (const Operation& op : Operations()) {
        if (op.name.find(filter) == std::string::npos) {
            continue;
        }
        Measurement m{};
        if (!Measure(op, m)) {
            return 1;
        }
        const double over = m.wallMs - static_cast<double>(op.intendedWaitsMs);
        const bool onTime =
            over <= kAllowedOverrunMs + kAllowedOverrunShare * static_cast<double>(op.intendedWaitsMs);
        // An operation with nothing to wait for is a few milliseconds of round trips; its CPU share
        // says nothing about sleeping.
        const bool quiet = op.intendedWaitsMs == 0 || m.cpuMs <= kAllowedCpuShare * m.wallMs;
        missed += (onTime && quiet) ? 0 : 1;
        totalWallMs += m.wallMs;
        totalCpuMs += m.cpuMs;
        std::printf("%-28s %-9s %10ld %10.1f %9.2f %7.2f %9.1f  %s%s\n", op.name.c_str(),
                    op.receiver.c_str(), op.intendedWaitsMs, m.wallMs, m.cpuMs,
                    m.wallMs > 0 ? 100.0 * m.cpuMs / m.wallMs : 0.0, over,
                    onTime ? "on time" : "LATE", quiet ? "" : ", cpu over 1%");
    }
    std::printf("all: wall %.1f ms, cpu %.2f ms (%.2f %%); %d operation(s) missed the aim\n",
                totalWallMs, totalCpuMs, totalWallMs > 0 ? 100.0 * totalCpuMs / totalWallMs : 0.0,
                missed);
    return 0;
}
