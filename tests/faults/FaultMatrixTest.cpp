// The fault matrix: the built gnss-setup in every mode, against every receiver family that gnss-sim
// plays, under each fault gnss-sim can put on the line and under what a console's boot does to the
// tool (its wall clock stepped, the line left dirty, started as a session leader). A cell passes
// when the run ends with the status and messages its mode allows for what the receiver looks like
// under the fault, the driver is told the right type (or nothing), and the run ends within the
// longest its own waits allow plus a tenth; under the console's conditions also when the wait a
// clock step fell into kept its length and the line was left as the tool sets it. The valgrind runs of the native build add: no memory error, no leak, and no
// descriptor left open but the control device's, which the hand-over leaves to the process's end.
// In the sanitizer build a sanitizer report fails the cell by its status and standard error.
//
// Each run has a /dev of its own (scripts/private-dev), so every cell links /dev/ttyO1 and the
// cells run in parallel: `ctest -L faults -j 16`, or scripts/fault-matrix.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <set>
#include <sstream>

#include "tests/faults/MatrixCells.h"
#include "tests/support/ClockStep.h"
#include "tests/support/ProcessRunner.h"
#include "tests/support/SimulatedRun.h"
#include "tests/support/TextFiles.h"
#include "tests/support/WireLogWatch.h"
#include "util/Stopwatch.h"

namespace {

using FaultMatrix::Cell;
using FaultMatrix::Expectation;

// The console port every cell links; each run has its own /dev, so they never meet.
const char kPort[] = "/dev/ttyO1";

// What a run may take beyond its waits: making its /dev, starting the simulator, the tool and
// their libraries, and the sanitizer run-time where there is one, on a machine that runs two dozen
// cells at once (half of them starting valgrind) on two cores.
constexpr long kStartAllowanceMs = 2500;
constexpr double kTimeShare = 1.10;

// A clock step falls into the wait that follows the first version request, as the receiver's wire
// log shows it; the request waits 1 s for its answer.
const char kFirstVersionRequest[] = "log versiona once";
constexpr long kVersionRequestWaitMs = 1000;

// A restart of the simulated receiver after "reset": short, since the receiver's own boot time is
// no wait of the tool's.
const char kRestartMs[] = "300";

// A mismatch is run once more before it counts: the simulator judges the speed of what the tool
// wrote when it reads it, and on a machine loaded with sixteen cells it can read late, after the
// tool changed speed. A real fault shows in both runs.
constexpr int kAttempts = 2;

enum class Runner { Direct, Valgrind };

struct Param {
    Cell cell;
    Runner runner;
};

std::string Printable(const std::string& text)
{
    std::string shown;
    for (const char c : text) {
        shown += c == '\r' ? std::string("\\r") : c == '\t' ? std::string("\\t") : std::string(1, c);
    }
    return shown;
}

std::vector<std::string> ValgrindOptions(const std::string& log)
{
    return {"--log-file=" + log,
            "--leak-check=full",
            "--show-leak-kinds=definite,indirect,possible",
            "--errors-for-leak-kinds=definite,indirect,possible",
            "--track-fds=yes"};
}

// A tool that waits for a stepped-back wall clock to come back waits an hour; it is stopped after
// this, beyond the slowest cell under valgrind, and twice this stays inside the cell's ctest limit.
const char kClockCapSeconds[] = "140";

// The line settings another program leaves before the tool opens the port, as far as a
// pseudo-terminal holds them: hardware and software flow control, two stop bits, the modem lines
// watched. (It keeps 8 data bits, no parity and the receiver on whatever it is told.)
const char kDirtyLine[] = "crtscts cstopb ixoff ixany -clocal";

// What the tool must leave on the line it opened, as stty -a writes it: raw, 8N1, no flow
// control, modem lines ignored, receiver on.
const std::vector<std::string> kLineAsTheToolSetsIt = {"cs8",   "-parenb", "-cstopb", "-crtscts", "clocal",
                                                       "cread", "-ixon",   "-ixoff",  "-ixany",   "-icanon",
                                                       "-isig", "-echo",   "-opost"};
// What it leaves on a line it never opens (the override), just as it found it.
const std::vector<std::string> kLineLeftDirty = {"crtscts", "cstopb", "ixoff", "ixany", "-clocal"};

bool StepsTheClock(const Cell& cell)
{
    return cell.fault.condition == FaultMatrix::Condition::ClockBack ||
           cell.fault.condition == FaultMatrix::Condition::ClockForward;
}

// The tool's command under the cell's condition of the console: started as a session leader, or
// on a line left dirty with its settings read back once it has ended (into scratch/line.txt), or
// stopped after a cap when its clock is stepped.
std::vector<std::string> UnderCondition(const Cell& cell, std::vector<std::string> tool, const std::string& scratch)
{
    std::vector<std::string> before;
    switch (cell.fault.condition) {
    case FaultMatrix::Condition::SessionLeader: before = {"setsid", "-w"}; break;
    case FaultMatrix::Condition::DirtyLine:
        // The shell's own messages (stty's, and its report of the signal that ended the tool) go
        // to line.txt.errors; the tool, started from a shell of its own, keeps the standard error
        // it was given.
        before = {"sh", "-c",
                  std::string("exec 3>&2 2>\"$0.errors\"; stty -F \"$GNSS_SIM_PTY\" ") + kDirtyLine +
                      " || exit 125; sh -c 'exec \"$@\" 2>&3 3>&-' sh \"$@\"; status=$?; "
                      "stty -F \"$GNSS_SIM_PTY\" -a >\"$0\"; exit $status",
                  scratch + "line.txt"};
        break;
    case FaultMatrix::Condition::ClockBack:
    case FaultMatrix::Condition::ClockForward: before = {"timeout", "-s", "KILL", kClockCapSeconds}; break;
    default: break;
    }
    tool.insert(tool.begin(), before.begin(), before.end());
    return tool;
}

struct RunResult {
    ProcessResult result;
    long elapsedMs = 0;
    std::string driverRecord;
    std::string valgrindLog;
    bool clockStepped = false;
    long quietAfterStepMs = -1;
    std::string lineSettings;  // stty -a after the tool, on a line left dirty
};

RunResult RunCell(const Param& param, const std::string& scratch)
{
    const Cell& cell = param.cell;
    for (const char* file : {"heard.txt", "driver.txt", "wire.log", "valgrind.txt", "line.txt"}) {
        unlink((scratch + file).c_str());
    }
    std::vector<std::string> arguments = cell.mode.arguments;
    arguments.push_back(kPort);
    const std::string offsetFile = scratch + "clock-offset";
    ProgramEnvironment environment =
        ToolEnvironment(ZRGPS_CTL_DOUBLE, scratch + "driver.txt", StepsTheClock(cell) ? ClockStep::Preload() : "");
    if (StepsTheClock(cell)) {
        const ProgramEnvironment clock = ClockStep::Variables(offsetFile);
        environment.insert(environment.end(), clock.begin(), clock.end());
    }
    std::vector<std::string> tool = BuiltProgramCommand(GNSS_SETUP_PROGRAM, "gnss-setup", arguments, environment);
    if (param.runner == Runner::Valgrind) {
        std::vector<std::string> checked = ValgrindOptions(scratch + "valgrind.txt");
        checked.push_back(GNSS_SETUP_PROGRAM);
        checked.insert(checked.end(), arguments.begin(), arguments.end());
        tool = BuiltProgramCommand("valgrind", "valgrind", checked, environment);
    }
    std::vector<std::string> simulator = {"--receiver", cell.family.receiver, "--restart-ms", kRestartMs};
    const std::vector<std::string> fault = cell.fault.options(cell.family);
    simulator.insert(simulator.end(), fault.begin(), fault.end());
    std::vector<std::string> command = SimulatorArguments(simulator, kPort, scratch, UnderCondition(cell, tool, scratch));
    command.insert(command.begin(), GNSS_SIM_PROGRAM);

    RunResult run;
    {
        std::optional<WireLogWatch> watch;
        if (StepsTheClock(cell)) {
            const long step = cell.fault.condition == FaultMatrix::Condition::ClockBack ? -ClockStep::kStepSeconds
                                                                                        : ClockStep::kStepSeconds;
            watch.emplace(scratch + "wire.log", kFirstVersionRequest,
                          [offsetFile, step] { ClockStep::SetOffset(offsetFile, step); });
        }
        const Stopwatch clock;
        run.result = RunHostProgram(GNSS_PRIVATE_DEV, command);
        run.elapsedMs = clock.ElapsedMs();
        run.clockStepped = watch && watch->Fired();
    }
    run.quietAfterStepMs = QuietAfterMs(scratch + "wire.log", kFirstVersionRequest);
    run.lineSettings = ReadWholeFile(scratch + "line.txt");
    run.driverRecord = ReadWholeFile(scratch + "driver.txt");
    run.valgrindLog = ReadWholeFile(scratch + "valgrind.txt");
    std::ofstream(scratch + "stdout.txt", std::ios::binary) << run.result.out;
    std::ofstream(scratch + "stderr.txt", std::ios::binary) << run.result.err;
    std::ofstream(scratch + "status.txt") << run.result.status << "\n";
    return run;
}

// The shared memory that libfaketime, standing in for a console's clock, opens in the tool.
const char kClockStandInMemory[] = "/dev/shm/faketime_shm_";

// Descriptors the tool left open at its end, from valgrind's list: not its three standard ones,
// not those it was given, not the control device's, which stay open until the process ends, and
// not the clock stand-in's.

std::vector<std::string> DescriptorsLeftOpen(const std::string& valgrindLog, const std::string& controlRecord)
{
    std::vector<std::string> left;
    std::istringstream lines(valgrindLog);
    std::string line;
    std::string pending;
    const auto settle = [&] {
        if (!pending.empty() && pending.find(controlRecord) == std::string::npos &&
            pending.find(kClockStandInMemory) == std::string::npos) {
            left.push_back(pending);
        }
        pending.clear();
    };
    while (std::getline(lines, line)) {
        if (line.find("Open file descriptor") != std::string::npos) {
            settle();
            pending = line.substr(line.find("Open file descriptor"));
        } else if (line.find("<inherited from parent>") != std::string::npos) {
            pending.clear();
        }
    }
    settle();
    return left;
}

// The words of what stty -a printed that are not among those expected.
std::vector<std::string> Missing(const std::vector<std::string>& expected, const std::string& sttyAll)
{
    std::istringstream words(sttyAll);
    const std::set<std::string> printed{std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
    std::vector<std::string> missing;
    for (const std::string& word : expected) {
        if (printed.count(word) == 0) {
            missing.push_back(word);
        }
    }
    return missing;
}

// What is wrong with a run under a condition of the console beyond its status and output.
std::vector<std::string> ConditionMismatches(const Cell& cell, const RunResult& run)
{
    std::vector<std::string> wrong;
    if (StepsTheClock(cell) && cell.mode.detects) {
        // The receiver may read the request a little late; a tenth of the wait covers that.
        constexpr long kLeastQuietMs = kVersionRequestWaitMs - kVersionRequestWaitMs / 10;
        if (!run.clockStepped) {
            wrong.push_back("the clock was never stepped: the receiver heard no version request");
        } else if (run.quietAfterStepMs < kLeastQuietMs) {
            wrong.push_back("the wait the clock step fell into ended after " + std::to_string(run.quietAfterStepMs) +
                            " ms, not " + std::to_string(kVersionRequestWaitMs));
        }
    }
    if (cell.fault.condition == FaultMatrix::Condition::DirtyLine) {
        const bool opensPort = cell.mode.name != "override";
        for (const std::string& word : Missing(opensPort ? kLineAsTheToolSetsIt : kLineLeftDirty, run.lineSettings)) {
            wrong.push_back("the line was left without \"" + word + "\" (stty -a: \"" + run.lineSettings + "\")");
        }
    }
    return wrong;
}

// Everything wrong with a run for a tool that ended up with the configurer, one line each.
std::vector<std::string> Mismatches(const Param& param, FaultMatrix::Configurer seen, const RunResult& run,
                                    const std::string& scratch)
{
    const Expectation expected = FaultMatrix::Expect(param.cell, seen, kPort);
    std::vector<std::string> wrong;
    if (expected.statuses.count(run.result.status) == 0) {
        wrong.push_back("exit status " + std::to_string(run.result.status));
    }
    if (!std::regex_match(run.result.out, std::regex(expected.stdoutPattern))) {
        wrong.push_back("standard output \"" + Printable(run.result.out) + "\" does not match \"" +
                        Printable(expected.stdoutPattern) + "\"");
    }
    if (run.result.err != expected.stderrText) {
        wrong.push_back("standard error \"" + Printable(run.result.err) + "\", not \"" +
                        Printable(expected.stderrText) + "\"");
    }
    const std::vector<std::string> condition = ConditionMismatches(param.cell, run);
    wrong.insert(wrong.end(), condition.begin(), condition.end());
    const int told = DriverTypeTold(run.driverRecord);
    if (told != expected.driverType) {
        wrong.push_back("the driver was told type " + std::to_string(told) + ", not " +
                        std::to_string(expected.driverType));
    }
    if (param.runner == Runner::Direct) {
        const long budgetMs = static_cast<long>(static_cast<double>(FaultMatrix::WorstCaseMs(param.cell, seen)) * kTimeShare) + kStartAllowanceMs;
        if (run.elapsedMs > budgetMs) {
            wrong.push_back("took " + std::to_string(run.elapsedMs) + " ms, more than " + std::to_string(budgetMs) +
                            " ms");
        }
    } else {
        // Leaks count as errors too (see ValgrindOptions).
        std::smatch summary;
        if (!std::regex_search(run.valgrindLog, summary, std::regex(R"(ERROR SUMMARY: ([0-9]+) errors)"))) {
            wrong.push_back("valgrind wrote no summary");
        } else if (summary[1] != "0") {
            wrong.push_back("valgrind found " + summary[1].str() + " errors; see " + scratch + "valgrind.txt");
        }
        // A run ended by a signal leaves its descriptors to the kernel by design.
        if (run.result.status < 128) {
            for (const std::string& open : DescriptorsLeftOpen(run.valgrindLog, scratch + "driver.txt")) {
                wrong.push_back("left open: " + open);
            }
        }
    }
    return wrong;
}

// The cell's name, for gtest's listing, instead of the bytes of the parameter.
void PrintTo(const Param& param, std::ostream* out)
{
    *out << param.cell.Name();
}

class Cells : public testing::TestWithParam<Param> {};

TEST_P(Cells, EndAsTheirModeAllows)
{
    const std::string noPrivateDev = WhyNoPrivateDev(GNSS_PRIVATE_DEV);
    if (!noPrivateDev.empty()) {
        GTEST_SKIP() << noPrivateDev;
    }
    if (StepsTheClock(GetParam().cell) && !ClockStep::WhyUnavailable().empty()) {
        GTEST_SKIP() << ClockStep::WhyUnavailable();
    }
    // The "$PMCAG" configuration ends the tool by SIGFPE, whose default action dumps core.
    const rlimit noCoreFiles = {0, 0};
    setrlimit(RLIMIT_CORE, &noCoreFiles);
    const std::string name = GetParam().cell.Name() + (GetParam().runner == Runner::Valgrind ? "_valgrind" : "");
    const std::string scratch = std::string(GNSS_SCRATCH) + "/" + name + "/";
    mkdir(GNSS_SCRATCH, 0755);
    mkdir(scratch.c_str(), 0755);

    std::vector<std::string> wrong;
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        const RunResult run = RunCell(GetParam(), scratch);
        // Judged against each outcome the cell allows; what is wrong against the likeliest is shown.
        const Param& param = GetParam();
        const auto outcomes = FaultMatrix::SeenAs(param.cell.family, param.cell.fault, param.runner == Runner::Valgrind);
        for (auto seen = outcomes.rbegin(); seen != outcomes.rend(); ++seen) {
            wrong = Mismatches(param, *seen, run, scratch);
            if (wrong.empty()) {
                return;
            }
        }
        std::cout << "Attempt " << attempt << " of " << name << " (" << run.elapsedMs << " ms):\n";
        for (const std::string& line : wrong) {
            std::cout << "  " << line << "\n";
        }
    }
    for (const std::string& line : wrong) {
        ADD_FAILURE() << line;
    }
    ADD_FAILURE() << "the last run's output, transcript, driver record and wire log are in " << scratch;
}

std::vector<Param> AllParams()
{
    std::vector<Param> params;
    for (const Cell& cell : FaultMatrix::AllCells()) {
        params.push_back(Param{cell, Runner::Direct});
#ifdef GNSS_FAULTS_VALGRIND
        params.push_back(Param{cell, Runner::Valgrind});
#endif
    }
    return params;
}

std::string ParamName(const testing::TestParamInfo<Param>& info)
{
    std::string name = info.param.cell.Name() + (info.param.runner == Runner::Valgrind ? "_valgrind" : "");
    for (char& c : name) {
        if (c == '-') {
            c = '_';
        }
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(FaultMatrix, Cells, testing::ValuesIn(AllParams()), ParamName);

}  // namespace
