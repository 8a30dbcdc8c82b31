#ifndef GNSS_RECEIVERS_NOVATEL_VERSIONLOG_H
#define GNSS_RECEIVERS_NOVATEL_VERSIONLOG_H

#include "receivers/novatel/VersionRecord.h"

#include <string>

class CComPort;

// The receiver's version log: what every NovAtel receiver tells about itself, and the receiver
// generation that follows from it. Apart from IdentifyNovatelReceiver these are pure functions of
// the log line.
namespace NovatelCommon {

// The request that makes the receiver send one "#VERSIONA" line.
extern const char* const kVersionLogRequest;

// A version-log line: "#VERSIONA", optionally after a "[COM1]", "[COM2]" or "[COM3]" prompt.
bool IsVersionLine(const std::string& line);

// The first component of the log. Only the text after the one ";" is read, so a prompt in front
// does not matter; a line with no or two ";", or fewer than nine body fields, gives the empty
// record.
VersionRecord ParseVersionRecord(const std::string& line);

// Characters 4 to 9 of the quoted software version (the six after "OEM" in "OEM060600RN0000"),
// or as many of them as exist; "" for a line that is not a version line or has fewer than seven
// body fields.
std::string FirmwareVersionFromLine(const std::string& line);

// The software version of the last "PACKAGE" component, without quotes; "" when there is none,
// when the last one is cut short before its software version, or for a line that is not a
// version line.
std::string ExtendedVersionFromLine(const std::string& line);

// The receiver type number of a version line (ReceiverType::OemStar ... Oem7700), or
// ReceiverType::Unknown. OEMV receivers are not recognised here.
int ClassifyVersionLine(const std::string& line);

// Asks for the version log at 115200, 19200 and 9600 baud in turn. Returns the first generation
// recognised and leaves the port at the rate that answered; when none is, the port is put back to
// its entry rate and the result is ReceiverType::Unknown. Takes about 7 to 9.5 s when nothing
// answers.
int IdentifyNovatelReceiver(CComPort& port);

// Asks for the version log up to twice and returns the first version line whole (prompt, checksum
// and line end included), or "" after two unanswered requests (2 to 3 s).
std::string ReadVersionLine(CComPort& port);

// Discards stale input, lets pending output go, then asks for the version log. The code of the
// request's write: nonzero when it could not be sent.
int SendVersionLogRequest(CComPort& port);

}  // namespace NovatelCommon

#endif
