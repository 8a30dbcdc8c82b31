#include "cmdline/BoardGeneration.h"

namespace {

constexpr int kConsoleBoardGeneration = 4;

}  // namespace

int GetBoardGeneration()
{
    return kConsoleBoardGeneration;
}

std::string DefaultGpsPort()
{
    // The generation is fixed for this console until the platform's own query replaces the one above.
    // cppcheck-suppress knownConditionTrueFalse
    return GetBoardGeneration() != 0 ? "/dev/ttymxc0" : "/dev/ttyS0";
}
