#include "sim/model/ReceiverCatalogue.h"

namespace GnssSim {

namespace {

// Built on first use rather than at start-up, where a failed allocation could not be caught.
const std::vector<ReceiverKind>& Kinds()
{
    static const std::vector<ReceiverKind> kinds = {
        {"oemv", Family::Novatel, Generation::OemV},
        {"oemstar", Family::Novatel, Generation::OemStar},
        {"oemstarg", Family::Novatel, Generation::OemStarG},
        {"oem6", Family::Novatel, Generation::Oem6},
        {"oem7500", Family::Novatel, Generation::Oem7500},
        {"oem7700", Family::Novatel, Generation::Oem7700},
        {"csi", Family::Csi, Generation::None},
        {"pmcag", Family::Pmcag, Generation::None},
        {"silent", Family::Silent, Generation::None},
    };
    return kinds;
}

struct IdentityDefaults {
    const char* name;
    Component main;
    const char* packageVersion;
    const char* otherModel;
};

// Built on first use rather than at start-up, where a failed allocation could not be caught.
const std::vector<IdentityDefaults>& Identities()
{
    static const std::vector<IdentityDefaults> identities = {
        {"oemv",
         {"GPSCARD", "L12RV", "DZZ06040010", "OEMV2G-2.00-2T", "3.000A19", "3.000A9", "2006/Feb/ 9", "17:14:33"},
         "3.000A19P", "L1SRV"},
        {"oemstar",
         {"GPSCARD", "S1R0R0TT0", "SBN11050023", "OEMSTAR-1.01", "L6X010100RN0000", "L6X010000RB0000", "2011/Mar/14",
          "14:12:07"},
         "L6X010100RP0000", "S1R0R0TTR"},
        {"oemstarg",
         {"GPSCARD", "S1GR0RTT0", "SBN12080141", "OEMSTAR-2.00", "L6X010101RN0000", "L6X010000RB0000", "2012/Aug/02",
          "09:31:55"},
         "L6X010101RP0000", "S1GR0RTTR"},
        {"oem6",
         {"GPSCARD", "D2LRPGTTN", "BFN11340108", "OEM615-1.01", "OEM060600RN0000", "OEM060200RB0000", "2014/Apr/23",
          "13:39:17"},
         "OEM060600RP0000", "D2L0PG0T0"},
        {"oem7500",
         {"GPSCARD", "FFNRNNCBN", "DMKE19010011W", "OEM7500-0.00H", "OEM070600RN0000", "OEM070400RB0000",
          "2019/Mar/22", "16:47:21"},
         "EP0706000000", "FFNRNNCBES1"},
        {"oem7700",
         {"GPSCARD", "FFNRNNCBES1", "BMHR17140001X", "OEM7700-1.01", "OEM070600RN0000", "OEM070400RB0000",
          "2019/Mar/22", "16:47:21"},
         "EP0706000000", "FFNRNNCBN"},
        {"csi",
         {"DGPS", "MBX-4", "810133", "3", "6.3Jun04", "1.2", "09061998", "12:00:00"}, "", "MBX-4"},
        {"pmcag",
         {"GPSCARD", "UGPS-100", "0001234", "2", "2.10", "1.00", "2008/Jan/10", "08:00:00"}, "", "UGPS-100"},
        {"silent", {"GPSCARD", "SILENT", "0", "0", "0", "0", "", ""}, "", "SILENT"},
    };
    return identities;
}

const IdentityDefaults& DefaultsOf(const ReceiverKind& kind)
{
    for (const IdentityDefaults& defaults : Identities()) {
        if (kind.name == defaults.name) {
            return defaults;
        }
    }
    return Identities().back();
}

}

bool FindReceiverKind(const std::string& name, ReceiverKind& kind)
{
    for (const ReceiverKind& known : Kinds()) {
        if (known.name == name) {
            kind = known;
            return true;
        }
    }
    return false;
}

std::vector<std::string> ReceiverNames()
{
    std::vector<std::string> names;
    for (const ReceiverKind& known : Kinds()) {
        names.push_back(known.name);
    }
    return names;
}

ReceiverIdentity DefaultIdentity(const ReceiverKind& kind)
{
    const IdentityDefaults& defaults = DefaultsOf(kind);
    ReceiverIdentity identity;
    identity.components.push_back(defaults.main);
    identity.SetPackageVersion(defaults.packageVersion);
    return identity;
}

std::vector<ValidModel> DefaultValidModels(const ReceiverKind& kind, const ReceiverIdentity& identity)
{
    std::vector<ValidModel> models;
    models.push_back(ValidModel{identity.Main().model, 0, 0, 0});
    const std::string other = DefaultsOf(kind).otherModel;
    if (other != identity.Main().model) {
        models.push_back(ValidModel{other, 0, 0, 0});
    }
    return models;
}

}
