// End to end: the built gnss-setup against gnss-sim through one of the console's /dev/ttyO*
// names, with the control device double preloaded into the tool, and everything that came out of
// the run compared with the golden files in the scenario's folder, which ctest names in
// GNSS_E2E_SCENARIO. GNSS_UPDATE_GOLDEN=1 rewrites the golden files instead (README.md).
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <regex>
#include <sstream>

#include "tests/e2e/LineDiff.h"
#include "tests/support/ProcessRunner.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"

namespace {

// scenario.txt, one setting a line; values are split at blanks, double quotes hold blanks:
//   # what the scenario shows (comment lines are for people)
//   receiver oemstar --restart-ms 1     gnss-sim's receiver and any further gnss-sim options
//   port /dev/ttyO0                     the name linked to the simulator, or kept missing
//   arguments --reset-receiver /dev/ttyO0
//   control-device missing              as on a console whose driver did not load
struct Scenario {
    std::string folder;
    std::vector<std::string> simulator;  // gnss-sim's options; empty without a receiver
    std::string port;                    // empty when the tool opens no port
    std::vector<std::string> arguments;
    bool controlDevice = true;
};

Scenario ReadScenario(const std::string& name)
{
    Scenario scenario;
    scenario.folder = std::string(GNSS_E2E_SCENARIOS) + "/" + name;
    std::ifstream description(scenario.folder + "/scenario.txt");
    EXPECT_TRUE(description.is_open()) << "cannot read " << scenario.folder << "/scenario.txt";
    std::string line;
    while (std::getline(description, line)) {
        std::istringstream words(line);
        std::string key;
        std::vector<std::string> values;
        words >> key;
        for (std::string value; words >> std::quoted(value);) {
            values.push_back(value);
        }
        if (key.empty() || key[0] == '#') {
            continue;
        } else if (key == "receiver" && !values.empty()) {
            scenario.simulator = {"--receiver"};
            scenario.simulator.insert(scenario.simulator.end(), values.begin(), values.end());
        } else if (key == "port" && values.size() == 1) {
            scenario.port = values[0];
        } else if (key == "arguments") {
            scenario.arguments = values;
        } else if (key == "control-device" && values == std::vector<std::string>{"missing"}) {
            scenario.controlDevice = false;
        } else {
            ADD_FAILURE() << scenario.folder << "/scenario.txt: cannot use \"" << line << "\"";
        }
    }
    return scenario;
}

// Empty when the scenario may link its port name or keep it missing; otherwise why not, which is a
// reason to skip the scenario. ctest serialises the scenarios that share a name; this guards
// against everything else. A dangling link is a simulator's that was ended before it could remove
// it. Another program's simulator (the README demo links /dev/ttyO1 for a moment) holds a name for
// as long as its command runs, a query of a slow receiver about ten seconds; a link has no event to
// wait for, so it is looked at again every 100 ms.
std::string WhyPortIsNotOurs(const std::string& port)
{
    constexpr long kForeignLinkPatienceMs = 30000;
    const std::string folder = port.substr(0, port.rfind('/'));
    if (access(folder.c_str(), W_OK) != 0) {
        return "cannot make links in " + folder + " (" + std::strerror(errno) +
               "); the end-to-end scenarios run as root";
    }
    const Stopwatch waiting;
    for (;;) {
        struct stat entry {};
        struct stat target {};
        if (lstat(port.c_str(), &entry) != 0) {
            return "";
        }
        if (!S_ISLNK(entry.st_mode)) {
            return port + " exists and is not a simulator's link: a real port is not ours to use";
        }
        if (stat(port.c_str(), &target) != 0) {
            unlink(port.c_str());
            return "";
        }
        if (waiting.ElapsedMs() >= kForeignLinkPatienceMs) {
            return port + " stayed linked by another program for " +
                   std::to_string(kForeignLinkPatienceMs / 1000) + " s";
        }
        SleepMs(100);
    }
}

const char kUpdateVariable[] = "GNSS_UPDATE_GOLDEN";

const char kHeardFile[] = "heard.txt";
const char kDriverFile[] = "driver.txt";
const char kWireLogFile[] = "wire.log";

bool UpdatingGoldenFiles()
{
    const char* update = std::getenv(kUpdateVariable);
    return update != nullptr && std::string(update) == "1";
}

std::string ReadWholeFile(const std::string& path, bool& found)
{
    std::ifstream file(path, std::ios::binary);
    found = file.good();
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string ReadFileOrNothing(const std::string& path)
{
    bool found = false;
    return ReadWholeFile(path, found);
}

// A scenario's scratch folder: the simulator's transcript and wire log and the driver record. It
// is kept when the scenario failed, for a person to look into.
class WorkFolder {
public:
    WorkFolder()
    {
        const char* temporary = std::getenv("TMPDIR");
        std::string pattern = std::string(temporary != nullptr ? temporary : "/tmp") + "/gnss-e2e-XXXXXX";
        if (mkdtemp(pattern.data()) != nullptr) {
            m_path = pattern;
        }
    }
    ~WorkFolder()
    {
        if (::testing::Test::HasFailure()) {
            std::cout << "The last run's wire log, transcript and driver record are kept in " << m_path << "\n";
            return;
        }
        Clear();
        rmdir(m_path.c_str());
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    bool Made() const { return !m_path.empty(); }
    std::string File(const std::string& name) const { return m_path + "/" + name; }

    void Clear() const
    {
        for (const char* name : {kHeardFile, kDriverFile, kWireLogFile}) {
            unlink(File(name).c_str());
        }
    }

private:
    std::string m_path;
};

// What a run left, each as the golden file holds it.
struct Outcome {
    std::string out;
    std::string err;
    std::string status;
    std::string heard;
    std::string driver;
};

// A NovAtel log carries the receiver's time of week and a CRC over it; the simulator's clock runs
// from its start, so both change from run to run. They are written as <seconds> and <crc>; the
// rest of the log, and where it stands in the output, must still match.
std::string NormaliseLogTimes(const std::string& text)
{
    static const std::regex log(
        R"((#[A-Z]+A,[^,;\n]*,[^,;\n]*,[^,;\n]*,[^,;\n]*,[^,;\n]*,)[0-9]+\.[0-9]+(,[^;\n]*;[^*\n]*\*)[0-9a-f]{8})");
    return std::regex_replace(text, log, "$1<seconds>$2<crc>");
}

// qemu-user reports a signal that ended its program on its own standard error, which is the
// tool's; the console shows no such line, so it is not part of the tool's output.
std::string WithoutEmulatorReport(const std::string& err)
{
    static const std::regex report(R"(qemu: uncaught target signal [^\n]*\n)");
    return std::regex_replace(err, report, "");
}

ProgramEnvironment ToolEnvironment(const Scenario& scenario, const WorkFolder& work)
{
    ProgramEnvironment environment = {std::string("LD_PRELOAD=") + ZRGPS_CTL_DOUBLE};
    if (scenario.controlDevice) {
        environment.push_back("ZRGPS_CTL_RECORD=" + work.File(kDriverFile));
    }
    // In the sanitizer build the double is loaded ahead of the sanitizer runtime, which otherwise
    // refuses to start; elsewhere nothing reads the variable.
    const char* given = std::getenv("ASAN_OPTIONS");
    environment.push_back("ASAN_OPTIONS=" + std::string(given != nullptr ? given : "") + ":verify_asan_link_order=0");
    return environment;
}

// The simulator runs the tool and ends with its status; --quiet leaves the tool's standard error
// to the tool.
ProcessResult RunAgainstSimulator(const Scenario& scenario, const WorkFolder& work)
{
    std::vector<std::string> simulator = scenario.simulator;
    simulator.insert(simulator.end(), {"--quiet", "--link", scenario.port, "--heard", work.File(kHeardFile),
                                       "--log", work.File(kWireLogFile), "--"});
    const std::vector<std::string> tool =
        BuiltProgramCommand(GNSS_SETUP_PROGRAM, "gnss-setup", scenario.arguments, ToolEnvironment(scenario, work));
    simulator.insert(simulator.end(), tool.begin(), tool.end());
    return RunBuiltProgram(GNSS_SIM_PROGRAM, "gnss-sim", simulator);
}

Outcome RunScenario(const Scenario& scenario, const WorkFolder& work)
{
    // The double appends to its record, and an earlier run's transcript must not stand in for one
    // that was not written.
    work.Clear();
    const ProcessResult result =
        !scenario.simulator.empty()
            ? RunAgainstSimulator(scenario, work)
            : RunBuiltProgram(GNSS_SETUP_PROGRAM, "gnss-setup", scenario.arguments, ToolEnvironment(scenario, work));
    Outcome outcome;
    outcome.out = NormaliseLogTimes(result.out);
    outcome.err = WithoutEmulatorReport(NormaliseLogTimes(result.err));
    outcome.status = std::to_string(result.status) + "\n";
    outcome.heard = ReadFileOrNothing(work.File(kHeardFile));
    // The double writes nothing, not even the file, when the tool makes no request.
    outcome.driver = ReadFileOrNothing(work.File(kDriverFile));
    return outcome;
}

struct Golden {
    const char* file;
    std::string actual;
};

// Every golden file the scenario has: the transcript only with a receiver, the driver record only
// when the control device is there to record.
std::vector<Golden> GoldensOf(const Scenario& scenario, const Outcome& outcome)
{
    std::vector<Golden> goldens = {
        {"stdout.txt", outcome.out}, {"stderr.txt", outcome.err}, {"status.txt", outcome.status}};
    if (!scenario.simulator.empty()) {
        goldens.push_back({kHeardFile, outcome.heard});
    }
    if (scenario.controlDevice) {
        goldens.push_back({kDriverFile, outcome.driver});
    }
    return goldens;
}

// The difference of every golden file from the outcome, for a person to read; empty when all match.
std::string DifferencesFromGoldens(const Scenario& scenario, const Outcome& outcome)
{
    std::string differences;
    for (const Golden& golden : GoldensOf(scenario, outcome)) {
        const std::string path = scenario.folder + "/" + golden.file;
        bool found = false;
        const std::string expected = ReadWholeFile(path, found);
        if (!found) {
            differences += path + " is missing; " + kUpdateVariable + "=1 writes it\n";
            continue;
        }
        const std::string diff = LineDiff(expected, golden.actual);
        if (!diff.empty()) {
            differences += path + " differs (- golden, + this run):\n" + diff;
        }
    }
    return differences;
}

bool SameOutcome(const Outcome& one, const Outcome& other)
{
    return one.out == other.out && one.err == other.err && one.status == other.status &&
           one.heard == other.heard && one.driver == other.driver;
}

// The receiver heard the tool at a speed other than its own: the tool changed speed under it.
bool ChangesSpeed(const std::string& heard)
{
    return heard.find("noise at ") != std::string::npos;
}

bool GoldenTranscriptChangesSpeed(const Scenario& scenario)
{
    bool found = false;
    return ChangesSpeed(ReadWholeFile(scenario.folder + "/" + kHeardFile, found));
}

// How many runs a scenario in which the tool changes speed gets before a difference counts.
// gnss-sim judges the speed of what the tool wrote when it reads it; on a loaded machine it can
// read late, after the tool has moved on to its next speed, and hear a line where there was
// noise. The tool does the same every time, so a real difference shows in every run.
constexpr int kRunsWhenSpeedChanges = 3;

void ExpectGoldenOutcome(const Scenario& scenario, const WorkFolder& work)
{
    const bool speedChanges = GoldenTranscriptChangesSpeed(scenario);
    for (int run = 1;; ++run) {
        const std::string differences = DifferencesFromGoldens(scenario, RunScenario(scenario, work));
        if (differences.empty()) {
            return;
        }
        if (!speedChanges || run == kRunsWhenSpeedChanges) {
            ADD_FAILURE() << (run > 1 ? "Every one of " + std::to_string(run) + " runs differed; the last:\n" : "")
                          << differences;
            return;
        }
        std::cout << "Run " << run << " differed; the tool changes speed, so it runs again:\n" << differences;
    }
}

void WriteGolden(const Scenario& scenario, const Golden& golden)
{
    const std::string path = scenario.folder + "/" + golden.file;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << golden.actual;
    EXPECT_TRUE(file.good()) << "cannot write " << path;
}

// A run that the simulator misjudged must not become a golden file: where the tool changes speed,
// two runs in a row have to agree first.
void UpdateGoldens(const Scenario& scenario, const WorkFolder& work)
{
    Outcome outcome = RunScenario(scenario, work);
    for (int run = 2; ChangesSpeed(outcome.heard); ++run) {
        const Outcome next = RunScenario(scenario, work);
        if (SameOutcome(outcome, next)) {
            break;
        }
        if (run == kRunsWhenSpeedChanges) {
            ADD_FAILURE() << "No two runs in a row agreed; no golden file written";
            return;
        }
        outcome = next;
    }
    for (const Golden& golden : GoldensOf(scenario, outcome)) {
        WriteGolden(scenario, golden);
    }
}

TEST(EndToEnd, MatchesItsGoldenFiles)
{
    const char* name = std::getenv("GNSS_E2E_SCENARIO");
    ASSERT_TRUE(name != nullptr) << "GNSS_E2E_SCENARIO names no scenario folder; ctest sets it";
    const Scenario scenario = ReadScenario(name);
    if (HasFailure()) {
        return;
    }
    const std::string whyNot = scenario.port.empty() ? "" : WhyPortIsNotOurs(scenario.port);
    if (!whyNot.empty()) {
        GTEST_SKIP() << whyNot;
    }
    // The "$PMCAG" scenario ends the tool by SIGFPE, whose default action dumps core: a core file
    // in the build tree on a machine that allows them would only be in the way.
    const rlimit noCoreFiles = {0, 0};
    setrlimit(RLIMIT_CORE, &noCoreFiles);
    const WorkFolder work;
    ASSERT_TRUE(work.Made()) << "no scratch folder";
    if (UpdatingGoldenFiles()) {
        UpdateGoldens(scenario, work);
    } else {
        ExpectGoldenOutcome(scenario, work);
    }
}

}  // namespace
