#include "tests/app/InProcessRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>

#include "app/RunDriver.h"
#include "tests/support/SimulatedReceiver.h"

bool operator==(const RunOutcome& left, const RunOutcome& right)
{
    return std::tie(left.status, left.out, left.err, left.told) ==
           std::tie(right.status, right.out, right.err, right.told);
}

void PrintTo(const RunOutcome& outcome, std::ostream* os)
{
    *os << testing::PrintToString(std::tie(outcome.status, outcome.out, outcome.err, outcome.told));
}

RunOutcome RunOn(const std::string& linePath, std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "gnss-setup");
    std::ostringstream out;
    std::ostringstream err;
    RunOutcome outcome{};
    const RunCollaborators with{
        [&](const std::string& /*path*/) -> std::unique_ptr<CComPort> {
            return std::make_unique<PathComPort>(linePath);
        },
        [&](int type, const std::string& firmware, const std::string& extendedVersion,
            const std::string& model) {
            outcome.told.emplace_back(type, firmware, extendedVersion, model);
        },
        out,
        err,
    };
    outcome.status = RunGnssSetup(static_cast<int>(arguments.size()), arguments.data(), with);
    outcome.out = out.str();
    outcome.err = err.str();
    return outcome;
}

RunOutcome RunAgainst(const SimulatedReceiver& receiver, std::vector<const char*> arguments)
{
    arguments.push_back(kConsolePort);
    return RunOn(receiver.LinePath(), arguments);
}

Lines StepsHeard(const Lines& heard, const Lines& steps)
{
    Lines found;
    std::copy_if(heard.begin(), heard.end(), std::back_inserter(found),
                 [&](const std::string& line) {
                     return std::find(steps.begin(), steps.end(), line) != steps.end();
                 });
    return found;
}
