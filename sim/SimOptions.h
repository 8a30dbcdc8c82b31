#ifndef GNSS_SIM_SIMOPTIONS_H
#define GNSS_SIM_SIMOPTIONS_H

#include "sim/line/Fault.h"
#include "sim/model/ReceiverIdentity.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace GnssSim {

// Real receivers take several seconds to boot after a reset or a channel configuration change;
// five keeps the tool's search for a restarted receiver honest. Tests set a few hundred ms.
const long kDefaultRestartMs = 5000;

// The receivers' own start-up speed as the console ships them (they leave the factory at 9600).
const int kDefaultStartupBaud = 115200;

// Any fixed seed makes runs repeatable; this one is only a default.
const std::uint32_t kDefaultNoiseSeed = 20240612u;

struct SimOptions {
    // "oemv", "oemstar", "oemstarg", "oem6", "oem7500", "oem7700", "csi", "pmcag" or "silent".
    std::string receiver = "oem7700";

    // Unset: the receiver's own (DefaultIdentity, DefaultValidModels, the generation's count).
    std::optional<ReceiverIdentity> identity;
    std::optional<std::vector<ValidModel>> validModels;
    std::optional<int> channelConfigCount;

    // A NovAtel receiver's version log, byte for byte as it is to be sent (its line end included),
    // instead of the one made from the identity: a unit's own line from the field, to see what the
    // tool makes of it. The other families have no version log and leave it unused.
    std::optional<std::string> versionLine;

    // The speed the receiver starts at and comes back at after a reset, unless a configuration
    // with another speed was saved.
    int startupBaud = kDefaultStartupBaud;
    int channelConfig = 1;
    bool echo = false;

    std::vector<Fault> faults;

    // How long a reset or "selectchanconfig" keeps the receiver silent.
    long restartMs = kDefaultRestartMs;

    // Send at the line's byte rate (10 bits a byte) instead of all at once.
    bool pace = false;

    std::uint32_t noiseSeed = kDefaultNoiseSeed;

    // The receiver port the receiver listens on, as its prompt and log headers name it.
    std::string port = "COM1";

    // A symbolic link to make to the line's device (for example /dev/ttyO1); removed on Stop.
    std::string linkPath;

    // A file to write the wire log to as it grows; the log is kept in memory as well.
    std::string wireLogPath;
};

}

#endif
