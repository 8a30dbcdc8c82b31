#ifndef GNSS_RECEIVERS_NOVATEL_LOGCOMMAND_H
#define GNSS_RECEIVERS_NOVATEL_LOGCOMMAND_H

#include <string>

class CComPort;

namespace NovatelCommon {

// Switches a log on ("LOG <name> ONTIME <period>") or off ("UNLOG <name>", no period), waits up
// to 100 ms for "<OK" and pauses 200 ms more when it does not come. Returns the port code of the
// command's write.
int SendLogCommand(CComPort& port, const std::string& logName, const std::string& periodText,
                   bool on);

// The period of a log sent rateHz times a second, in seconds, with one decimal or, when
// twoDecimals, two. A zero rate gives "inf".
std::string FormatLogPeriod(float rateHz, bool twoDecimals);

}  // namespace NovatelCommon

#endif
