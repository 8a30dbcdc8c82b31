#include "sim/line/Pty.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace GnssSim {

namespace {

struct SpeedEntry {
    speed_t speed;
    int baud;
};

const SpeedEntry kSpeeds[] = {
    {B50, 50}, {B75, 75}, {B110, 110}, {B134, 134}, {B150, 150}, {B200, 200}, {B300, 300},
    {B600, 600}, {B1200, 1200}, {B1800, 1800}, {B2400, 2400}, {B4800, 4800}, {B9600, 9600},
    {B19200, 19200}, {B38400, 38400}, {B57600, 57600}, {B115200, 115200}, {B230400, 230400},
    {B460800, 460800}, {B921600, 921600},
};

std::string SystemError(const char* what)
{
    return std::string(what) + ": " + std::generic_category().message(errno);
}

bool IsOurLink(const std::string& linkPath, const std::string& slavePath)
{
    char target[PATH_MAX];
    const ssize_t length = readlink(linkPath.c_str(), target, sizeof target - 1);
    return length >= 0 && std::string(target, static_cast<std::size_t>(length)) == slavePath;
}

}

int BaudOfSpeed(unsigned long speed)
{
    for (const SpeedEntry& entry : kSpeeds) {
        if (entry.speed == speed) {
            return entry.baud;
        }
    }
    return 0;
}

Pty::~Pty()
{
    Close();
}

bool Pty::Open(std::string& error)
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_master < 0) {
        error = SystemError("posix_openpt");
        return false;
    }
    if (grantpt(m_master) != 0 || unlockpt(m_master) != 0) {
        error = SystemError("grantpt/unlockpt");
        Close();
        return false;
    }
    char name[PATH_MAX];
    if (ptsname_r(m_master, name, sizeof name) != 0) {
        error = SystemError("ptsname");
        Close();
        return false;
    }
    m_slavePath = name;
    if (!OpenSlaveHandle(error)) {
        Close();
        return false;
    }
    return true;
}

bool Pty::OpenSlaveHandle(std::string& error)
{
    m_slave = open(m_slavePath.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_slave < 0) {
        error = SystemError(m_slavePath.c_str());
        return false;
    }
    termios settings{};
    if (tcgetattr(m_slave, &settings) != 0) {
        error = SystemError("tcgetattr");
        return false;
    }
    cfmakeraw(&settings);
    cfsetispeed(&settings, B9600);
    cfsetospeed(&settings, B9600);
    if (tcsetattr(m_slave, TCSANOW, &settings) != 0) {
        error = SystemError("tcsetattr");
        return false;
    }
    return true;
}

bool Pty::MakeLink(const std::string& linkPath, std::string& error)
{
    struct stat existing {};
    if (lstat(linkPath.c_str(), &existing) == 0) {
        if (!S_ISLNK(existing.st_mode)) {
            error = linkPath + " exists and is not a symbolic link";
            return false;
        }
        unlink(linkPath.c_str());
    }
    if (symlink(m_slavePath.c_str(), linkPath.c_str()) != 0) {
        error = SystemError(linkPath.c_str());
        return false;
    }
    m_linkPath = linkPath;
    return true;
}

void Pty::RemoveLink()
{
    if (!m_linkPath.empty() && IsOurLink(m_linkPath, m_slavePath)) {
        unlink(m_linkPath.c_str());
    }
    m_linkPath.clear();
}

void Pty::HangUp()
{
    if (m_slave >= 0) {
        close(m_slave);
        m_slave = -1;
    }
    if (m_master >= 0) {
        close(m_master);
        m_master = -1;
    }
}

void Pty::Close()
{
    RemoveLink();
    HangUp();
}

int Pty::LineBaud() const
{
    termios settings{};
    if (m_master < 0 || tcgetattr(m_master, &settings) != 0) {
        return 0;
    }
    return BaudOfSpeed(cfgetospeed(&settings));
}

namespace {

bool PollsReadable(int fd)
{
    if (fd < 0) {
        return false;
    }
    pollfd side{fd, POLLIN, 0};
    return poll(&side, 1, 0) > 0 && (side.revents & POLLIN) != 0;
}

}

bool Pty::HasUnreadInput() const
{
    return PollsReadable(m_master);
}

bool Pty::ToolHasUnreadInput() const
{
    return PollsReadable(m_slave);
}

}
