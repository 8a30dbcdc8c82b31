#ifndef GNSS_SIM_LINE_FAULT_H
#define GNSS_SIM_LINE_FAULT_H

#include <string>
#include <vector>

namespace GnssSim {

enum class FaultKind {
    NoAnswer,             // the command is heard but neither carried out nor answered
    Delay,                // the answer leaves `value` ms late
    NulInAnswer,          // a NUL byte right after the answer's first printable character
    NulBeforeAnswer,      // a NUL byte on a line of its own before the answer
    LongLineInAnswer,     // `value` filler characters inside the answer, after its first printable character
    LongLineBeforeAnswer, // a line of `value` filler characters before the answer
    SplitAnswer,          // the answer in two writes, `value` ms apart, cut two characters into its text
    NoiseBetweenLines,    // `value` garbled bytes before every line the receiver starts
    HangUpAfterBytes,     // the line drops once the receiver has sent `value` bytes
    StartAtBaud,          // the receiver starts at `value` baud instead of its start-up speed
    NmeaFlood,            // GGA and RMC sentences `value` times a second, unasked, from the start
};

// One fault. The answer faults name the command they apply to. A command pattern is compared
// word by word with what the receiver heard, without regard to case and with blanks and commas
// alike (NovAtel's commands are case-insensitive), so "SBASCONTROL ENABLE" matches
// "sbascontrol enable" but neither "SBASCONTROL ENABLE AUTO" nor "UNLOCKOUTSYSTEM BEIDOU". A last
// word "*" stands for any further words; the pattern "*" matches every command.
struct Fault {
    FaultKind kind = FaultKind::NoAnswer;
    std::string command = "*";
    long value = 0;

    static Fault NoAnswer(const std::string& command);
    static Fault Delay(long ms, const std::string& command = "*");
    static Fault NulInAnswer(const std::string& command = "*");
    static Fault NulBeforeAnswer(const std::string& command = "*");
    static Fault LongLineInAnswer(const std::string& command = "*", long length = kDefaultLongLine);
    static Fault LongLineBeforeAnswer(const std::string& command = "*", long length = kDefaultLongLine);
    static Fault SplitAnswer(long pauseMs, const std::string& command = "*");
    static Fault NoiseBetweenLines(long bytes);
    static Fault HangUpAfterBytes(long bytes);
    static Fault StartAtBaud(long baud);
    static Fault NmeaFlood(long perSecond);

    // Longer than the 999 characters that the tool reads into one line, so it fills its buffer.
    static const long kDefaultLongLine = 1200;

    // Whether this fault concerns the answer to the heard command line.
    bool AppliesTo(const std::string& heardLine) const;
};

// Word-by-word match of a command pattern against a heard line, as described above.
bool CommandMatches(const std::string& pattern, const std::string& heardLine);

// The first fault of the kind that applies to the heard line, or null.
const Fault* FindFault(const std::vector<Fault>& faults, FaultKind kind, const std::string& heardLine);

// The value of the first line-wide fault of the kind, or `absent`.
long LineFaultValue(const std::vector<Fault>& faults, FaultKind kind, long absent);

// A short description for the wire log and the program's summary.
std::string DescribeFault(const Fault& fault);

}

#endif
