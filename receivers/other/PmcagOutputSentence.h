#ifndef GNSS_RECEIVERS_OTHER_PMCAGOUTPUTSENTENCE_H
#define GNSS_RECEIVERS_OTHER_PMCAGOUTPUTSENTENCE_H

#include <string>

// One NMEA message as the "$PMCAG" output sentence sees it: its stored rate and whether it is on.
struct PmcagMessageOutput {
    float hz;
    bool on;
};

struct PmcagOutputSettings {
    PmcagMessageOutput gga;
    PmcagMessageOutput gsa;
    PmcagMessageOutput gsv;
    PmcagMessageOutput vtg;
    PmcagMessageOutput zda;
};

// The period text the receiver expects for a rate: "999" above 1 Hz (as fast as it goes), else
// 1 divided by the whole hertz, as "%03d". A rate below 1 Hz (and a rate that is not a number)
// has no whole hertz: the process ends with SIGFPE, the end start-up scripts know for this family
// (status 136), and nothing is returned.
std::string PmcagPeriodText(float hz);

// The one sentence that sets all five messages, checksum and CR LF included:
// "$PMCAG,005,0,GGA,ggg,GSA,aaa,GSV,vvv,VTG,ttt,ZDA,zzz*CS\r\n", "000" for a message that is off.
// The periods of all five messages are worked out even for messages that are off, so any rate
// below 1 Hz ends the process with SIGFPE before anything is sent.
std::string BuildPmcagOutputSentence(const PmcagOutputSettings& settings);

#endif
