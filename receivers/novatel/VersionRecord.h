#ifndef GNSS_RECEIVERS_NOVATEL_VERSIONRECORD_H
#define GNSS_RECEIVERS_NOVATEL_VERSIONRECORD_H

#include <string>

// The first component of a NovAtel "#VERSIONA" log, each field without its double quotes. Every
// field is empty when the log could not be read or had too few fields.
struct VersionRecord {
    std::string strComponentType;
    std::string strModel;
    std::string strPsn;  // product serial number
    std::string strHwVersion;
    std::string strSwVersion;
    std::string strBootVersion;
};

#endif
