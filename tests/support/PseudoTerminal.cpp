#include "tests/support/PseudoTerminal.h"

#include "util/Stopwatch.h"

#include <fcntl.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

std::runtime_error SystemError(const std::string& what)
{
    return std::runtime_error(what + ": " + std::strerror(errno));
}

// True when fd became readable within timeoutMs (a negative time counts as 0).
bool WaitReadable(int fd, long timeoutMs)
{
    if (fd < 0) {
        return false;
    }
    if (timeoutMs < 0) {
        timeoutMs = 0;
    }
    fd_set readSet;
    FD_ZERO(&readSet);
    FD_SET(fd, &readSet);
    timeval wait{};
    wait.tv_sec = timeoutMs / 1000;
    wait.tv_usec = (timeoutMs % 1000) * 1000;
    int ready = 0;
    do {
        ready = select(fd + 1, &readSet, nullptr, nullptr, &wait);
    } while (ready == -1 && errno == EINTR);
    return ready == 1;
}

// Appends what one read gives, at most max bytes; false at end of data or on failure.
bool ReadSome(int fd, std::string* into, std::size_t max)
{
    char chunk[256];
    const ssize_t got = read(fd, chunk, max < sizeof chunk ? max : sizeof chunk);
    if (got <= 0) {
        return false;
    }
    into->append(chunk, static_cast<std::size_t>(got));
    return true;
}

}  // namespace

PseudoTerminal::PseudoTerminal()
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY);
    if (m_master == -1) {
        throw SystemError("posix_openpt");
    }
    const char* slavePath = nullptr;
    if (grantpt(m_master) == -1 || unlockpt(m_master) == -1 ||
        (slavePath = ptsname(m_master)) == nullptr) {
        const std::runtime_error error = SystemError("pseudo-terminal slave");
        close(m_master);
        throw error;
    }
    m_slavePath = slavePath;
    m_slaveKeeper = open(slavePath, O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (m_slaveKeeper == -1) {
        const std::runtime_error error = SystemError("open " + m_slavePath);
        close(m_master);
        throw error;
    }
}

PseudoTerminal::~PseudoTerminal()
{
    HangUp();
    close(m_slaveKeeper);
}

const std::string& PseudoTerminal::SlavePath() const
{
    return m_slavePath;
}

int PseudoTerminal::MasterFd() const
{
    return m_master;
}

bool PseudoTerminal::Send(const std::string& bytes)
{
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t written = write(m_master, bytes.data() + sent, bytes.size() - sent);
        if (written == -1 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        sent += static_cast<std::size_t>(written);
    }
    return true;
}

std::string PseudoTerminal::Receive(std::size_t count, int timeoutMs)
{
    std::string received;
    const Stopwatch clock;
    while (received.size() < count && WaitReadable(m_master, timeoutMs - clock.ElapsedMs()) &&
           ReadSome(m_master, &received, count - received.size())) {
    }
    return received;
}

std::string PseudoTerminal::ReceiveUntilQuiet(int quietMs)
{
    std::string received;
    while (WaitReadable(m_master, quietMs) && ReadSome(m_master, &received, std::string::npos)) {
    }
    return received;
}

bool PseudoTerminal::WaitForSlaveInput(int timeoutMs)
{
    return WaitReadable(m_slaveKeeper, timeoutMs);
}

int PseudoTerminal::SlaveBaud() const
{
    // On Linux the master reports the slave's settings. This table is kept apart from the port's
    // own on purpose: a wrong pair there must not be mirrored here.
    termios attributes;
    if (tcgetattr(m_master, &attributes) == -1) {
        return -1;
    }
    switch (cfgetospeed(&attributes)) {
    case B50: return 50;
    case B75: return 75;
    case B110: return 110;
    case B134: return 134;
    case B150: return 150;
    case B200: return 200;
    case B300: return 300;
    case B600: return 600;
    case B1200: return 1200;
    case B1800: return 1800;
    case B2400: return 2400;
    case B4800: return 4800;
    case B9600: return 9600;
    case B19200: return 19200;
    case B38400: return 38400;
    case B57600: return 57600;
    case B115200: return 115200;
    case B230400: return 230400;
    default: return -1;
    }
}

void PseudoTerminal::HangUp()
{
    if (m_master != -1) {
        close(m_master);
        m_master = -1;
    }
}
