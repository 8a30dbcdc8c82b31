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
    return GetBoardGeneration() != 0 ? "/dev/ttymxc0" : "/dev/ttyS0";
}
