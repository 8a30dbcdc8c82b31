#include "serial/CZRFamilyComPort.h"

#include <cstdio>

namespace {

struct PortRow {
    const char* path;
    int number;
};

// Ports 4 to 7 have no UART on this console: /dev/null opens but is no tty, so they never open
// as serial ports.
constexpr PortRow kPortTable[] = {
    {"/dev/ttyO0", 0}, {"/dev/ttyO1", 1}, {"/dev/ttyO2", 2}, {"/dev/ttyO3", 3},
    {"/dev/null", 4},  {"/dev/null", 5},  {"/dev/null", 6},  {"/dev/null", 7},
};

// The port wired to the IOC8051 co-processor.
constexpr int kReservedPort = 2;

int PortNumberOf(const std::string& devicePath)
{
    for (const PortRow& row : kPortTable) {
        if (devicePath == row.path) {
            return row.number;
        }
    }
    return CZRFamilyComPort::kNoSuchPort;
}

}  // namespace

CZRFamilyComPort::CZRFamilyComPort(const std::string& devicePath)
    : CLinuxComPort(PortNumberOf(devicePath))
{
    WarnIfReserved();
}

CZRFamilyComPort::CZRFamilyComPort(int portNumber) : CLinuxComPort(portNumber)
{
    WarnIfReserved();
}

CZRFamilyComPort::~CZRFamilyComPort() = default;

const char* CZRFamilyComPort::GetDeviceName()
{
    for (const PortRow& row : kPortTable) {
        if (row.number == GetPortNumber() && row.path != nullptr) {
            return row.path;
        }
    }
    return "BadPort";
}

void CZRFamilyComPort::WarnIfReserved() const
{
    if (GetPortNumber() == kReservedPort) {
        (void)std::fputs("Warning:  Application opened the reserved RS232 port for the IOC8051\n",
                   stderr);
    }
}
