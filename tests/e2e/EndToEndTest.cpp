// End to end: the built gnss-setup against gnss-sim through one of the console's /dev/ttyO*
// names, with the control device double preloaded into the tool, and everything that came out of
// the run compared with the golden files in the scenario's folder, which ctest names in
// GNSS_E2E_SCENARIO. GNSS_UPDATE_GOLDEN=1 rewrites the golden files instead (README.md).
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <regex>
#include <sstream>

#include "tests/support/ProcessRunner.h"
#include "tests/support/SimulatedRun.h"
#include "tests/support/TextFiles.h"
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

// Each line with its line end, so that a missing last line end shows too.
std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
    return lines;
}

// A NovAtel log carries the receiver's time of week and a CRC over it, and the simulator's clock
// runs from its start: they are written as <seconds> and <crc>, and the rest of the log, and where
// it stands, must still match. Under qemu-arm the emulator reports a signal that ended the tool on
// the tool's standard error; the console shows no such line.
std::string Normalised(const std::string& output)
{
    static const std::regex logTime(
        R"((#[A-Z]+A,[^,;\n]*,[^,;\n]*,[^,;\n]*,[^,;\n]*,[^,;\n]*,)[0-9]+\.[0-9]+(,[^;\n]*;[^*\n]*\*)[0-9a-f]{8})");
    static const std::regex emulatorReport(R"(qemu: uncaught target signal [^\n]*\n)");
    return std::regex_replace(std::regex_replace(output, logTime, "$1<seconds>$2<crc>"), emulatorReport, "");
}

// What a run left, by the golden file that holds it: the transcript only with a receiver, the
// driver record only when the control device is there. The scratch folder holds the same files,
// beside the wire log.
using Outcome = std::map<std::string, std::string>;

Outcome Run(const Scenario& scenario, const std::string& scratch)
{
    // The double appends to its record and writes nothing when the tool makes no request, and an
    // earlier run's transcript must not stand in for one that was not written.
    for (const char* file : {"heard.txt", "driver.txt", "wire.log"}) {
        unlink((scratch + file).c_str());
    }
    const ProgramEnvironment environment =
        ToolEnvironment(ZRGPS_CTL_DOUBLE, scenario.controlDevice ? scratch + "driver.txt" : "");
    const std::vector<std::string> tool =
        BuiltProgramCommand(GNSS_SETUP_PROGRAM, "gnss-setup", scenario.arguments, environment);
    const ProcessResult result =
        scenario.simulator.empty()
            ? RunBuiltProgram(GNSS_SETUP_PROGRAM, "gnss-setup", scenario.arguments, environment)
            : RunBuiltProgram(GNSS_SIM_PROGRAM, "gnss-sim",
                              SimulatorArguments(scenario.simulator, scenario.port, scratch, tool));
    Outcome outcome = {{"stdout.txt", Normalised(result.out)},
                       {"stderr.txt", Normalised(result.err)},
                       {"status.txt", std::to_string(result.status) + "\n"}};
    if (!scenario.simulator.empty()) {
        outcome["heard.txt"] = ReadWholeFile(scratch + "heard.txt");
    }
    if (scenario.controlDevice) {
        outcome["driver.txt"] = ReadWholeFile(scratch + "driver.txt");
    }
    for (const char* file : {"stdout.txt", "stderr.txt", "status.txt"}) {
        std::ofstream(scratch + file, std::ios::binary) << outcome[file];
    }
    return outcome;
}

// gnss-sim judges the speed of what the tool wrote when it reads it; on a loaded machine it can
// read late, after the tool has moved on to its next speed, and hear a line where there was noise.
// Where the tool changes speed under the receiver (its transcript has "noise at" lines), a
// scenario runs up to three times before a difference counts, and two runs in a row must agree
// before they are written as golden files. The tool does the same every time, so a real difference
// shows in every run.
constexpr int kRunsWhenSpeedChanges = 3;

bool ChangesSpeed(const Outcome& outcome)
{
    const auto heard = outcome.find("heard.txt");
    return heard != outcome.end() && heard->second.find("noise at ") != std::string::npos;
}

void ExpectGoldenOutcome(const Scenario& scenario, const std::string& scratch)
{
    Outcome outcome = Run(scenario, scratch);
    Outcome goldens;
    for (const auto& file : outcome) {
        const std::string path = scenario.folder + "/" + file.first;
        EXPECT_TRUE(std::ifstream(path).is_open()) << path << " is missing; GNSS_UPDATE_GOLDEN=1 writes it";
        goldens[file.first] = ReadWholeFile(path);
    }
    for (int run = 1; run < kRunsWhenSpeedChanges && outcome != goldens && ChangesSpeed(goldens); ++run) {
        std::cout << "Run " << run << " differed; the tool changes speed, so it runs again\n";
        outcome = Run(scenario, scratch);
    }
    // The first line that differs in each file, as the golden file and this run have it; a line
    // that one of them lacks shows as "".
    for (const auto& file : outcome) {
        std::vector<std::string> golden = Lines(goldens[file.first]);
        std::vector<std::string> thisRun = Lines(file.second);
        golden.resize(std::max(golden.size(), thisRun.size()));
        thisRun.resize(golden.size());
        const auto at = std::mismatch(golden.begin(), golden.end(), thisRun.begin());
        if (at.first != golden.end()) {
            const std::string& goldenLine = *at.first;
            const std::string& thisRunLine = *at.second;
            EXPECT_EQ(goldenLine, thisRunLine)
                << scenario.folder << "/" << file.first << " differs from this run at line "
                << at.first - golden.begin() + 1 << "; diff it with " << scratch << file.first
                << ", beside the run's other output, transcript, driver record and wire log";
        }
    }
}

void UpdateGoldenFiles(const Scenario& scenario, const std::string& scratch)
{
    Outcome outcome = Run(scenario, scratch);
    for (int run = 2; ChangesSpeed(outcome); ++run) {
        const Outcome next = Run(scenario, scratch);
        if (next == outcome) {
            break;
        }
        ASSERT_LT(run, kRunsWhenSpeedChanges) << "No two runs in a row agreed; no golden file written";
        outcome = next;
    }
    for (const auto& file : outcome) {
        const std::string path = scenario.folder + "/" + file.first;
        EXPECT_TRUE((std::ofstream(path, std::ios::binary | std::ios::trunc) << file.second).good())
            << "cannot write " << path;
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
    // The scratch folder is kept, for a person to look into after a failure.
    const std::string scratch = std::string(GNSS_SCRATCH) + "/" + name + "/";
    mkdir(GNSS_SCRATCH, 0755);
    mkdir(scratch.c_str(), 0755);
    const char* update = std::getenv("GNSS_UPDATE_GOLDEN");
    if (update != nullptr && std::string(update) == "1") {
        UpdateGoldenFiles(scenario, scratch);
    } else {
        ExpectGoldenOutcome(scenario, scratch);
    }
}

}  // namespace
