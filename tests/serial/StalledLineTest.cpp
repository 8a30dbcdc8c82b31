// A line whose output does not leave (StalledUart.h): the port's drain and close give up on it
// within a limit instead of waiting with it.
#include "serial/LinuxSerialKernel.h"
#include "tests/serial/PortOnPseudoTerminal.h"
#include "tests/serial/StalledUart.h"
#include "tests/support/TestTiming.h"
#include "util/Stopwatch.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {

TEST(DrainLimit, IsTwiceTheWireTimePlusATenth)
{
    struct Row {
        const char* name;
        int queuedBytes, baud;
        long limitMs;
    } const rows[] = {
        {"nothing queued", 0, 9600, 100},
        {"one byte at 115200 takes a part of a millisecond", 1, 115200, 2 * 1 + 100},
        {"a speed switch command pair at 9600", 40, 9600, 2 * 42 + 100},
        {"a full 4 KiB queue at 9600", 4096, 9600, 2 * 4267 + 100},
        {"the same at 230400", 4096, 230400, 2 * 178 + 100},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.limitMs, DrainLimitMs(row.queuedBytes, row.baud)) << row.name;
    }
}

// The descriptor the next open() gets: the lowest free one.
int NextDescriptor()
{
    const int probe = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(probe);
    return probe;
}

bool IsOpenDescriptor(int fd)
{
    return fcntl(fd, F_GETFD) != -1;
}

TEST(StalledLine, DrainGivesUpAndCloseDiscardsWhatNeverLeft)
{
    struct Row {
        const char* name;
        int queuedBytes, baud;
    } const rows[] = {
        {"a byte", 1, 9600},
        {"a speed switch command pair", 40, 9600},
    };
    for (const Row& row : rows) {
        PseudoTerminal pty;
        PathComPort port(pty.SlavePath());
        ASSERT_EQ(0, port.SetBaudRate(row.baud));
        const int portFd = NextDescriptor();
        ASSERT_EQ(0, port.Open());
        StalledUart::Stall(portFd, row.queuedBytes);

        const long limitMs = DrainLimitMs(row.queuedBytes, row.baud);
        Stopwatch clock;
        errno = 0;
        EXPECT_EQ(-1, port.Drain()) << row.name;
        EXPECT_EQ(ETIMEDOUT, errno) << row.name;
        EXPECT_GE(clock.ElapsedMs(), limitMs) << row.name;
        EXPECT_LT(clock.ElapsedMs(), limitMs + kSchedulingSlackMs) << row.name;
        // Between looks at the queue it sleeps for as long as the queued bytes take on the wire.
        EXPECT_LE(StalledUart::QueueLooks(), limitMs / TransmitMs(row.queuedBytes, row.baud) + 2) << row.name;

        clock.Restart();
        EXPECT_EQ(0, port.Close()) << row.name;
        EXPECT_LT(clock.ElapsedMs(), limitMs + kSchedulingSlackMs) << row.name;
        EXPECT_TRUE(StalledUart::OutputDiscarded()) << row.name;
        EXPECT_FALSE(IsOpenDescriptor(portFd)) << row.name;
    }
}

// Output that leaves is never discarded: on a working line, drain and close just let it go out.
TEST(StalledLine, WorkingLineDrainsAndClosesWithOutputSent)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    const int portFd = NextDescriptor();
    ASSERT_EQ(0, port.Open());
    StalledUart::Stall(portFd, 0);
    int written = 0;
    ASSERT_EQ(0, port.WriteString("echo off\r\n", &written));
    EXPECT_EQ(0, port.Drain());
    EXPECT_EQ(0, port.Close());
    EXPECT_FALSE(StalledUart::OutputDiscarded());
    EXPECT_EQ("echo off\r\n", pty.ReceiveUntilQuiet(kQuietMs));
}

}  // namespace
