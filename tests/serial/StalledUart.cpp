#include "tests/serial/StalledUart.h"

#include "util/Sleep.h"

#include <dlfcn.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdarg>

namespace {

int g_stalledFd = -1;
int g_queuedBytes = 0;
bool g_discarded = false;
int g_queueLooks = 0;

bool HoldsOutput(int fd)
{
    return fd == g_stalledFd && g_queuedBytes > 0;
}

// The C library's function of that name, which this program's own definition hides.
template <typename Function>
Function* Library(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

namespace StalledUart {

void Stall(int fd, int queuedBytes)
{
    g_stalledFd = fd;
    g_queuedBytes = queuedBytes;
    g_discarded = false;
    g_queueLooks = 0;
}

bool OutputDiscarded()
{
    return g_discarded;
}

int QueueLooks()
{
    return g_queueLooks;
}

}  // namespace StalledUart

extern "C" int tcdrain(int fd)
{
    if (HoldsOutput(fd)) {
        SleepMs(StalledUart::kHeldMs);
    }
    return Library<int(int)>("tcdrain")(fd);
}

extern "C" int tcflush(int fd, int queueSelector) noexcept
{
    if (fd == g_stalledFd && (queueSelector == TCOFLUSH || queueSelector == TCIOFLUSH)) {
        g_discarded = g_queuedBytes > 0;
        g_queuedBytes = 0;
    }
    return Library<int(int, int)>("tcflush")(fd, queueSelector);
}

extern "C" int close(int fd)
{
    if (HoldsOutput(fd)) {
        SleepMs(StalledUart::kHeldMs);
    }
    if (fd == g_stalledFd) {
        g_stalledFd = -1;
    }
    return Library<int(int)>("close")(fd);
}

extern "C" int ioctl(int fd, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (fd == g_stalledFd && request == TIOCOUTQ) {
        ++g_queueLooks;
        *static_cast<int*>(argument) = g_queuedBytes;
        return 0;
    }
    return Library<int(int, unsigned long, ...)>("ioctl")(fd, request, argument);
}
