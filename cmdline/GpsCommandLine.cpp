#include "cmdline/GpsCommandLine.h"

#include <tclap/CmdLine.h>

#include <iostream>
#include <vector>

#include "cmdline/BaudConstraint.h"
#include "cmdline/BoardGeneration.h"
#include "cmdline/PrnConstraint.h"
#include "cmdline/ReceiverConstraint.h"

#ifndef GNSS_VERSION_TEXT
#error "GNSS_VERSION_TEXT must name the build's version"
#endif

namespace {

using InitGpsParseCmdLine::BaudConstraint;
using InitGpsParseCmdLine::PrnConstraint;
using InitGpsParseCmdLine::ReceiverConstraint;

// The options in the order they are registered with the parser; the member order is that order.
struct GpsOptions {
    GpsOptions()
        : cmd("", ' ', GNSS_VERSION_TEXT, true),
          port("port", "Name of the GPS port", false, DefaultGpsPort(), "port", cmd),
          clearCachedOnly("x", "clear-cached-only", "Clear the receiver information from cache.",
                          cmd),
          noUseGps("", "no-use-gps", "Do not use the GPS (aka the US GNSS) system", cmd),
          useGlonass("", "use-glonass", "Use the GLONASS (aka Russian GNSS) system", cmd),
          useBeidou("", "use-beidou", "Use the BeiDou (aka Chinese GNSS) system", cmd),
          useGalileo("", "use-galileo", "Use the Galileo (aka EU GNSS) system", cmd),
          useQzss("", "use-qzss", "Use the QZSS (aka Japanese GNSS) system", cmd),
          useSbas("", "use-sbas", "Use a GNSS correction source", cmd),
          usePpp("", "use-ppp", "Use PPP corrections", cmd),
          useRtcmType0("0", "use-rtcm-type0", "Permit RTCM type 0 messages.", cmd),
          baudrate("b", "baudrate", "Baudrate of the serial connection", false, 115200,
                   &baudConstraint, cmd),
          ggaFrequency("F", "gga-frequency", "Frequency of GGA strings", false, 5.0f, "Hertz",
                       cmd),
          gsa("a", "gsa", "Output GSA strings", cmd),
          gsaFrequency("A", "gsa-frequency", "Frequency of GSA strings", false, 0.0f, "Hertz",
                       cmd),
          vtg("v", "vtg", "Output VTG strings", cmd),
          vtgFrequency("V", "vtg-frequency", "Frequency of VTG strings", false, 5.0f, "Hertz",
                       cmd),
          gsv("g", "gsv", "Output GSV strings", cmd),
          gsvFrequency("G", "gsv-frequency", "Frequency of GSV strings", false, 0.0f, "Hertz",
                       cmd),
          zda("z", "zda", "Output ZDA strings", cmd),
          zdaFrequency("Z", "zda-frequency", "Frequency of ZDA strings", false, 0.2f, "Hertz",
                       cmd),
          prn("p", "prn", "PRN number that should be enabled", false, &prnConstraint, cmd),
          saveConfig("X", "save-config", "Save configuration in receiver", cmd),
          queryOnly("Q", "query-only", "Query and print the receiver type, don't configure it",
                    cmd),
          extendedQuery("E", "extended-query",
                        "Print extended receiver version information and exit.", cmd),
          dryRun("", "dry-run", "Don't do anything, just print what would be done.", cmd),
          setReceiverType("R", "set-receiver-type",
                          "Set drivers receiver type and firmware version, e.g "
                          "OEM-StarG:v1.2:OEMVPN2854LL211",
                          false, "", &receiverConstraint, cmd),
          listModels("", "list-models",
                     "Print out installed models on the receiver and exit.  This only works if "
                     "you have and NovAtel V1 derived receiver (e.g. the 628)",
                     cmd),
          listCurrentModel("", "list-current-model",
                           "Print the current model on the receiver and exit.  This only works if "
                           "you have and NovAtel V1 derived receiver (e.g. the 628)",
                           cmd),
          attemptFixConfig("", "attempt-fix-config",
                           "Try to configure the receiver with proper fix; "
                           "GPS/GLONASS/SBAS/TerraStar/Etc",
                           cmd),
          resetReceiver("", "reset-receiver", "Reset the GPS receiver", cmd),
          resetPdpFilter("", "reset-pdp-filter", "Reset the PDP filter", cmd)
    {
    }

    void Fill(GpsSettings& settings) const;

    // The constraints come first: the options keep pointers to them.
    BaudConstraint baudConstraint;
    PrnConstraint prnConstraint;
    ReceiverConstraint receiverConstraint;

    TCLAP::CmdLine cmd;
    TCLAP::UnlabeledValueArg<std::string> port;
    TCLAP::SwitchArg clearCachedOnly;
    TCLAP::SwitchArg noUseGps;
    TCLAP::SwitchArg useGlonass;
    TCLAP::SwitchArg useBeidou;
    TCLAP::SwitchArg useGalileo;
    TCLAP::SwitchArg useQzss;
    TCLAP::SwitchArg useSbas;
    TCLAP::SwitchArg usePpp;
    TCLAP::SwitchArg useRtcmType0;
    TCLAP::ValueArg<int> baudrate;
    TCLAP::ValueArg<float> ggaFrequency;
    TCLAP::SwitchArg gsa;
    TCLAP::ValueArg<float> gsaFrequency;
    TCLAP::SwitchArg vtg;
    TCLAP::ValueArg<float> vtgFrequency;
    TCLAP::SwitchArg gsv;
    TCLAP::ValueArg<float> gsvFrequency;
    TCLAP::SwitchArg zda;
    TCLAP::ValueArg<float> zdaFrequency;
    TCLAP::MultiArg<int> prn;
    TCLAP::SwitchArg saveConfig;
    TCLAP::SwitchArg queryOnly;
    TCLAP::SwitchArg extendedQuery;
    TCLAP::SwitchArg dryRun;
    TCLAP::ValueArg<std::string> setReceiverType;
    TCLAP::SwitchArg listModels;
    TCLAP::SwitchArg listCurrentModel;
    TCLAP::SwitchArg attemptFixConfig;
    TCLAP::SwitchArg resetReceiver;
    TCLAP::SwitchArg resetPdpFilter;
};

void GpsOptions::Fill(GpsSettings& settings) const
{
    settings.bParsedOk = 1;
    settings.strPort = port.getValue();

    settings.bNoUseGps = noUseGps.getValue();
    settings.bUseGlonass = useGlonass.getValue();
    settings.bUseBeidou = useBeidou.getValue();
    settings.bUseGalileo = useGalileo.getValue();
    settings.bUseQzss = useQzss.getValue();
    settings.bUseSbas = useSbas.getValue();
    settings.bUsePpp = usePpp.getValue();
    settings.bAllowType0 = useRtcmType0.getValue();
    settings.nBaudRate = baudrate.getValue();
    settings.bOutputGSA = gsa.getValue();
    settings.bOutputVTG = vtg.getValue();
    settings.bOutputGSV = gsv.getValue();
    settings.bOutputZDA = zda.getValue();
    settings.fGGAFrequency = ggaFrequency.getValue();
    settings.fVTGFrequency = vtgFrequency.getValue();
    settings.fZDAFrequency = zdaFrequency.getValue();
    settings.fGSAFrequency = gsaFrequency.getValue();
    settings.fGSVFrequency = gsvFrequency.getValue();
    const std::vector<int>& prns = prn.getValue();
    settings.PRNs.insert(prns.begin(), prns.end());

    settings.bFix = attemptFixConfig.getValue();
    settings.bConfigure = !clearCachedOnly.getValue();

    // An extended query is a query that prints more.
    settings.bQueryOnly = queryOnly.getValue() || extendedQuery.getValue();
    settings.bExtendedQuery = extendedQuery.getValue();
    settings.bDryRun = dryRun.getValue();

    if (receiverConstraint.Parse(setReceiverType.getValue()) &&
        receiverConstraint.Type() != ReceiverType::Unknown &&
        receiverConstraint.Type() != ReceiverType::Uninitialized) {
        settings.strFirmware = receiverConstraint.Firmware();
        settings.strExtendedVersion = receiverConstraint.ExtendedVersion();
        settings.nReceiverType = receiverConstraint.Type();
    }

    settings.bListModels = listModels.getValue();
    settings.bListCurrentModel = listCurrentModel.getValue();
    settings.bResetReceiver = resetReceiver.getValue();
    settings.bResetPdpFilter = resetPdpFilter.getValue();
    settings.bSaveConfig = saveConfig.getValue();
    settings.bHelpShown = false;
}

}  // namespace

void ParseGpsCommandLine(int argc, const char* const* argv, GpsSettings& settings,
                         ParseEnding ending)
{
    // The library remembers for the whole process that an optional positional argument was
    // registered, and would refuse the port of a second parser as following it.
    TCLAP::OptionalUnlabeledTracker::alreadyOptional() = false;
    try {
        GpsOptions options;
        options.cmd.setExceptionHandling(ending == ParseEnding::ExitsProcess);
        options.cmd.parse(argc, argv);
        options.Fill(settings);
    } catch (const TCLAP::ArgException& error) {
        // When the parser handles its own errors it prints them and exits; what reaches here then
        // was raised while the options were set up or read.
        std::cerr << "error: " << error.error() << " for arg " << error.argId() << std::endl;
    } catch (const TCLAP::ExitException&) {
        // Only when the parser returns instead of exiting: it has printed its help or version.
        settings.bHelpShown = true;
    }
}
