#include "tests/support/PathComPort.h"

#include <utility>

PathComPort::PathComPort(std::string devicePath, int portNumber)
    : CLinuxComPort(portNumber), m_devicePath(std::move(devicePath))
{
}

const char* PathComPort::GetDeviceName()
{
    return m_devicePath.c_str();
}
