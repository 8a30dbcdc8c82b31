#include "app/RunDriver.h"

#include <cerrno>
#include <exception>
#include <system_error>

#include "app/DryRunReport.h"
#include "app/QueryReport.h"
#include "cmdline/GpsCommandLine.h"
#include "receivers/CGPSConfigurer.h"
#include "receivers/GpsSettings.h"
#include "receivers/ReceiverDetection.h"
#include "receivers/ReceiverProbe.h"
#include "receivers/SbasPrnFlags.h"
#include "receivers/novatel/OemV1Descendants.h"
#include "serial/CComPort.h"
#include "util/Sleep.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;

// The receiver's own reset limit applies (20 s on NovAtel receivers).
constexpr int kFamilyDefaultResetLimit = -1;
// ResetPdpFilter answers 2 when acknowledged and 1 when not; a run counts only 0 as success, so
// this mode always ends with status 1, and start-up scripts are written for that status.
constexpr int kPdpFilterResetSuccess = 0;
// Lets the receiver act on the last output command before its configuration is saved.
constexpr int kSettleBeforeSaveMs = 1000;

const char* const kNotInitialized = "Could not initialize GNSS receiver";

// The same line perror prints, on the run's own error stream.
void PrintSystemError(std::ostream& err, const char* what, int errorNumber)
{
    err << what << ": " << std::generic_category().message(errorNumber) << std::endl;
}

bool IsUsableReceiverType(int type)
{
    return type != ReceiverType::Other && type != ReceiverType::Unknown &&
           type != ReceiverType::Uninitialized;
}

int RunQuery(const GpsSettings& settings, CComPort& port, const RunCollaborators& with)
{
    ReceiverProbe probe(port);
    const int type = DetectReceiverType(probe, true);
    const std::unique_ptr<CGPSConfigurer> configurer = CreateConfigurer(probe);
    if (configurer) {
        // Asked once before the print-out, which asks again, so the receiver hears the request (a
        // version log, "$JI") that many times: field engineers compare wire logs by that count.
        configurer->GetFirmwareVersion();
        PrintQueryReport(*configurer, type, settings.bExtendedQuery, with.out);
    }
    return kSuccess;
}

// The model listings need a NovAtel receiver; any other is reported with the check's message.
template <typename ListAction>
int RunNovatelListing(CComPort& port, const RunCollaborators& with, ListAction list)
{
    ReceiverProbe probe(port);
    try {
        RequireNovatelReceiver(probe);
        list(*probe.novatelConfigurer);
        return kSuccess;
    } catch (const std::exception& error) {
        with.err << error.what() << std::endl;
        return kFailure;
    }
}

int RunListModels(CComPort& port, const RunCollaborators& with)
{
    return RunNovatelListing(port, with, [&](NovatelCommon::OemV1Descendants& novatel) {
        for (const std::string& model : novatel.ListValidModels()) {
            with.out << "\t" << model << std::endl;
        }
    });
}

int RunListCurrentModel(CComPort& port, const RunCollaborators& with)
{
    return RunNovatelListing(port, with, [&](NovatelCommon::OemV1Descendants& novatel) {
        with.out << novatel.OemV1Descendants::GetModel() << std::endl;
    });
}

int RunResetReceiver(CComPort& port, const RunCollaborators& with)
{
    ReceiverProbe probe(port);
    DetectReceiverType(probe, false);
    const std::unique_ptr<CGPSConfigurer> configurer = CreateConfigurer(probe);
    if (!configurer || !configurer->CanReset()) {
        with.out << "Do not know how to reset this receiver" << std::endl;
        return kFailure;
    }
    return configurer->ResetReceiver(kFamilyDefaultResetLimit) == 0 ? kSuccess : kFailure;
}

int RunResetPdpFilter(CComPort& port, const RunCollaborators& with)
{
    ReceiverProbe probe(port);
    DetectReceiverType(probe, false);
    const std::unique_ptr<CGPSConfigurer> configurer = CreateConfigurer(probe);
    auto* novatel = dynamic_cast<NovatelCommon::OemV1Descendants*>(configurer.get());
    if (novatel == nullptr) {
        with.out << "Do not know how to reset PDP filter on this receiver" << std::endl;
        return kFailure;
    }
    return novatel->ResetPdpFilter() == kPdpFilterResetSuccess ? kSuccess : kFailure;
}

int RunClearCached(const RunCollaborators& with)
{
    with.tellDriver(ReceiverType::Unknown, "", "", "");
    with.err << kNotInitialized << std::endl;
    return kFailure;
}

void SwitchAllSentencesOff(CGPSConfigurer& configurer)
{
    configurer.OutputGGA(false);
    configurer.OutputGSA(false);
    configurer.OutputGSV(false);
    configurer.OutputVTG(false);
    configurer.OutputZDA(false);
}

// Each rate is set before its sentence is switched: switching on sends the stored rate. GGA is
// always wanted.
void SwitchWantedSentencesOn(CGPSConfigurer& configurer, const GpsSettings& settings)
{
    configurer.SetGGAFrequency(settings.fGGAFrequency);
    configurer.OutputGGA(true);
    configurer.SetGSAFrequency(settings.fGSAFrequency);
    configurer.OutputGSA(settings.bOutputGSA);
    configurer.SetGSVFrequency(settings.fGSVFrequency);
    configurer.OutputGSV(settings.bOutputGSV);
    configurer.SetVTGFrequency(settings.fVTGFrequency);
    configurer.OutputVTG(settings.bOutputVTG);
    configurer.SetZDAFrequency(settings.fZDAFrequency);
    configurer.OutputZDA(settings.bOutputZDA);
}

struct ReceiverIdentity {
    std::string firmware;
    std::string extendedVersion;
    std::string model;
};

void Configure(CGPSConfigurer& configurer, CComPort& port, const GpsSettings& settings)
{
    auto* fixConfigurer =
        settings.bFix ? dynamic_cast<NovatelCommon::OemV1Descendants*>(&configurer) : nullptr;
    configurer.SetBaudRate(settings.nBaudRate);
    SwitchAllSentencesOff(configurer);
    // Whatever the receiver said while its logs were switched off is of no interest.
    port.FlushInput();
    configurer.ApplyBaseConfiguration();
    if (fixConfigurer != nullptr) {
        fixConfigurer->ConfigureFix(!settings.bNoUseGps, settings.bUseGlonass,
                                    settings.bUseBeidou, settings.bUseGalileo, settings.bUseQzss,
                                    settings.bUseSbas, settings.bUsePpp);
    }
    configurer.ConfigureSbas(BuildSbasPrnFlags(settings.PRNs), settings.bUseSbas,
                             settings.bAllowType0);
    SwitchWantedSentencesOn(configurer, settings);
    SleepMs(kSettleBeforeSaveMs);
    if (settings.bSaveConfig) {
        configurer.SaveConfiguration();
    }
}

int RunConfiguration(const GpsSettings& settings, CComPort& port, const RunCollaborators& with)
{
    ReceiverProbe probe(port);
    const int type = DetectReceiverType(probe, true);
    ReceiverIdentity identity;
    {
        const std::unique_ptr<CGPSConfigurer> configurer = CreateConfigurer(probe);
        if (configurer) {
            identity = {configurer->GetFirmwareVersion(), configurer->GetExtendedVersion(),
                        configurer->GetModel()};
            Configure(*configurer, port, settings);
        }
    }
    with.tellDriver(type, identity.firmware, identity.extendedVersion, identity.model);
    if (!IsUsableReceiverType(type)) {
        with.err << kNotInitialized << std::endl;
        return kFailure;
    }
    return kSuccess;
}

// The first mode the settings ask for; a receiver reset wins over a PDP-filter reset.
int RunMode(const GpsSettings& settings, CComPort& port, const RunCollaborators& with)
{
    if (settings.bDryRun) {
        PrintDryRunReport(settings, with.out);
        return kSuccess;
    }
    if (settings.bQueryOnly) {
        return RunQuery(settings, port, with);
    }
    if (settings.bListModels) {
        return RunListModels(port, with);
    }
    if (settings.bListCurrentModel) {
        return RunListCurrentModel(port, with);
    }
    if (settings.bResetReceiver) {
        return RunResetReceiver(port, with);
    }
    if (settings.bResetPdpFilter) {
        return RunResetPdpFilter(port, with);
    }
    if (!settings.bConfigure) {
        return RunClearCached(with);
    }
    return RunConfiguration(settings, port, with);
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
    // An override only tells the driver what the caller says is attached; the port stays shut.
    if (settings.nReceiverType != ReceiverType::Uninitialized) {
        with.tellDriver(settings.nReceiverType, settings.strFirmware, settings.strExtendedVersion,
                        "");
        return kSuccess;
    }

    std::unique_ptr<CComPort> port = with.makePort(settings.strPort);
    port->SetBaudRate(settings.nBaudRate);
    if (port->Open() != 0) {
        PrintSystemError(with.err, "open com port", errno);
        return kFailure;
    }
    const int status = RunMode(settings, *port, with);
    port->Close();
    return status;
}
