#include "sim/line/Fault.h"

#include "sim/text/ByteText.h"

namespace GnssSim {

namespace {

Fault Make(FaultKind kind, const std::string& command, long value)
{
    Fault fault;
    fault.kind = kind;
    fault.command = command;
    fault.value = value;
    return fault;
}

const char* KindName(FaultKind kind)
{
    switch (kind) {
    case FaultKind::NoAnswer: return "no answer to";
    case FaultKind::Delay: return "answer delayed for";
    case FaultKind::NulInAnswer: return "NUL inside the answer to";
    case FaultKind::NulBeforeAnswer: return "NUL before the answer to";
    case FaultKind::LongLineInAnswer: return "over-long answer to";
    case FaultKind::LongLineBeforeAnswer: return "over-long line before the answer to";
    case FaultKind::SplitAnswer: return "answer split for";
    case FaultKind::NoiseBetweenLines: return "noise between lines";
    case FaultKind::HangUpAfterBytes: return "hang-up after bytes sent";
    case FaultKind::StartAtBaud: return "start at baud";
    case FaultKind::NmeaFlood: return "NMEA sentences a second, unasked";
    }
    return "fault";
}

bool IsLineWide(FaultKind kind)
{
    return kind == FaultKind::NoiseBetweenLines || kind == FaultKind::HangUpAfterBytes ||
           kind == FaultKind::StartAtBaud || kind == FaultKind::NmeaFlood;
}

}

Fault Fault::NoAnswer(const std::string& command)
{
    return Make(FaultKind::NoAnswer, command, 0);
}

Fault Fault::Delay(long ms, const std::string& command)
{
    return Make(FaultKind::Delay, command, ms);
}

Fault Fault::NulInAnswer(const std::string& command)
{
    return Make(FaultKind::NulInAnswer, command, 0);
}

Fault Fault::NulBeforeAnswer(const std::string& command)
{
    return Make(FaultKind::NulBeforeAnswer, command, 0);
}

Fault Fault::LongLineInAnswer(const std::string& command, long length)
{
    return Make(FaultKind::LongLineInAnswer, command, length);
}

Fault Fault::LongLineBeforeAnswer(const std::string& command, long length)
{
    return Make(FaultKind::LongLineBeforeAnswer, command, length);
}

Fault Fault::SplitAnswer(long pauseMs, const std::string& command)
{
    return Make(FaultKind::SplitAnswer, command, pauseMs);
}

Fault Fault::NoiseBetweenLines(long bytes)
{
    return Make(FaultKind::NoiseBetweenLines, "", bytes);
}

Fault Fault::HangUpAfterBytes(long bytes)
{
    return Make(FaultKind::HangUpAfterBytes, "", bytes);
}

Fault Fault::StartAtBaud(long baud)
{
    return Make(FaultKind::StartAtBaud, "", baud);
}

Fault Fault::NmeaFlood(long perSecond)
{
    return Make(FaultKind::NmeaFlood, "", perSecond);
}

bool Fault::AppliesTo(const std::string& heardLine) const
{
    return !IsLineWide(kind) && CommandMatches(command, heardLine);
}

bool CommandMatches(const std::string& pattern, const std::string& heardLine)
{
    const std::vector<std::string> wanted = CommandWords(pattern);
    const std::vector<std::string> heard = CommandWords(heardLine);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i] == "*" && i + 1 == wanted.size()) {
            return true;
        }
        if (i >= heard.size() || wanted[i] != heard[i]) {
            return false;
        }
    }
    return !wanted.empty() && wanted.size() == heard.size();
}

const Fault* FindFault(const std::vector<Fault>& faults, FaultKind kind, const std::string& heardLine)
{
    for (const Fault& fault : faults) {
        if (fault.kind == kind && fault.AppliesTo(heardLine)) {
            return &fault;
        }
    }
    return nullptr;
}

long LineFaultValue(const std::vector<Fault>& faults, FaultKind kind, long absent)
{
    for (const Fault& fault : faults) {
        if (fault.kind == kind) {
            return fault.value;
        }
    }
    return absent;
}

std::string DescribeFault(const Fault& fault)
{
    std::string text = KindName(fault.kind);
    if (IsLineWide(fault.kind)) {
        return text + " " + std::to_string(fault.value);
    }
    text += " \"" + fault.command + "\"";
    if (fault.kind == FaultKind::Delay || fault.kind == FaultKind::SplitAnswer) {
        text += " (" + std::to_string(fault.value) + " ms)";
    } else if (fault.kind == FaultKind::LongLineInAnswer || fault.kind == FaultKind::LongLineBeforeAnswer) {
        text += " (" + std::to_string(fault.value) + " characters)";
    }
    return text;
}

}
