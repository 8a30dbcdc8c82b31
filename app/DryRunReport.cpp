#include "app/DryRunReport.h"

namespace {

const char* YesNo(bool value)
{
    return value ? "Yes" : "No";
}

void PrintPrns(const GpsSettings& settings, std::ostream& out)
{
    if (settings.PRNs.empty()) {
        out << "All";
        return;
    }
    for (int prn : settings.PRNs) {
        out << prn << " ";
    }
}

void PrintSettings(const GpsSettings& settings, std::ostream& out)
{
    out << "Need to configure GPS on port " << settings.strPort << " with settings:" << std::endl;
    out << "  bUseGps             " << YesNo(!settings.bNoUseGps) << std::endl;
    out << "  bUseGlonass         " << YesNo(settings.bUseGlonass) << std::endl;
    out << "  bUseBeidou          " << YesNo(settings.bUseBeidou) << std::endl;
    out << "  bUseGalileo         " << YesNo(settings.bUseGalileo) << std::endl;
    out << "  bUseQzss            " << YesNo(settings.bUseQzss) << std::endl;
    out << "  bUseSbas            " << YesNo(settings.bUseSbas) << std::endl;
    out << "  bUsePpp             " << YesNo(settings.bUsePpp) << std::endl;
    out << "  bAllowType0         " << YesNo(settings.bAllowType0) << std::endl;
    out << "  bOutputGSA          " << YesNo(settings.bOutputGSA) << std::endl;
    out << "  fGSAFrequency       " << settings.fGSAFrequency << std::endl;
    out << "  fGGAFrequency       " << settings.fGGAFrequency << std::endl;
    out << "  PRNs                ";
    PrintPrns(settings, out);
    out << std::endl;
    out << "  bOutputVTG    " << YesNo(settings.bOutputVTG) << std::endl;
    out << "  fVTGFrequency " << settings.fVTGFrequency << std::endl;
    out << "  bOutputGSV    " << YesNo(settings.bOutputGSV) << std::endl;
    out << "  fGSVFrequency " << settings.fGSVFrequency << std::endl;
    out << "  bOutputZDA    " << YesNo(settings.bOutputZDA) << std::endl;
    out << "  fZDAFrequency " << settings.fZDAFrequency << std::endl;
    out << "  fix           " << YesNo(settings.bFix) << std::endl;
    out << " Save Configuration " << YesNo(settings.bSaveConfig) << std::endl;
}

}  // namespace

void PrintDryRunReport(const GpsSettings& settings, std::ostream& out)
{
    // The PDP-filter reset is announced before the receiver reset, although a real run resets
    // the receiver when both are asked for. Scripts read these lines, so the order stays.
    if (!settings.bParsedOk || settings.bHelpShown) {
        out << "Print Help" << std::endl;
    } else if (settings.bQueryOnly) {
        out << "Not initializing GPS or driver.  Querying GPS on port " << settings.strPort
            << std::endl;
    } else if (settings.bListModels) {
        out << "Listing models for your Novatel GPS" << std::endl;
    } else if (settings.bListCurrentModel) {
        out << "List current model for your Novatel GPS" << std::endl;
    } else if (settings.bResetPdpFilter) {
        out << "Reseting PDP filter" << std::endl;
    } else if (settings.bResetReceiver) {
        out << "Reseting receiver" << std::endl;
    } else if (!settings.bConfigure) {
        out << "Initializing driver without configuring GPS for port " << settings.strPort
            << std::endl;
    } else if (settings.nReceiverType != ReceiverType::Uninitialized) {
        // An override ends the run before the port is opened; this line is never reached.
        out << "Setting driver receiver type to " << GetReceiverTypeName(settings.nReceiverType)
            << std::endl;
    } else {
        PrintSettings(settings, out);
    }
}
