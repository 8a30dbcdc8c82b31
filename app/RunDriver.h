#ifndef GNSS_APP_RUNDRIVER_H
#define GNSS_APP_RUNDRIVER_H

#include <functional>
#include <memory>
#include <ostream>
#include <string>

class CComPort;

// What a run needs from outside: main() passes the console's serial ports, the kernel driver's
// control device and the process's streams; tests pass their own.
struct RunCollaborators {
    // Makes the (not yet opened) serial port for the device path named on the command line.
    std::function<std::unique_ptr<CComPort>(const std::string& devicePath)> makePort;
    // Tells the kernel GPS driver the receiver type, firmware, extended version and model.
    std::function<void(int type, const std::string& firmware, const std::string& extendedVersion,
                       const std::string& model)>
        tellDriver;
    std::ostream& out;
    std::ostream& err;
};

// One run of the tool, from the command line to the exit status (0 success, 1 failure).
int RunGnssSetup(int argc, const char* const* argv, const RunCollaborators& with);

#endif
