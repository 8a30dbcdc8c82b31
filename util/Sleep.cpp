#include "util/Sleep.h"

#include <cerrno>
#include <ctime>

void SleepMs(int ms)
{
    if (ms <= 0) {
        return;
    }
    timespec remaining{ms / 1000, static_cast<long>(ms % 1000) * 1000000L};
    while (nanosleep(&remaining, &remaining) == -1 && errno == EINTR) {
    }
}
