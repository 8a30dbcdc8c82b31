#include "tests/support/PseudoTerminal.h"

#include "util/Stopwatch.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>

namespace {

// True when fd became readable within timeoutMs (a negative time counts as 0).
bool WaitReadable(int fd, long timeoutMs)
{
    pollfd side{fd, POLLIN, 0};
    int ready = 0;
    do {
        ready = poll(&side, 1, timeoutMs < 0 ? 0 : static_cast<int>(timeoutMs));
    } while (ready == -1 && errno == EINTR);
    return ready == 1 && (side.revents & POLLIN) != 0;
}

// Appends what one read gives, at most max bytes; false at end of data or on failure.
bool ReadSome(int fd, std::string& into, std::size_t max)
{
    char chunk[256];
    const ssize_t got = read(fd, chunk, max < sizeof chunk ? max : sizeof chunk);
    if (got > 0) {
        into.append(chunk, static_cast<std::size_t>(got));
    }
    return got > 0;
}

}  // namespace

PseudoTerminal::PseudoTerminal()
{
    std::string error;
    if (!m_line.Open(error)) {
        throw std::runtime_error(error);
    }
    // The simulator's line starts raw; this one goes back to the kernel's cooked defaults, so that
    // a port whose Open leaves the line cooked shows it. Settings made on the master are the
    // slave's. The master blocks again, so that Send waits for room on a full line.
    const int master = m_line.MasterFd();
    termios line{};
    tcgetattr(master, &line);
    line.c_iflag |= ICRNL | IXON;
    line.c_oflag |= OPOST | ONLCR;
    line.c_lflag |= ISIG | ICANON | ECHO | IEXTEN;
    if (tcsetattr(master, TCSANOW, &line) != 0 ||
        fcntl(master, F_SETFL, fcntl(master, F_GETFL) & ~O_NONBLOCK) != 0) {
        throw std::runtime_error("cannot set up " + SlavePath());
    }
}

termios PseudoTerminal::SlaveSettings() const
{
    termios settings{};
    tcgetattr(m_line.MasterFd(), &settings);
    return settings;
}

bool PseudoTerminal::SetSlaveSettings(const termios& settings)
{
    return tcsetattr(m_line.MasterFd(), TCSANOW, &settings) == 0;
}

bool PseudoTerminal::Send(const std::string& bytes)
{
    // A blocking write to a terminal returns once all of it is queued.
    return write(m_line.MasterFd(), bytes.data(), bytes.size()) ==
           static_cast<ssize_t>(bytes.size());
}

std::string PseudoTerminal::Receive(std::size_t count, int timeoutMs)
{
    std::string received;
    const Stopwatch clock;
    while (received.size() < count &&
           WaitReadable(m_line.MasterFd(), timeoutMs - clock.ElapsedMs()) &&
           ReadSome(m_line.MasterFd(), received, count - received.size())) {
    }
    return received;
}

std::string PseudoTerminal::ReceiveUntilQuiet(int quietMs)
{
    std::string received;
    while (WaitReadable(m_line.MasterFd(), quietMs) &&
           ReadSome(m_line.MasterFd(), received, std::string::npos)) {
    }
    return received;
}

bool PseudoTerminal::WaitForSlaveInput(int timeoutMs)
{
    // A handle of its own on the slave, which shares the tool's input.
    const int slave = open(SlavePath().c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    const bool arrived = WaitReadable(slave, timeoutMs);
    close(slave);
    return arrived;
}
