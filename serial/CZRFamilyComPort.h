#ifndef GNSS_SERIAL_CZRFAMILYCOMPORT_H
#define GNSS_SERIAL_CZRFAMILYCOMPORT_H

#include "serial/CLinuxComPort.h"

#include <string>

// The console's own serial port: a Linux tty chosen from the console's fixed table of devices.
// Port 2 is wired to the IOC8051 co-processor, not to a receiver; opening it is allowed but
// warned about once, when the port is constructed.
class CZRFamilyComPort : public CLinuxComPort {
public:
    // The port number of no device in the table.
    static constexpr int kNoSuchPort = 257;

    // The first table row whose path equals devicePath exactly gives the number; no row gives
    // kNoSuchPort, whose Open then fails.
    explicit CZRFamilyComPort(const std::string& devicePath);
    explicit CZRFamilyComPort(int portNumber);
    ~CZRFamilyComPort() override;

    // The table's path for the port number, or "BadPort" for a number the table does not have.
    const char* GetDeviceName() override;

private:
    void WarnIfReserved() const;
};

#endif
