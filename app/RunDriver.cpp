#include "app/RunDriver.h"

#include <cerrno>
#include <cstring>

#include "app/DryRunReport.h"
#include "cmdline/GpsCommandLine.h"
#include "receivers/GpsSettings.h"
#include "serial/CComPort.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;

// The same line perror prints, on the run's own error stream.
void PrintSystemError(std::ostream& err, const char* what, int errorNumber)
{
    err << what << ": " << std::strerror(errorNumber) << std::endl;
}

int RunMode(const GpsSettings& settings, const RunCollaborators& with)
{
    if (settings.bDryRun) {
        PrintDryRunReport(settings, with.out);
        return kSuccess;
    }
    with.err << "gnss-setup: only --dry-run is available in this build" << std::endl;
    return kFailure;
}

}  // namespace

int RunGnssSetup(int argc, const char* const* argv, const RunCollaborators& with)
{
    GpsSettings settings;
    ParseGpsCommandLine(argc, argv, settings);
    if (!settings.bParsedOk) {
        return kFailure;
    }
    if (settings.bHelpShown) {
        return kSuccess;
    }
    if (settings.nReceiverType != ReceiverType::Uninitialized) {
        with.err << "gnss-setup: --set-receiver-type is not available in this build" << std::endl;
        return kFailure;
    }

    std::unique_ptr<CComPort> port = with.makePort(settings.strPort);
    port->SetBaudRate(settings.nBaudRate);
    if (port->Open() != 0) {
        PrintSystemError(with.err, "open com port", errno);
        return kFailure;
    }
    const int status = RunMode(settings, with);
    port->Close();
    return status;
}
