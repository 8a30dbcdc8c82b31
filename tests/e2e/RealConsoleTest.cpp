// The built gnss-setup against gnss-sim under what a console's boot does to it and a
// pseudo-terminal alone never shows (docs/real-console.md): the wall clock stepped an hour back or
// forward while the tool waits, and the tool started as a session leader whose line hangs up.
// Each run is made twice at the same time, each in a /dev of its own (scripts/private-dev): as it
// is, and under the condition. Both must end as the scenario says, the one under the condition no
// later than the other by more than a scheduling delay, and a wait that a clock step fell into must
// keep its length on the wire.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ClockStep.h"
#include "tests/support/ProcessRunner.h"
#include "tests/support/SimulatedRun.h"
#include "tests/support/TestTiming.h"
#include "tests/support/TextFiles.h"
#include "tests/support/WireLogWatch.h"
#include "util/Stopwatch.h"

namespace {

const char kPort[] = "/dev/ttyO1";

// A tool that waits for a stepped-back wall clock to come back waits an hour; it is stopped after
// this, far beyond the slowest scenario here even under qemu-arm.
const char kRunCapSeconds[] = "120";

struct Scenario {
    const char* name;
    std::vector<std::string> simulator;  // gnss-sim's receiver and faults
    std::vector<std::string> arguments;  // the tool's, before the port
    // Where a clock step falls: once the receiver has read these bytes (as the wire log writes
    // them), the tool waits waitMs for an answer that does not come before it writes again.
    std::string stepWhenHeard;
    long waitMs;
    // How the run must end, with and without the condition.
    int status;
    std::string stdoutPattern;  // an ECMAScript regular expression the whole output must match
    int driverType;             // told in four requests; -1 when the driver is told nothing
};

const Scenario kSilentDetection = {
    "SilentDetection", {"--receiver", "silent"}, {"-Q"},
    // The "$JAPP" probe listens for 3 s.
    "$JAPP", 3000,
    0, "Receiver \n  Type:        Unknown\n  Firmware:    \n", -1};

const Scenario kDetectionAt9600 = {
    "DetectionAt9600", {"--receiver", "oem6", "--baud", "9600"}, {"-Q"},
    // The first version request, at 115200 baud, which the receiver takes for noise: a 1 s wait.
    "log versiona once", 1000,
    0, "Receiver \n  Type:        OEM6\n  Firmware:    060600\n", -1};

const Scenario kConfiguration = {
    "Configuration", {"--receiver", "oem7700", "--no-answer", "SBASCONTROL ENABLE"}, {"--use-sbas", "-p", "133"},
    // An exchange that is never answered waits its 1 s.
    R"(SBASCONTROL ENABLE\r\n)", 1000,
    0, "", 11};

// The line hangs up right after the answer that identifies the receiver (270 bytes), so the rest
// of the run talks to a receiver that stopped answering; the firmware may or may not have come.
const Scenario kQueryHangingUp = {
    "QueryHangingUp", {"--receiver", "oem7700", "--hang-up-after", "270"}, {"-Q"}, "", 0,
    0, "Receiver \n  Type:        OEM 7700\n  Firmware:    (070600)?\n", -1};

const Scenario kConfigurationHangingUp = {
    "ConfigHangUp", {"--receiver", "oem7700", "--hang-up-after", "270"}, {}, "", 0, 0, "", 11};

enum class Condition { ClockBack, ClockForward, SessionLeader };

struct Param {
    Scenario scenario;
    Condition condition;
};

const char* NameOf(Condition condition)
{
    switch (condition) {
    case Condition::ClockBack: return "ClockBack";
    case Condition::ClockForward: return "ClockForward";
    default: return "SessionLeader";
    }
}

bool StepsTheClock(Condition condition)
{
    return condition == Condition::ClockBack || condition == Condition::ClockForward;
}

struct ToolRun {
    ProcessResult result;
    long elapsedMs = 0;
    std::string driverRecord;
    bool stepped = false;
    long quietAfterStepMs = -1;
};

// The scenario's run under the condition, or (applied false) the same run without it, which for a
// clock step still has the clock's stand-in preloaded.
ToolRun RunTool(const Scenario& scenario, Condition condition, bool applied)
{
    const std::string scratch = std::string(GNSS_SCRATCH) + "/" + scenario.name + "_" +
                                NameOf(condition) + (applied ? "" : "-without") + "/";
    const bool withFaketime = StepsTheClock(condition);
    mkdir(GNSS_SCRATCH, 0755);
    mkdir(scratch.c_str(), 0755);
    for (const char* file : {"heard.txt", "driver.txt", "wire.log"}) {
        unlink((scratch + file).c_str());
    }
    const std::string offsetFile = scratch + "clock-offset";
    ProgramEnvironment environment =
        ToolEnvironment(ZRGPS_CTL_DOUBLE, scratch + "driver.txt", withFaketime ? ClockStep::Preload() : "");
    if (withFaketime) {
        const ProgramEnvironment clock = ClockStep::Variables(offsetFile);
        environment.insert(environment.end(), clock.begin(), clock.end());
    }
    std::vector<std::string> arguments = scenario.arguments;
    arguments.push_back(kPort);
    std::vector<std::string> tool = BuiltProgramCommand(GNSS_SETUP_PROGRAM, "gnss-setup", arguments, environment);
    if (applied && condition == Condition::SessionLeader) {
        tool.insert(tool.begin(), {"setsid", "-w"});
    }
    tool.insert(tool.begin(), {"timeout", "-s", "KILL", kRunCapSeconds});
    const std::vector<std::string> simulator =
        BuiltProgramCommand(GNSS_SIM_PROGRAM, "gnss-sim", SimulatorArguments(scenario.simulator, kPort, scratch, tool), {});

    ToolRun run;
    {
        std::optional<WireLogWatch> watch;
        if (applied && withFaketime) {
            const long step = condition == Condition::ClockBack ? -ClockStep::kStepSeconds : ClockStep::kStepSeconds;
            watch.emplace(scratch + "wire.log", scenario.stepWhenHeard,
                          [offsetFile, step] { ClockStep::SetOffset(offsetFile, step); });
        }
        const Stopwatch clock;
        run.result = RunHostProgram(GNSS_PRIVATE_DEV, simulator);
        run.elapsedMs = clock.ElapsedMs();
        run.stepped = watch && watch->Fired();
    }
    run.driverRecord = ReadWholeFile(scratch + "driver.txt");
    if (applied && withFaketime) {
        run.quietAfterStepMs = QuietAfterMs(scratch + "wire.log", scenario.stepWhenHeard);
    }
    return run;
}

void ExpectEndsAsTheScenarioSays(const Scenario& scenario, const ToolRun& run, const char* which)
{
    EXPECT_EQ(scenario.status, run.result.status) << which;
    EXPECT_TRUE(std::regex_match(run.result.out, std::regex(scenario.stdoutPattern)))
        << which << " printed \"" << run.result.out << "\"";
    EXPECT_EQ("", run.result.err) << which;
    EXPECT_EQ(scenario.driverType, DriverTypeTold(run.driverRecord)) << which;
    EXPECT_EQ(scenario.driverType == -1 ? 0 : 4, DriverRequestsTold(run.driverRecord)) << which;
}

void PrintTo(const Param& param, std::ostream* out)
{
    *out << param.scenario.name << " " << NameOf(param.condition);
}

class RealConsole : public testing::TestWithParam<Param> {};

TEST_P(RealConsole, Undisturbed)
{
    const std::string noPrivateDev = WhyNoPrivateDev(GNSS_PRIVATE_DEV);
    if (!noPrivateDev.empty()) {
        GTEST_SKIP() << noPrivateDev;
    }
    const Scenario& scenario = GetParam().scenario;
    const Condition condition = GetParam().condition;
    const bool clock = StepsTheClock(condition);
    if (clock && !ClockStep::WhyUnavailable().empty()) {
        GTEST_SKIP() << ClockStep::WhyUnavailable();
    }
    ToolRun reference;
    std::thread referenceRun([&] { reference = RunTool(scenario, condition, false); });
    const ToolRun run = RunTool(scenario, condition, true);
    referenceRun.join();

    ExpectEndsAsTheScenarioSays(scenario, reference, "without the condition");
    ExpectEndsAsTheScenarioSays(scenario, run, NameOf(condition));
    const long allowanceMs = std::max(reference.elapsedMs / 10, kSchedulingSlackMs);
    EXPECT_LE(run.elapsedMs, reference.elapsedMs + allowanceMs) << "without the condition it took "
                                                               << reference.elapsedMs << " ms";
    if (clock) {
        ASSERT_TRUE(run.stepped) << "the receiver never heard \"" << scenario.stepWhenHeard << "\"";
        // The receiver may read what started the wait a little late; a tenth covers that.
        EXPECT_GE(run.quietAfterStepMs, scenario.waitMs - scenario.waitMs / 10)
            << "the wait the step fell into did not keep its length";
    }
}

std::vector<Param> AllParams()
{
    std::vector<Param> params;
    for (const Scenario& scenario : {kSilentDetection, kDetectionAt9600, kConfiguration}) {
        params.push_back({scenario, Condition::ClockBack});
        params.push_back({scenario, Condition::ClockForward});
    }
    params.push_back({kQueryHangingUp, Condition::SessionLeader});
    params.push_back({kConfigurationHangingUp, Condition::SessionLeader});
    return params;
}

std::string ParamName(const testing::TestParamInfo<Param>& info)
{
    return std::string(info.param.scenario.name) + "_" + NameOf(info.param.condition);
}

INSTANTIATE_TEST_SUITE_P(Boot, RealConsole, testing::ValuesIn(AllParams()), ParamName);

}  // namespace
