#include "serial/CLinuxComPort.h"

#include "serial/LinuxSerialKernel.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"

#include <fcntl.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

static_assert(sizeof(speed_t) == sizeof(unsigned int), "the speed code is kept as unsigned int");

namespace {

// A time-out of -1: ReadUntil waits without limit, ReadByte reads once without waiting.
constexpr int kNoTimeLimit = -1;

// TakeByte's answer when ReadUntil goes on to the next byte.
constexpr int kKeepReading = -1;

timeval ToTimeval(int ms)
{
    timeval wait{};
    wait.tv_sec = ms / 1000;
    wait.tv_usec = static_cast<suseconds_t>(ms % 1000) * 1000;
    return wait;
}

// Whole milliseconds left of the time-out, never negative: the last pass is a poll. The elapsed
// time is rounded down, so a read never ends before its time-out has passed in full.
int RemainingMs(int timeoutMs, const Stopwatch& clock)
{
    const long remaining = timeoutMs - clock.ElapsedMs();
    return remaining < 0 ? 0 : static_cast<int>(remaining);
}

// select() for reading on fd alone; a null wait waits without limit.
int WaitReadable(int fd, timeval* wait)
{
    fd_set readSet;
    FD_ZERO(&readSet);
    FD_SET(fd, &readSet);
    return select(fd + 1, &readSet, nullptr, nullptr, wait);
}

}  // namespace

CLinuxComPort::CLinuxComPort(int portNumber) : CComPort(portNumber), m_speedCode(B9600)
{
}

CLinuxComPort::~CLinuxComPort() = default;

int CLinuxComPort::Open()
{
    if (IsOpen()) {
        Close();
    }
    // O_NOCTTY: a service manager starts the tool as a session leader without a controlling
    // terminal, which would adopt the port as one and be killed by SIGHUP when the line hangs up.
    // O_NONBLOCK: open does not wait for a carrier, and no read or write ever blocks.
    m_fd = open(GetDeviceName(), O_RDWR | O_NONBLOCK | O_NOCTTY);
    if (m_fd == -1) {
        return ReportOpenFailure(COMERR_OPEN);
    }
    int result = SetBaudRate(GetBaudRate());
    // Lines without counters fail the query; the report must still name the set-up's failure.
    const int setUpError = errno;
    MarkFrameErrorCount();
    errno = setUpError;
    if (result == 0) {
        result = MakeRaw();
    }
    return result == 0 ? 0 : ReportOpenFailure(result);
}

int CLinuxComPort::MakeRaw()
{
    termios attributes;
    if (tcgetattr(m_fd, &attributes) == -1) {
        return COMERR_UNSUPPORTED;
    }
    // Whoever used the port before may have left flow control, another framing or a modem
    // line wait on it; every one of them is set here, not only those raw mode touches.
    SetRawEightNoneOne(&attributes);
    if (tcsetattr(m_fd, TCSANOW, &attributes) == -1) {
        std::perror("tcsetattr");
        return COMERR_BAUD;
    }
    return 0;
}

int CLinuxComPort::ReportOpenFailure(int result)
{
    const int cause = errno;
    (void)std::fprintf(stderr, "failed to open %s\n", GetDeviceName());
    (void)std::fprintf(stderr, "iRC = %d\n", result);
    errno = cause;
    std::perror("error");
    if (m_fd != -1) {
        close(m_fd);
        m_fd = -1;
    }
    return result;
}

int CLinuxComPort::Close()
{
    if (m_fd == -1) {
        return COMERR_CLOSE_NOT_OPEN;
    }
    // close() of a tty waits until its unsent output has left: on a serial port up to 30 s, the
    // whole of it on a line whose output is held back. What has not left within the drain's
    // limit never will, so it is discarded and close() returns at once.
    if (DrainOutput() != 0) {
        tcflush(m_fd, TCOFLUSH);
    }
    close(m_fd);
    m_fd = -1;
    return 0;
}

int CLinuxComPort::IsOpen()
{
    return m_fd != -1;
}

int CLinuxComPort::FlushInput()
{
    if (m_fd == -1) {
        return COMERR_NOT_OPEN;
    }
    return tcflush(m_fd, TCIFLUSH) == -1 ? COMERR_FLUSH : 0;
}

int CLinuxComPort::Drain()
{
    return m_fd == -1 ? 0 : DrainOutput();
}

int CLinuxComPort::DrainOutput()
{
    // tcdrain() alone waits without end on a line that does not send (CTS low under hardware flow
    // control, a wedged adapter). Once the kernel's queue is empty it waits only for the UART's
    // FIFO, which the serial driver bounds itself.
    return WaitForEmptyOutputQueue() ? tcdrain(m_fd) : -1;
}

bool CLinuxComPort::WaitForEmptyOutputQueue()
{
    int queued = 0;
    if (QueuedOutputBytes(m_fd, &queued) == -1) {
        return false;
    }
    const Stopwatch clock;
    const long limitMs = DrainLimitMs(queued, GetBaudRate());
    while (queued > 0) {
        const long leftMs = limitMs - clock.ElapsedMs();
        if (leftMs <= 0) {
            errno = ETIMEDOUT;
            return false;
        }
        // Look again once the bytes still queued could have left, but not after the limit.
        SleepMs(static_cast<int>(std::min(leftMs, std::max(TransmitMs(queued, GetBaudRate()), 1L))));
        if (QueuedOutputBytes(m_fd, &queued) == -1) {
            return false;
        }
    }
    return true;
}

int CLinuxComPort::ReadByte(unsigned char* out, int timeoutMs)
{
    if (m_fd == -1) {
        return COMERR_NOT_OPEN;
    }
    if (timeoutMs != kNoTimeLimit) {
        const int waited = WaitForByte(timeoutMs);
        if (waited != 0) {
            return waited;
        }
    }
    return read(m_fd, out, 1) == -1 ? COMERR_READ : 0;
}

int CLinuxComPort::WaitForByte(int timeoutMs)
{
    fd_set readSet;
    FD_ZERO(&readSet);
    FD_SET(m_fd, &readSet);
    // Other negative time-outs poll: select() would refuse them, and a refusal is retried.
    timeval wait = ToTimeval(timeoutMs < 0 ? 0 : timeoutMs);
    for (;;) {
        const int ready = select(m_fd + 1, &readSet, nullptr, nullptr, &wait);
        if (ready == -1 && errno == EINTR) {
            return COMERR_TIMEOUT;
        }
        if (ready == -1) {
            continue;  // a transient failure (no kernel memory): same set, time left as it is
        }
        if (ready == 0) {
            return COMERR_TIMEOUT;
        }
        return ready == 1 ? 0 : COMERR_READ;
    }
}

int CLinuxComPort::Read(char* buf, int size, int* count, int timeoutMs)
{
    // A NUL ends the read with COMERR_NUL_RECEIVED before it could match terminator 0, so only a
    // full buffer or the end of the time stops it.
    return ReadUntil(buf, 0, size, count, timeoutMs);
}

int CLinuxComPort::ReadUntil(char* buf, int terminator, int size, int* count, int timeoutMs)
{
    *count = 0;
    if (size < 2) {
        if (size == 1) {
            buf[0] = '\0';
        }
        return m_fd == -1 ? COMERR_NOT_OPEN : COMERR_BUFFER_FULL;
    }
    if (m_fd == -1) {
        buf[0] = '\0';
        return COMERR_NOT_OPEN;
    }
    // The deadline is fixed at the start: bytes that trickle in do not extend it.
    const Stopwatch clock;
    int result = kKeepReading;
    while (result == kKeepReading) {
        int remainingMs = kNoTimeLimit;
        timeval wait{};
        timeval* waitOrForever = nullptr;
        if (timeoutMs != kNoTimeLimit) {
            remainingMs = RemainingMs(timeoutMs, clock);
            wait = ToTimeval(remainingMs);
            waitOrForever = &wait;
        }
        if (WaitReadable(m_fd, waitOrForever) == 1) {
            result = TakeByte(buf, terminator, size, count);
        } else if (remainingMs <= 0) {
            result = 0;  // out of time (or an unlimited wait failed): what arrived is the answer
        }
    }
    buf[*count] = '\0';
    return result;
}

int CLinuxComPort::TakeByte(char* buf, int terminator, int size, int* count)
{
    unsigned char byte = 0;
    if (read(m_fd, &byte, 1) != 1) {
        return COMERR_READ;
    }
    buf[*count] = static_cast<char>(byte);
    int result = 0;
    if (byte == 0) {
        result = COMERR_NUL_RECEIVED;  // stored but not counted: the final NUL covers it
    } else {
        ++*count;
    }
    // A full buffer wins over everything, a terminator in the last place included.
    if (*count == size - 1) {
        result = COMERR_BUFFER_FULL;
    }
    if (result != 0) {
        return result;
    }
    return byte == static_cast<unsigned char>(terminator) ? 0 : kKeepReading;
}

int CLinuxComPort::WriteString(const char* text, int* written)
{
    return WriteBytes(text, std::strlen(text), written);
}

int CLinuxComPort::WriteBuffer(const void* buf, int len, int* written)
{
    return WriteBytes(buf, len < 0 ? 0 : static_cast<std::size_t>(len), written);
}

int CLinuxComPort::WriteBytes(const void* bytes, std::size_t length, int* written)
{
    if (m_fd == -1) {
        return COMERR_NOT_OPEN;
    }
    // Short writes are not retried: command lines are short and the descriptor never blocks.
    const ssize_t result = write(m_fd, bytes, length);
    *written = static_cast<int>(result);
    return result == -1 ? COMERR_WRITE : 0;
}

int CLinuxComPort::WriteChar(char ch)
{
    if (m_fd == -1) {
        return COMERR_NOT_OPEN;
    }
    int written = 0;
    WriteBuffer(&ch, 1, &written);
    return written == 1 ? 0 : COMERR_WRITE;
}

int CLinuxComPort::ReadChar(char* out)
{
    int count = 0;
    const int result = ReadBuffer(out, 1, &count);
    return count == 1 ? result : COMERR_READ;
}

int CLinuxComPort::ReadBuffer(char*, int, int*)
{
    return COMERR_READ;
}

int CLinuxComPort::SetBaudRate(int baud)
{
    if (baud == 0) {
        return COMERR_BAUD;
    }
    speed_t speed = 0;
    if (!MapBaudToSpeed(baud, &speed)) {
        (void)std::fprintf(stderr, "Couldn't map baud %d\n", baud);
        return COMERR_BAUD;
    }
    StoreBaudRate(baud);
    m_speedCode = speed;
    return m_fd == -1 ? 0 : ApplySpeed();
}

int CLinuxComPort::ApplySpeed()
{
    // No flush or drain around the change: callers drain before they switch.
    termios attributes;
    if (tcgetattr(m_fd, &attributes) == -1) {
        return COMERR_UNSUPPORTED;
    }
    const bool inputSet = cfsetispeed(&attributes, m_speedCode) != -1;
    const bool outputSet = cfsetospeed(&attributes, m_speedCode) != -1;
    if (!inputSet || !outputSet) {
        return COMERR_BAUD;
    }
    return tcsetattr(m_fd, TCSANOW, &attributes) == -1 ? COMERR_BAUD : 0;
}

int CLinuxComPort::GetFrameErrorCount()
{
    int frameErrors = 0;
    QueryFrameErrorCounter(m_fd, &frameErrors);
    return frameErrors - m_frameErrorMark;
}

int CLinuxComPort::MarkFrameErrorCount()
{
    int frameErrors = 0;
    const int result = QueryFrameErrorCounter(m_fd, &frameErrors);
    m_frameErrorMark = frameErrors;
    return result;
}

// The slots below have no implementation on a Linux tty; their fixed answers are part of the
// interface. One line each, so that they read as the table they are.
// clang-format off
int CLinuxComPort::UnsupportedOperation7() { return COMERR_UNSUPPORTED; }
int CLinuxComPort::UnsupportedOperation8() { return COMERR_UNSUPPORTED; }
int CLinuxComPort::UnsupportedFlush9() { return COMERR_FLUSH; }
int CLinuxComPort::UnsupportedOperation11() { return COMERR_UNSUPPORTED; }
int CLinuxComPort::UnsupportedOperation12() { return COMERR_UNSUPPORTED; }
int CLinuxComPort::UnsupportedRead14() { return COMERR_READ; }
int CLinuxComPort::UnsupportedWrite17() { return COMERR_WRITE; }
int CLinuxComPort::UnsupportedWrite18() { return COMERR_WRITE; }
int CLinuxComPort::LineQueryA(int*, int) { return COMERR_UNSUPPORTED; }
int CLinuxComPort::UnsupportedOperation26() { return COMERR_NOT_IMPLEMENTED; }
int CLinuxComPort::LineQueryB(int*) { return COMERR_UNSUPPORTED; }
int CLinuxComPort::LineQueryC(int*, int) { return COMERR_UNSUPPORTED; }
int CLinuxComPort::UnsupportedOperation29() { return COMERR_NOT_IMPLEMENTED; }
int CLinuxComPort::UnsupportedOperation32() { return COMERR_NOT_IMPLEMENTED; }
int CLinuxComPort::UnsupportedOperation33() { return COMERR_NOT_IMPLEMENTED; }
int CLinuxComPort::UnsupportedOperation34() { return COMERR_NOT_IMPLEMENTED; }
// clang-format on
