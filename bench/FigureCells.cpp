#include "bench/FigureCells.h"

#include <numeric>

const char* const kFigurePort = "/dev/ttyO1";

namespace {

// How a family goes through a run, as far as waits go.
enum class FamilyKind {
    OemStarLine,  // OEM-Star, OEM-StarG: "COM" ports, the common SBAS sequence, channel configurations
    Oem6,
    Oem7,
    // An OEMV answers the version probe, but its version line is not one the probe recognises: it is
    // found by no probe, configured with the generic configurer, and waits as a silent line does.
    Generic,
    Csi,
    Pmcag,
    Silent,
};

struct Family {
    const char* label;
    const char* receiver;
    FamilyKind kind;
};

const Family kFamilies[] = {
    {"oemstar", "oemstar", FamilyKind::OemStarLine}, {"oemstarg", "oemstarg", FamilyKind::OemStarLine},
    {"oem6", "oem6", FamilyKind::Oem6},              {"oem7500", "oem7500", FamilyKind::Oem7},
    {"oem7700", "oem7700", FamilyKind::Oem7},        {"generic (oemv)", "oemv", FamilyKind::Generic},
    {"csi", "csi", FamilyKind::Csi},                 {"pmcag", "pmcag", FamilyKind::Pmcag},
    {"silent", "silent", FamilyKind::Silent},
};

using Waits = std::vector<WaitTerm>;

Waits operator+(Waits first, const Waits& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

bool IsNovatel(FamilyKind kind)
{
    return kind == FamilyKind::OemStarLine || kind == FamilyKind::Oem6 || kind == FamilyKind::Oem7;
}

// The probes run in a fixed order and stop at the first that recognises the receiver; each one
// before it runs out its time-out.
Waits Detection(FamilyKind kind)
{
    switch (kind) {
    case FamilyKind::Csi: return {kVersionProbeUnanswered};
    case FamilyKind::Pmcag: return {kVersionProbeUnanswered, kCsiProbeUnanswered};
    case FamilyKind::Generic:
    case FamilyKind::Silent: return {kVersionProbeUnanswered, kCsiProbeUnanswered, kPmcagProbeUnanswered};
    default: return {kVersionProbeFound};
    }
}

// The family configuration re-applies the configured speed first (a sweep); OEM6 pauses once after
// the filter settings, OEM7 again after the ionosphere setting.
Waits FamilyConfiguration(FamilyKind kind)
{
    switch (kind) {
    case FamilyKind::OemStarLine: return {kSpeedSweep};
    case FamilyKind::Oem6: return {kSpeedSweep, kFamilySettle};
    case FamilyKind::Oem7: return {kSpeedSweep, kFamilySettle, kFamilySettle};
    default: return {};
    }
}

// The reset: "reset" is acknowledged at once; the simulated receiver is back within 1 ms, so the
// first candidate of the speed search (9600) answers: one sweep to command it there, one to
// restore the port's speed on entry, one to switch to the speed found.
Waits ResetReceiver(FamilyKind kind)
{
    if (!IsNovatel(kind)) {
        return Detection(kind);  // "Do not know how to reset this receiver"
    }
    return Detection(kind) + Waits{kResetBreath, kSpeedSweep, kSpeedSweep, kSpeedSweep};
}

// Defaults: SBAS off, no fix configuration, nothing saved. Every log command is acknowledged by
// the simulated receivers, so no 200 ms pause after an unacknowledged one is due.
Waits ConfigureDefaults(FamilyKind kind)
{
    if (kind == FamilyKind::Pmcag) {
        // The first setter computes a period from the 0.2 Hz ZDA rate: SIGFPE before any pause.
        return Detection(kind);
    }
    if (!IsNovatel(kind)) {
        return Detection(kind) + Waits{kPauseBeforeSave};
    }
    const Waits sbasOff = kind == FamilyKind::OemStarLine ? Waits{kEmptySbasCommand} : Waits{};
    return Detection(kind) + Waits{kSpeedSweep} + FamilyConfiguration(kind) + sbasOff +
           Waits{kPauseBeforeSave};
}

// --attempt-fix-config --use-sbas --save-config. On OEM-Star lines the fix configuration chooses
// channel configuration 2 (GPS without GLONASS); the simulated receivers start in configuration 1,
// so it is switched, the receiver restarts and the family configuration is applied again. OEM6 and
// OEM7 send their fix commands, which are all acknowledged. SBAS on sends no empty command. The
// save itself is one acknowledged exchange.
Waits ConfigureFixSbasSave(FamilyKind kind)
{
    if (!IsNovatel(kind)) {
        return ConfigureDefaults(kind);
    }
    const Waits fix = kind == FamilyKind::OemStarLine
                          ? Waits{kChannelConfigRestart} + FamilyConfiguration(kind)
                          : Waits{};
    return Detection(kind) + Waits{kSpeedSweep} + FamilyConfiguration(kind) + fix +
           Waits{kPauseBeforeSave};
}

std::vector<std::string> WithPort(std::vector<std::string> arguments)
{
    arguments.emplace_back(kFigurePort);
    return arguments;
}

void AddDetectingModes(const Family& family, std::vector<FigureCell>& cells)
{
    const FamilyKind kind = family.kind;
    // The query, the listings and the PDP-filter reset make no waits of their own beyond the
    // detection: on a NovAtel receiver each is a few acknowledged exchanges; elsewhere they refuse.
    const struct {
        const char* mode;
        std::vector<std::string> arguments;
        Waits waits;
    } modes[] = {
        {"query", {"-Q"}, Detection(kind)},
        {"extended query", {"-E"}, Detection(kind)},
        {"list models", {"--list-models"}, Detection(kind)},
        {"list current model", {"--list-current-model"}, Detection(kind)},
        {"reset receiver", {"--reset-receiver"}, ResetReceiver(kind)},
        {"reset PDP filter", {"--reset-pdp-filter"}, Detection(kind)},
        {"configure", {}, ConfigureDefaults(kind)},
        {"configure fix+SBAS+save", {"--attempt-fix-config", "--use-sbas", "--save-config"},
         ConfigureFixSbasSave(kind)},
    };
    for (const auto& mode : modes) {
        cells.push_back({mode.mode, family.label, family.receiver, WithPort(mode.arguments), mode.waits});
    }
}

}  // namespace

long FigureCell::WaitsMs() const
{
    return std::accumulate(waits.begin(), waits.end(), 0L,
                           [](long sum, const WaitTerm& term) { return sum + term.ms; });
}

std::string FigureCell::WaitsFormula() const
{
    std::string formula;
    for (const WaitTerm& term : waits) {
        formula += (formula.empty() ? "" : " + ") + std::to_string(term.ms);
    }
    return formula.empty() ? "0" : formula;
}

std::string FigureCell::Id() const
{
    std::string id = mode + "-" + family;
    for (char& c : id) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        c = plain ? c : '-';
    }
    return id;
}

std::vector<FigureCell> FigureCells()
{
    // The modes that do not ask the receiver anything: once each, with an OEM 7700 on the line.
    std::vector<FigureCell> cells = {
        {"override", "any (port not opened)", "oem7700", {"-R", "OEM 7700:070600"}, {}},
        {"dry run", "any (oem7700 attached)", "oem7700", WithPort({"--dry-run"}), {}},
        {"clear cached", "any (oem7700 attached)", "oem7700", WithPort({"-x"}), {}},
    };
    // Then mode by mode, each against every family.
    std::vector<std::vector<FigureCell>> byFamily;
    for (const Family& family : kFamilies) {
        byFamily.emplace_back();
        AddDetectingModes(family, byFamily.back());
    }
    for (std::size_t mode = 0; mode < byFamily.front().size(); ++mode) {
        for (const std::vector<FigureCell>& familyCells : byFamily) {
            cells.push_back(familyCells[mode]);
        }
    }
    return cells;
}
