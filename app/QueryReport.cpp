#include "app/QueryReport.h"

#include "receivers/CGPSConfigurer.h"
#include "receivers/ReceiverType.h"
#include "receivers/novatel/OemV1Descendants.h"

namespace {

void PrintNovatelVersion(NovatelCommon::OemV1Descendants& novatel,
                         const std::string& extendedVersion, std::ostream& out)
{
    out << "  Ext Ver:     " << extendedVersion << std::endl;
    // The component type is in the record too, but the console's users never needed it.
    const VersionRecord record = novatel.GetVersionRecord();
    out << "  Model:       " << record.strModel << std::endl;
    out << "  PSN:         " << record.strPsn << std::endl;
    out << "  HW Version:  " << record.strHwVersion << std::endl;
    out << "  SW Version:  " << record.strSwVersion << std::endl;
    out << "  Boot:        " << record.strBootVersion << std::endl;
}

}  // namespace

void PrintQueryReport(CGPSConfigurer& configurer, int receiverType, bool extended,
                      std::ostream& out)
{
    const std::string firmware = configurer.GetFirmwareVersion();
    out << "Receiver " << std::endl;
    out << "  Type:        " << GetReceiverTypeName(receiverType) << std::endl;
    out << "  Firmware:    " << firmware << std::endl;
    if (!extended) {
        return;
    }
    const std::string extendedVersion = configurer.GetExtendedVersion();
    // Only NovAtel receivers have a version record; the others show no "Ext Ver" line at all.
    auto* novatel = dynamic_cast<NovatelCommon::OemV1Descendants*>(&configurer);
    if (novatel != nullptr) {
        PrintNovatelVersion(*novatel, extendedVersion, out);
    }
    out << "  Raw Info:    " << configurer.GetRawVersionInfo() << std::endl;
}
