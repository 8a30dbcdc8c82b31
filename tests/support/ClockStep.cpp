#include "tests/support/ClockStep.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace ClockStep {

std::string WhyUnavailable()
{
    const std::string library = GNSS_CLOCK_STEP_LIBRARY;
    if (!library.empty() && access(library.c_str(), R_OK) == 0) {
        return "";
    }
    return "libfaketime is missing (scripts/install-deps installs it)";
}

std::string Preload()
{
    return GNSS_CLOCK_STEP_LIBRARY;
}

ProgramEnvironment Variables(const std::string& offsetFile)
{
    SetOffset(offsetFile, 0);
    // Named FAKETIME_DONT_FAKE_MONOTONIC in Debian 12's libfaketime 0.9.10.
    return {"FAKETIME_TIMESTAMP_FILE=" + offsetFile, "FAKETIME_NO_CACHE=1", "FAKETIME_DONT_FAKE_MONOTONIC=1"};
}

void SetOffset(const std::string& offsetFile, long seconds)
{
    // Renamed into place, so that the program never reads a file half written.
    const std::string written = offsetFile + ".new";
    std::ofstream(written) << (seconds < 0 ? "" : "+") << seconds << "\n";
    // A step that silently did not happen would let a test pass that never saw it.
    if (std::rename(written.c_str(), offsetFile.c_str()) != 0) {
        throw std::runtime_error("cannot step the clock: " + offsetFile + " not replaced");
    }
}

}  // namespace ClockStep
