#ifndef GNSS_SIM_RECEIVERS_NOVATELLOGS_H
#define GNSS_SIM_RECEIVERS_NOVATELLOGS_H

#include "sim/model/ReceiverIdentity.h"

#include <string>
#include <vector>

namespace GnssSim {

// The ten header fields of a NovAtel ASCII log: the log name, then these nine.
struct NovatelLogHeader {
    std::string port = "COM1";
    int sequence = 0;
    double idlePercent = 80.0;
    std::string timeStatus = "FINESTEERING";
    int week = 2318;
    double seconds = 302400.0;
    std::string receiverStatus = "02000020";
    std::string reserved = "b1f6";
    int softwareBuild = 16809;
};

// "#" + name + "," + header fields + ";" + body + "*" + CRC of the bytes between "#" and "*" + CR LF.
std::string FormatNovatelLog(const std::string& name, const NovatelLogHeader& header, const std::string& body);

// The version log's body: the number of components, then per component its type (unquoted) and
// model, serial number, hardware, software and boot versions, compile date and time (quoted).
std::string VersionLogBody(const ReceiverIdentity& identity);

// The models list's body: the number of models, then per model its quoted name and expiry year,
// month and day.
std::string ValidModelsLogBody(const std::vector<ValidModel>& models);

// The channel configuration list's body: the set in use, the number of sets, then per set its
// number of entries and (channel count, signal type) pairs.
std::string ChanConfigListLogBody(int inUse, int count);

}

#endif
