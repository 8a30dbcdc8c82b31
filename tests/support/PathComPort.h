#ifndef GNSS_TESTS_SUPPORT_PATHCOMPORT_H
#define GNSS_TESTS_SUPPORT_PATHCOMPORT_H

#include "serial/CLinuxComPort.h"

#include <string>
#include <utility>

// The real termios port on any device path, typically a pseudo-terminal's slave, which the
// console's fixed port table cannot name. Everything else is CLinuxComPort's own behaviour,
// including leaving the descriptor open at destruction: call Close when done.
class PathComPort : public CLinuxComPort {
public:
    explicit PathComPort(std::string devicePath)
        : CLinuxComPort(0), m_devicePath(std::move(devicePath)) {}

    const char* GetDeviceName() override { return m_devicePath.c_str(); }

private:
    std::string m_devicePath;
};

#endif
