#ifndef GNSS_RECEIVERS_OTHER_CSICOMMANDS_H
#define GNSS_RECEIVERS_OTHER_CSICOMMANDS_H

#include "receivers/SbasPrnFlags.h"

#include <string>

// The "$J" command texts of CSI receivers and the rates those receivers can output.
//
// GGA, VTG and ZDA ("class A") can be sent at 5 Hz, 1 Hz or every 5 s; GSA and GSV ("class B")
// only once a second. A requested rate is rounded to what the receiver can do.
float QuantiseCsiRateClassA(float hz);
float QuantiseCsiRateClassB(float hz);

// "\r\n$JASC,<sentence>,<v>\r\n": the sentence on at the stored rate's whole hertz, or off (0).
// A class A sentence at the 5 s rate is switched on with ".2", the only fractional rate the
// receiver takes. The leading CR LF ends any partial line the receiver may be holding.
std::string BuildCsiOutputCommand(const char* sentence, float storedHz, bool on, bool classA);

// "\r\n$JDIFF,NONE\r\n", "...WAAS..." or "...BEACON..." for sources 0, 1 and 2; "" (send
// nothing) for any other source.
std::string BuildCsiDiffSourceCommand(int source);

// "$JWAASPRN" with ",,,AUTO" when every PRN or none is enabled, otherwise with the first two
// enabled PRNs from 120 up; CR LF at the end.
std::string BuildCsiSbasPrnCommand(const SbasPrnFlags& prnEnabled);

#endif
