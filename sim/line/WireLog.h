#ifndef GNSS_SIM_LINE_WIRELOG_H
#define GNSS_SIM_LINE_WIRELOG_H

#include "sim/line/SimClock.h"

#include <deque>
#include <fstream>
#include <string>
#include <vector>

namespace GnssSim {

// What a wire-log line is about:
//   In    - a chunk read from the line (what the tool wrote), as read;
//   Out   - a chunk written to the line (what the tool receives), as written;
//   Heard - what the receiver made of a line, packet or run of noise it heard;
//   Event - a change of the receiver or the line (speed, restart, hang-up).
enum class WireDirection { In, Out, Heard, Event };

// One line of the wire log:
//   <seconds> <direction> <line baud> <receiver baud> "<bytes>" <meaning>
// seconds since the simulator started, with six decimals; direction "in", "out", "heard" or
// "event"; the two speeds in decimal (0 when the line has no speed); the bytes escaped as
// EscapeBytes does; the meaning as free text up to the end of the line.
struct WireLogEntry {
    double seconds = 0.0;
    WireDirection direction = WireDirection::Event;
    int lineBaud = 0;
    int receiverBaud = 0;
    std::string bytes;
    std::string meaning;
};

std::string FormatWireLogEntry(const WireLogEntry& entry);

// false when the line does not have the layout above.
bool ParseWireLogLine(const std::string& line, WireLogEntry& entry);

const char* WireDirectionName(WireDirection direction);

// Every chunk in both directions, kept in memory for tests and written to a file for people.
class WireLog {
public:
    explicit WireLog(TimePoint start);

    // Also write every line to the file from now on, flushed at once so that it can be followed.
    bool OpenFile(const std::string& path, std::string& error);

    void Add(TimePoint when, WireDirection direction, int lineBaud, int receiverBaud, const std::string& bytes,
             const std::string& meaning);

    std::vector<std::string> Lines() const;

private:
    // A long serving session with NMEA streaming must not grow without bound; the file keeps all.
    static const std::size_t kMaxKeptLines = 100000;

    TimePoint m_start;
    std::deque<std::string> m_lines;
    std::ofstream m_file;
};

}

#endif
