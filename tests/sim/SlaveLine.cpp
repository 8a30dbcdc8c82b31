#include "SlaveLine.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

long NowMs()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

speed_t SpeedOf(int baud)
{
    switch (baud) {
    case 4800: return B4800;
    case 9600: return B9600;
    case 19200: return B19200;
    case 38400: return B38400;
    case 57600: return B57600;
    case 115200: return B115200;
    case 230400: return B230400;
    default: return B0;
    }
}

}

SlaveLine::SlaveLine(const std::string& path, int baud)
{
    m_fd = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (m_fd >= 0) {
        termios settings{};
        tcgetattr(m_fd, &settings);
        cfmakeraw(&settings);
        tcsetattr(m_fd, TCSANOW, &settings);
        SetBaud(baud);
    }
}

SlaveLine::~SlaveLine()
{
    if (m_fd >= 0) {
        close(m_fd);
    }
}

void SlaveLine::SetBaud(int baud)
{
    termios settings{};
    tcgetattr(m_fd, &settings);
    cfsetispeed(&settings, SpeedOf(baud));
    cfsetospeed(&settings, SpeedOf(baud));
    tcsetattr(m_fd, TCSANOW, &settings);
}

void SlaveLine::Write(const std::string& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = write(m_fd, bytes.data() + done, bytes.size() - done);
        if (written <= 0) {
            return;
        }
        done += static_cast<std::size_t>(written);
    }
}

bool SlaveLine::ReadByte(char& byte, long deadlineMs)
{
    for (;;) {
        const long left = deadlineMs - NowMs();
        pollfd line{m_fd, POLLIN, 0};
        if (poll(&line, 1, static_cast<int>(left > 0 ? left : 0)) <= 0) {
            return false;
        }
        const ssize_t count = read(m_fd, &byte, 1);
        if (count == 1) {
            return true;
        }
        if (count < 0 && errno != EAGAIN) {
            m_readFailed = true;
            return false;
        }
        if (count == 0) {
            m_readFailed = true;
            return false;
        }
    }
}

std::string SlaveLine::ReadLine(int timeoutMs)
{
    const long deadline = NowMs() + timeoutMs;
    std::string line;
    char byte = 0;
    while (ReadByte(byte, deadline)) {
        line += byte;
        if (byte == '\n') {
            break;
        }
    }
    return line;
}

std::string SlaveLine::ReadFor(int ms)
{
    const long deadline = NowMs() + ms;
    std::string bytes;
    char byte = 0;
    while (NowMs() < deadline) {
        if (ReadByte(byte, deadline)) {
            bytes += byte;
        } else if (m_readFailed) {
            break;
        }
    }
    return bytes;
}

std::string SlaveLine::ReadUntil(const std::string& needle, int timeoutMs)
{
    const long deadline = NowMs() + timeoutMs;
    std::string bytes;
    char byte = 0;
    while (bytes.find(needle) == std::string::npos && ReadByte(byte, deadline)) {
        bytes += byte;
    }
    return bytes;
}

void SlaveLine::Flush()
{
    tcflush(m_fd, TCIFLUSH);
}
