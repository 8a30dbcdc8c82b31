#ifndef GNSS_SIM_TIMELINE_SESSION_H
#define GNSS_SIM_TIMELINE_SESSION_H

#include "sim/line/WireLog.h"

#include <string>
#include <vector>

namespace GnssSim {

// Who sent a line: the tool (the program on the port) or the receiver.
enum class Side { Tool, Receiver };

// A line that crossed the wire, as the picture of a session shows it. Times are seconds since the
// simulator started.
struct SessionLine {
    Side side = Side::Tool;
    double start = 0.0;    // when its first byte crossed
    double end = 0.0;      // when its last byte crossed (later than start only when paced)
    std::string bytes;     // as they crossed, line end included; garbled bytes where it was lost
    std::string label;     // what to call it: its text without the line end, what the receiver meant to
                           // send where that did not get through, or "packet 110"
    std::string note;      // what the wire log says of it: what the receiver made of it, or sent
    bool lost = false;     // the other side could not take it in: sent at another speed than it
                           // listened at, while it restarted, or spoilt by noise before it
    bool streamed = false; // sent by the receiver unasked: a log it streams, a flood's sentence
};

// A stretch of time at one speed. On the receiver's side a restart is a stretch of its own.
struct SpeedStretch {
    double from = 0.0;
    double to = 0.0;
    int baud = 0;            // 0: no speed (a line nobody set yet, a receiver that hung up)
    bool restarting = false; // the receiver is restarting: deaf and dumb
};

// A wait the tool sat through: nothing crossed the line either way (streamed sentences aside).
struct Wait {
    double from = 0.0;
    double to = 0.0;
};

// What the picture shows of a session.
struct Session {
    double end = 0.0;                          // when the command ended, or the last thing logged
    std::vector<SessionLine> lines;            // both sides, in the order they crossed
    std::vector<SpeedStretch> lineSpeeds;      // the speed the tool set on the line
    std::vector<SpeedStretch> receiverSpeeds;  // the speed the receiver listened at
    std::vector<Wait> waits;                   // in time order, each at least kMinWaitSeconds long
};

// Shorter pauses are the tool's own pace between commands, not waits worth marking.
constexpr double kMinWaitSeconds = 0.2;

// The session a wire log records, a pure function of its entries (in the order logged). The tool's
// lines come from what the receiver heard (a run of noise or of lost bytes is cut into its lines),
// the receiver's from what it sent: a paced answer's slices make one line, and a line without a
// line end (a prompt) ends where the answer ends. The session ends at the command's end when the
// log notes it.
Session ReadSession(const std::vector<WireLogEntry>& log);

}

#endif
