#ifndef GNSS_SIM_MODEL_RECEIVERSETUP_H
#define GNSS_SIM_MODEL_RECEIVERSETUP_H

#include "sim/line/Fault.h"
#include "sim/line/SimClock.h"
#include "sim/model/ReceiverCatalogue.h"
#include "sim/model/ReceiverIdentity.h"
#include "sim/model/ReceiverState.h"

#include <optional>
#include <string>
#include <vector>

namespace GnssSim {

class HeardRecord;
class Pty;
class Transmitter;
class WireLog;

// Everything a receiver model is made from.
struct ReceiverSetup {
    ReceiverKind kind;
    ReceiverIdentity identity;
    std::optional<std::string> versionLine; // sent as the version log instead of one made from identity
    std::vector<ValidModel> validModels;
    int channelConfigCount = 0;
    // What the receiver starts with and comes back to after a reset when nothing was saved; its
    // baud is the start-up speed.
    ReceiverState factory;
    int initialBaud = 0;       // the speed it starts at, when a fault makes that another one
    long restartMs = 0;        // how long a reset or a channel configuration change keeps it silent
    std::string port = "COM1"; // the port it listens on, named in its prompt and log headers
    TimePoint start;
};

// What a receiver model works with: the line (to learn its speed), the line's transmit side, the
// record of what it heard, the wire log and the faults in force. All of it belongs to the simulator, which calls the model
// under its lock only.
struct ReceiverLine {
    const Pty& pty;
    Transmitter& transmitter;
    HeardRecord& heard;
    WireLog& wireLog;
    const std::vector<Fault>& faults;
};

}

#endif
