#include "tests/faults/MatrixCells.h"

#include <regex>

namespace FaultMatrix {

namespace {

// ---- The time-outs each family answers against -------------------------------------------------

// A NovAtel exchange waits 1000 ms for its reply; an "<OK" after an NMEA log command, 100 ms.
constexpr long kNovatelExchangeMs = 1000;
constexpr long kNovatelLogOkMs = 100;
// The "$JAPP" probe listens for 3000 ms, the "$JI" firmware query for 200 ms.
constexpr long kCsiProbeMs = 3000;
constexpr long kCsiFirmwareMs = 200;
// The "$PMCAG" probe gives up once 300 ms have passed after a read.
constexpr long kPmcagProbeMs = 300;

// "Just below" and "just above" a time-out: a tenth of it either side, which no scheduling delay
// of a loaded test machine comes near for the long ones, and which for the 100 ms and 200 ms
// waits only decides whether an answer the run does not depend on is heard in time.
long JustBelow(long timeoutMs)
{
    return timeoutMs - timeoutMs / 10;
}

long JustAbove(long timeoutMs)
{
    return timeoutMs + timeoutMs / 10;
}

// The time-outs that decide a family's exchanges: the identifying one first.
std::vector<long> TimeoutsOf(const Family& family)
{
    switch (family.configurer) {
    case Configurer::Csi: return {kCsiProbeMs, kCsiFirmwareMs};
    case Configurer::Pmcag: return {kPmcagProbeMs};
    default: return {kNovatelExchangeMs, kNovatelLogOkMs};
    }
}

std::vector<std::string> Options(std::initializer_list<std::string> words)
{
    return std::vector<std::string>(words);
}

// The receiver starts at 9600 baud, the speed receivers leave the factory with: the tool's first
// version requests, at 115200 and 19200 baud, reach it as noise and go unanswered.
std::vector<std::string> StartAt9600(const Family&)
{
    return Options({"--start-baud", "9600"});
}

// The line drops the moment the receiver first answers, while the tool waits for that answer.
std::vector<std::string> HangUpAtFirstAnswer(const Family&)
{
    return Options({"--hang-up-after", "0"});
}

// ---- What the simulated receivers tell about themselves ----------------------------------------

const char kOem7700Firmware[] = "070600";
const char kOem7700Model[] = "FFNRNNCBES1";
const char kCsiFirmware[] = "6.3Jun04";
const std::vector<std::string> kOem7700Models = {"FFNRNNCBES1", "FFNRNNCBN"};

// The receiver type name the query prints for what the tool ended up with, and the kernel driver's
// number for it, in the order of Configurer.
struct Described {
    const char* typeName;
    int driverType;
};

Described Describe(Configurer configurer)
{
    static const Described described[] = {{"OEM 7700", 11}, {"CSI", 5}, {"Novatel", 4}, {"Unknown", 2}};
    return described[static_cast<int>(configurer)];
}

std::string Escaped(const std::string& text)
{
    static const std::regex special(R"([.^$|()\[\]{}*+?\\])");
    return std::regex_replace(text, special, R"(\$&)");
}

// A value the receiver gave: the whole value, or nothing where the answer may not have arrived.
std::string Value(const std::string& value, bool mayBeMissing)
{
    return mayBeMissing ? "(" + Escaped(value) + ")?" : Escaped(value);
}

// The version log as it came, line end included. A line before it (a NUL, an over-long one) takes
// the place of the prompt that otherwise stands in front of it.
std::string RawVersionLine()
{
    return "(" + Escaped("[COM1]") + ")?" + Escaped("#VERSIONA,COM1,") + "[^\n]*\r\n";
}

// ---- The worst case of the tool's own waits, in ms ---------------------------------------------

// A NovAtel exchange reads in slices of half its time-out (500 ms at most) and may start its
// last slice just before the time-out runs out.
constexpr long kExchangeWorstMs = kNovatelExchangeMs + 500;
// The version log: two requests, each read for 1000 ms in 500 ms slices.
constexpr long kVersionLogWorstMs = 2 * kExchangeWorstMs;
// A speed sweep: five rates with 10 ms after each switch command.
constexpr long kSweepMs = 5L * 10;
// An NMEA log command: a 100 ms wait for "<OK" that may begin just before it ends, then 200 ms.
constexpr long kLogCommandWorstMs = 2 * kNovatelLogOkMs + 200;
// "Is the receiver alive": 50 requests of 100 ms each, each read in 50 ms slices.
constexpr long kAliveWorstMs = 50L * (100 + 50);
// The version probe: three rates, each 100 ms to settle and two requests of 1000 ms.
constexpr long kNovatelProbeWorstMs = 3 * (100 + 2 * kExchangeWorstMs);
// "$JAPP": 200 ms reads until more than 3000 ms have passed; "$PMCAG": until more than 299 ms.
constexpr long kCsiProbeWorstMs = kCsiProbeMs + 200;
constexpr long kPmcagProbeWorstMs = kPmcagProbeMs + 200;
// "$JI": 200 ms reads until 200 ms have passed.
constexpr long kCsiFirmwareWorstMs = 2 * kCsiFirmwareMs;
// The pause before saving (or not) a configuration.
constexpr long kConfigurationPauseMs = 1000;
// A reset is given 20 s to find the receiver again; the search under way then still finishes:
// five sweeps with an exchange each, and the sweep back.
constexpr long kResetSearchMs = 20000;
constexpr long kFindBaudWorstMs = 5 * (kSweepMs + kExchangeWorstMs) + kSweepMs;

long DetectionWorstMs(Configurer found)
{
    switch (found) {
    case Configurer::Oem7: return kNovatelProbeWorstMs;
    case Configurer::Csi: return kNovatelProbeWorstMs + kCsiProbeWorstMs;
    default: return kNovatelProbeWorstMs + kCsiProbeWorstMs + kPmcagProbeWorstMs;
    }
}

// An OEM7 configuration with the default settings: the three version strings, the speed, five
// sentences off (GGA takes two commands), the family settings (the speed again, "alive", the PDP
// filter, four settings, two pauses, radar and both ports), SBAS off, GGA on and four off, and
// the pause.
long Oem7ConfigurationWorstMs()
{
    const long versions = 3 * kVersionLogWorstMs;
    const long sentencesOff = 6 * kLogCommandWorstMs;
    const long family = kSweepMs + kAliveWorstMs + kExchangeWorstMs + 100 + 4 * kExchangeWorstMs + 100 +
                        3 * kExchangeWorstMs;
    const long sbasOff = kExchangeWorstMs;
    const long sentencesOn = 6 * kLogCommandWorstMs;
    return versions + kSweepMs + sentencesOff + family + sbasOff + sentencesOn + kConfigurationPauseMs;
}

long ModeWorstMs(const std::string& mode, Configurer configurer)
{
    const bool oem7 = configurer == Configurer::Oem7;
    const bool csi = configurer == Configurer::Csi;
    if (mode == "query") {
        return oem7 ? 2 * kVersionLogWorstMs : csi ? 2 * kCsiFirmwareWorstMs : 0;
    }
    if (mode == "extended-query") {
        return oem7 ? 5 * kVersionLogWorstMs : csi ? 4 * kCsiFirmwareWorstMs : 0;
    }
    if (mode == "list-models" || mode == "reset-pdp-filter") {
        return oem7 ? kExchangeWorstMs : 0;
    }
    if (mode == "list-current-model") {
        return oem7 ? kVersionLogWorstMs : 0;
    }
    if (mode == "reset-receiver") {
        return oem7 ? kExchangeWorstMs + kResetSearchMs + 10 + kFindBaudWorstMs + kSweepMs : 0;
    }
    if (mode == "configure") {
        return oem7 ? Oem7ConfigurationWorstMs()
               : csi ? 2 * kCsiFirmwareWorstMs + kConfigurationPauseMs
               : configurer == Configurer::Generic ? kConfigurationPauseMs
                                                   : 0;  // a "$PMCAG" receiver ends at its first setter
    }
    return 0;
}

// Whether the fault can keep an answer from reaching the tool in time after the receiver was
// found: then the values printed may be missing, and a reset may not find the receiver again.
bool CanLoseAnswers(const Fault& fault)
{
    return fault.LineFault() != "none";
}

}  // namespace

const std::vector<Mode>& Modes()
{
    static const std::vector<Mode> modes = {
        {"override", {"-R", "OEM 7700:070600"}, false},
        {"dry-run", {"--dry-run"}, false},
        {"query", {"-Q"}, true},
        {"extended-query", {"-E"}, true},
        {"list-models", {"--list-models"}, true},
        {"list-current-model", {"--list-current-model"}, true},
        {"reset-receiver", {"--reset-receiver"}, true},
        {"reset-pdp-filter", {"--reset-pdp-filter"}, true},
        {"clear-cached", {"-x"}, false},
        {"configure", {}, true},
    };
    return modes;
}

const std::vector<Family>& Families()
{
    // An OEMV receiver is not recognised by any probe and is run through the generic configurer.
    static const std::vector<Family> families = {
        {"oem7700", Configurer::Oem7, 270},
        {"csi", Configurer::Csi, 18},
        {"pmcag", Configurer::Pmcag, 29},
        {"oemv", Configurer::Generic, 246},
    };
    return families;
}

const std::vector<Fault>& Faults()
{
    static const std::vector<Fault> faults = {
        {"none", [](const Family&) { return Options({}); }},
        {"silence", [](const Family&) { return Options({"--no-answer", "*"}); }},
        {"noise", [](const Family&) { return Options({"--noise-between", "16"}); }},
        {"nul", [](const Family&) { return Options({"--nul-before", "*"}); }},
        {"long-line", [](const Family&) { return Options({"--long-line-before", "*"}); }},
        // A speed no probe tries.
        {"wrong-speed", [](const Family&) { return Options({"--start-baud", "57600"}); }},
        // Right after the answer that identifies the receiver.
        {"hang-up", [](const Family& f) { return Options({"--hang-up-after", std::to_string(f.answerBytes)}); }},
        {"late-below", [](const Family& f) { return Options({"--delay", std::to_string(JustBelow(TimeoutsOf(f)[0]))}); }},
        {"late-above", [](const Family& f) { return Options({"--delay", std::to_string(JustAbove(TimeoutsOf(f)[0]))}); }},
        {"short-late-below",
         [](const Family& f) { return Options({"--delay", std::to_string(JustBelow(TimeoutsOf(f).back()))}); }},
        {"short-late-above",
         [](const Family& f) { return Options({"--delay", std::to_string(JustAbove(TimeoutsOf(f).back()))}); }},
        {"flood", [](const Family&) { return Options({"--nmea-flood", "20"}); }},
        // The console's side, each on a line fault that makes it bite in every mode that talks to
        // the receiver (tests/faults/README.md). The clock is stepped inside the tool's first
        // version request, which a receiver that starts at 9600 baud never answers; a session
        // leader's line hangs up while the tool waits for the receiver's first answer.
        {"clock-back", StartAt9600, "slow-start", Condition::ClockBack},
        {"clock-forward", StartAt9600, "slow-start", Condition::ClockForward},
        {"dirty-line", [](const Family&) { return Options({}); }, "none", Condition::DirtyLine},
        {"session-leader", HangUpAtFirstAnswer, "dead-line", Condition::SessionLeader},
    };
    return faults;
}

std::vector<Cell> AllCells()
{
    std::vector<Cell> cells;
    for (const Family& family : Families()) {
        for (const Fault& fault : Faults()) {
            // A family with a single time-out has no second pair of delays.
            if (fault.name.rfind("short-late", 0) == 0 && TimeoutsOf(family).size() < 2) {
                continue;
            }
            for (const Mode& mode : Modes()) {
                cells.push_back(Cell{mode, family, fault});
            }
        }
    }
    return cells;
}

namespace {

Configurer MostLikelySeenAs(const Family& family, const Fault& fault)
{
    const std::string& name = fault.LineFault();
    // Nothing answers, or nothing that any probe understands, or the line is dead before it does.
    if (name == "silence" || name == "wrong-speed" || name == "dead-line") {
        return Configurer::Generic;
    }
    // A receiver that starts at 9600 baud is found there by the NovAtel probe; the "$JAPP" and
    // "$PMCAG" probes ask at the port's own rate, 115200, and reach it as noise.
    if (name == "slow-start") {
        return family.configurer == Configurer::Oem7 ? Configurer::Oem7 : Configurer::Generic;
    }
    // "$JAPP" is found anywhere in what arrives, so noise in front of it does not matter; the other
    // probes need their answer at the start of a line.
    if (name == "noise" && family.configurer != Configurer::Csi) {
        return Configurer::Generic;
    }
    // A late "$JAPP" answer arrives during the "$PMCAG" probe, which does not take it. The NovAtel
    // probe's second request hears the late answer to its first, and the "$PMCAG" probe reads in
    // 200 ms slices, so it listens for 400 ms.
    if (name == "late-above" && family.configurer == Configurer::Csi) {
        return Configurer::Generic;
    }
    return family.configurer;
}

}  // namespace

std::vector<Configurer> SeenAs(const Family& family, const Fault& fault, bool underValgrind)
{
    const Configurer likely = MostLikelySeenAs(family, fault);
    // The late answer to the first version request comes 100 ms after the second request began.
    const bool closeCall = fault.LineFault() == "late-above" && family.configurer == Configurer::Oem7;
    if (likely != Configurer::Generic && (closeCall || underValgrind)) {
        return {likely, Configurer::Generic};
    }
    return {likely};
}

Expectation Expect(const Cell& cell, Configurer seen, const std::string& port)
{
    const std::string& mode = cell.mode.name;
    const bool maybe = CanLoseAnswers(cell.fault);
    const bool novatel = seen == Configurer::Oem7;
    Expectation expected;
    expected.statuses = {0};
    if (mode == "override") {
        expected.driverType = Describe(Configurer::Oem7).driverType;
    } else if (mode == "dry-run") {
        expected.stdoutPattern = Escaped("Need to configure GPS on port " + port + " with settings:\n") + "(  .*\n)*" +
                                 Escaped(" Save Configuration No\n");
    } else if (mode == "clear-cached") {
        expected.statuses = {1};
        expected.stderrText = "Could not initialize GNSS receiver\n";
        expected.driverType = Describe(Configurer::Generic).driverType;
    } else if (mode == "query" || mode == "extended-query") {
        const std::string firmware = novatel ? kOem7700Firmware : seen == Configurer::Csi ? kCsiFirmware : "";
        std::string pattern = Escaped(std::string("Receiver \n  Type:        ") + Describe(seen).typeName + "\n") +
                              "  Firmware:    " + Value(firmware, maybe) + "\n";
        if (mode == "extended-query") {
            if (novatel) {
                pattern += "  Ext Ver:     " + Value("EP0706000000", maybe) + "\n  Model:       " +
                           Value(kOem7700Model, maybe) + "\n  PSN:         " + Value("BMHR17140001X", maybe) +
                           "\n  HW Version:  " + Value("OEM7700-1.01", maybe) + "\n  SW Version:  " +
                           Value("OEM070600RN0000", maybe) + "\n  Boot:        " + Value("OEM070400RB0000", maybe) +
                           "\n  Raw Info:    (" + RawVersionLine() + ")" + (maybe ? "?" : "") +
                           "\n";
            } else {
                pattern += "  Raw Info:    " + Value(firmware, maybe) + "\n";
            }
        }
        expected.stdoutPattern = pattern;
    } else if (mode == "list-models" || mode == "list-current-model") {
        if (!novatel) {
            expected.statuses = {1};
            expected.stderrText = "Did not detect a compatible receiver\n";
        } else if (mode == "list-models") {
            std::string models;
            for (const std::string& model : kOem7700Models) {
                models += "\t" + Escaped(model) + "\n";
            }
            expected.stdoutPattern = maybe ? "(" + models + ")?" : models;
        } else {
            expected.stdoutPattern = Value(kOem7700Model, maybe) + "\n";
        }
    } else if (mode == "reset-receiver") {
        if (!novatel) {
            expected.statuses = {1};
            expected.stdoutPattern = Escaped("Do not know how to reset this receiver\n");
        } else if (maybe) {
            expected.statuses = {0, 1};
        }
    } else if (mode == "reset-pdp-filter") {
        // Acknowledged or not, this mode ends with status 1: start-up scripts are written for it.
        expected.statuses = {1};
        if (!novatel) {
            expected.stdoutPattern = Escaped("Do not know how to reset PDP filter on this receiver\n");
        }
    } else if (mode == "configure") {
        expected.driverType = Describe(seen).driverType;
        if (seen == Configurer::Pmcag) {
            // The default ZDA rate of 0.2 Hz divides by zero in the first "$PMCAG" output sentence.
            expected.statuses = {128 + 8};
            expected.driverType = -1;
        } else if (seen == Configurer::Generic) {
            expected.statuses = {1};
            expected.stderrText = "Could not initialize GNSS receiver\n";
        }
    }
    return expected;
}

long WorstCaseMs(const Cell& cell, Configurer seen)
{
    if (!cell.mode.detects) {
        return 0;
    }
    return DetectionWorstMs(seen) + ModeWorstMs(cell.mode.name, seen);
}

}  // namespace FaultMatrix
