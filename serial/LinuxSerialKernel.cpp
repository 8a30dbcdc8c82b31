#include "serial/LinuxSerialKernel.h"

#include <linux/serial.h>
#include <sys/ioctl.h>

#include <cstring>

namespace {

struct BaudSpeed {
    int baud;
    speed_t speed;
};

// The standard rates only: the console's UARTs are never driven at the kernel's extended ones.
constexpr BaudSpeed kBaudSpeeds[] = {
    {50, B50},         {75, B75},         {110, B110},       {134, B134},       {150, B150},
    {200, B200},       {300, B300},       {600, B600},       {1200, B1200},     {1800, B1800},
    {2400, B2400},     {4800, B4800},     {9600, B9600},     {19200, B19200},   {38400, B38400},
    {57600, B57600},   {115200, B115200}, {230400, B230400},
};

// A byte on the wire: start bit, 8 data bits, stop bit.
constexpr long kBitsPerByte = 10;

// What a driver or adapter may take beyond the bytes' own time (see DrainLimitMs).
constexpr long kDrainAllowanceMs = 100;

// The counters travel in the kernel's 80-byte structure; it is zeroed first so that a request
// the driver rejects reads as no errors at all.
static_assert(sizeof(serial_icounter_struct) == 80, "TIOCGICOUNT buffer has the kernel's size");

}  // namespace

void SetRawEightNoneOne(termios* attributes)
{
    cfmakeraw(attributes);
    attributes->c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB | CRTSCTS);
    attributes->c_cflag |= CS8 | CLOCAL | CREAD;
    attributes->c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
}

bool MapBaudToSpeed(int baud, speed_t* speed)
{
    for (const BaudSpeed& row : kBaudSpeeds) {
        if (row.baud == baud) {
            *speed = row.speed;
            return true;
        }
    }
    return false;
}

int QueryFrameErrorCounter(int fd, int* frameErrors)
{
    serial_icounter_struct counters;
    std::memset(&counters, 0, sizeof counters);
    const int result = ioctl(fd, TIOCGICOUNT, &counters);
    *frameErrors = counters.frame;
    return result;
}

int QueuedOutputBytes(int fd, int* queued)
{
    *queued = 0;
    return ioctl(fd, TIOCOUTQ, queued);
}

long TransmitMs(long bytes, int baud)
{
    const long long bits = static_cast<long long>(bytes) * kBitsPerByte * 1000;
    return static_cast<long>((bits + baud - 1) / baud);
}

long DrainLimitMs(int queuedBytes, int baud)
{
    return 2 * TransmitMs(queuedBytes, baud) + kDrainAllowanceMs;
}
