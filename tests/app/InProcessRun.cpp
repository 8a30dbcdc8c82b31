#include "tests/app/InProcessRun.h"

#include <gtest/gtest.h>
#include <tclap/CmdLine.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "app/RunDriver.h"
#include "tests/support/PathComPort.h"

const char* const kConsolePort = "/dev/ttyO1";

bool DriverHandOver::operator==(const DriverHandOver& other) const
{
    return type == other.type && firmware == other.firmware &&
           extendedVersion == other.extendedVersion && model == other.model;
}

void PrintTo(const DriverHandOver& told, std::ostream* os)
{
    *os << "{" << told.type << ", \"" << told.firmware << "\", \"" << told.extendedVersion
        << "\", \"" << told.model << "\"}";
}

RunOutcome RunInProcess(const std::string& devicePath, std::vector<const char*> arguments,
                        PortMessages portMessages)
{
    arguments.insert(arguments.begin(), "gnss-setup");
    std::ostringstream out;
    std::ostringstream err;
    RunOutcome outcome;
    const RunCollaborators with{
        [&](const std::string& path) -> std::unique_ptr<CComPort> {
            outcome.requestedPorts.push_back(path);
            return std::make_unique<PathComPort>(devicePath);
        },
        [&](int type, const std::string& firmware, const std::string& extendedVersion,
            const std::string& model) {
            outcome.driverTold.push_back({type, firmware, extendedVersion, model});
        },
        out,
        err,
    };
    const int argc = static_cast<int>(arguments.size());
    if (portMessages == PortMessages::Left) {
        outcome.status = RunGnssSetup(argc, arguments.data(), with);
    } else {
        testing::internal::CaptureStderr();
        outcome.status = RunGnssSetup(argc, arguments.data(), with);
        outcome.processErr = testing::internal::GetCapturedStderr();
    }
    outcome.out = out.str();
    outcome.err = err.str();
    return outcome;
}

GnssSim::SimOptions ShortRestartOptions(const std::string& receiver)
{
    GnssSim::SimOptions options;
    options.receiver = receiver;
    options.restartMs = kShortRestartMs;
    return options;
}

SimulatedLine::SimulatedLine(const std::string& receiver)
    : SimulatedLine(ShortRestartOptions(receiver))
{
}

SimulatedLine::SimulatedLine(const GnssSim::SimOptions& options)
    : m_sim(std::make_unique<GnssSim::Simulator>(options))
{
    std::string error;
    if (!m_sim->Start(error)) {
        throw std::runtime_error("simulator: " + error);
    }
}

RunOutcome SimulatedLine::Run(std::vector<const char*> arguments, PortMessages portMessages)
{
    arguments.push_back(kConsolePort);
    return RunInProcess(m_sim->SlavePath(), arguments, portMessages);
}

std::vector<std::string> SimulatedLine::Heard(bool includeEmpty)
{
    EXPECT_TRUE(m_sim->WaitForQuiet());
    return m_sim->HeardLines(includeEmpty);
}

long IndexOf(const std::vector<std::string>& lines, const std::string& line)
{
    const auto found = std::find(lines.begin(), lines.end(), line);
    return found == lines.end() ? -1 : static_cast<long>(found - lines.begin());
}

long CountOf(const std::vector<std::string>& lines, const std::string& line)
{
    return static_cast<long>(std::count(lines.begin(), lines.end(), line));
}

std::string LastOf(const std::vector<std::string>& lines)
{
    return lines.empty() ? std::string() : lines.back();
}
