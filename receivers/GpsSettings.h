#ifndef GNSS_RECEIVERS_GPSSETTINGS_H
#define GNSS_RECEIVERS_GPSSETTINGS_H

#include <set>
#include <string>

#include "receivers/ReceiverType.h"

// What one run is asked to do, as the command line gave it.
struct GpsSettings {
    int bParsedOk = 0;  // zero: the command line was not accepted and the run ends with status 1
    std::string strPort = "/dev/ttymxc0";
    bool bNoUseGps = false;
    bool bUseGlonass = false;
    bool bUseBeidou = false;
    bool bUseGalileo = false;
    bool bUseQzss = false;
    bool bUseSbas = false;
    bool bUsePpp = false;
    bool bAllowType0 = false;  // permit RTCM type 0 messages
    int nBaudRate = 115200;
    bool bOutputGSA = false;
    bool bOutputVTG = false;
    bool bOutputGSV = false;
    bool bOutputZDA = false;
    float fGGAFrequency = 5.0f;
    float fVTGFrequency = 5.0f;
    float fZDAFrequency = 0.2f;
    float fGSAFrequency = 0.0f;
    float fGSVFrequency = 0.0f;
    std::set<int> PRNs;  // SBAS PRNs to enable; empty means all
    bool bFix = false;
    bool bConfigure = true;  // false: tell the driver the receiver is unknown, configure nothing
    bool bQueryOnly = false;
    bool bExtendedQuery = false;
    bool bDryRun = false;
    // Receiver-type override for the kernel driver; nReceiverType 10 means no override.
    std::string strFirmware;
    std::string strExtendedVersion;
    int nReceiverType = ReceiverType::Uninitialized;
    bool bResetReceiver = false;
    bool bResetPdpFilter = false;
    bool bListModels = false;
    bool bListCurrentModel = false;
    // The parser's help and version end the process, so this stays false unless the caller asked
    // the parse to return instead (ParseEnding::ReturnsToCaller).
    bool bHelpShown = false;
    bool bSaveConfig = false;
};

#endif
