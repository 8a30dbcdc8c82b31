#include "sim/receivers/CsiReceiver.h"

#include "sim/text/ByteText.h"
#include "sim/text/NmeaSentences.h"

namespace GnssSim {

namespace {

const char* const kDiffSources[] = {"NONE", "WAAS", "BEACON", "OMNISTAR", "X"};

bool IsDiffSource(const std::string& word)
{
    for (const char* source : kDiffSources) {
        if (word == source) {
            return true;
        }
    }
    return false;
}

}

CsiReceiver::CsiReceiver(const ReceiverSetup& setup, ReceiverLine& line) : ReceiverModel(setup, line)
{
}

std::size_t CsiReceiver::ConsumeUnit(const std::string& bytes, std::size_t pos)
{
    const std::size_t end = m_input.Take(bytes, pos);
    if (m_input.HasLine()) {
        bool garbled = false;
        const std::string line = m_input.PopLine(garbled);
        OnLine(line, garbled);
    }
    return end;
}

void CsiReceiver::OnLine(const std::string& line, bool garbled)
{
    const std::string text = WithoutLineEnd(line);
    if (garbled) {
        RecordLine(line, true, "unreadable, no answer");
    } else if (text.empty()) {
        RecordLine(line, false, "empty");
    } else if (IsSilenced(line)) {
        RecordLine(line, false, "no answer (fault)");
    } else {
        RecordLine(line, false, Execute(line, SplitKeepingEmpty(text, ',')));
    }
}

// Returns the verdict; sends the answer, if the command has one.
std::string CsiReceiver::Execute(const std::string& line, const std::vector<std::string>& fields)
{
    const std::string command = UpperCase(fields[0]);
    if (command == "$JAPP") {
        SendAnswer(line, "", ApplicationsAnswer(), "$>JAPP");
        return "$>JAPP";
    }
    if (command == "$JI") {
        SendAnswer(line, "", IdentityAnswer(), "$>JI");
        return "$>JI";
    }
    if (command == "$JASC") {
        return SwitchSentence(fields);
    }
    if (command == "$JDIFF" && fields.size() == 2 && IsDiffSource(UpperCase(fields[1]))) {
        MutableState().settings["$JDIFF"] = UpperCase(fields[1]);
        return "accepted";
    }
    if (command == "$JWAASPRN") {
        MutableState().settings["$JWAASPRN"] = WithoutLineEnd(line).substr(fields[0].size());
        return "accepted";
    }
    if (command == "$JSAVE") {
        SaveState();
        return "accepted";
    }
    return "not understood, no answer";
}

std::string CsiReceiver::SwitchSentence(const std::vector<std::string>& fields)
{
    double rate = 0.0;
    const std::string name = fields.size() >= 3 ? UpperCase(fields[1]) : std::string();
    if (!IsNmeaLogName(name) || name == "GPGGALONG" || !ParseDecimal(fields[2], rate) || rate < 0.0) {
        return "not understood, no answer";
    }
    if (rate == 0.0) {
        MutableState().logs.erase(name);
    } else {
        MutableState().logs[name] = 1.0 / rate;
    }
    return "accepted";
}

std::string CsiReceiver::ApplicationsAnswer() const
{
    return "$>JAPP,WAAS,DIFF\r\n";
}

// Eight fields or more; the firmware version is the eighth, with a field after it.
std::string CsiReceiver::IdentityAnswer() const
{
    const Component& main = Setup().identity.Main();
    return "$>JI," + main.psn + ",1," + main.hwVersion + "," + main.date + ",01/01/1900,01/01/3000," +
           main.swVersion + ",0\r\n";
}

std::string CsiReceiver::LogOutput(const std::string& logName)
{
    const double elapsed = std::chrono::duration<double>(Now() - Setup().start).count();
    return NmeaSentencesFor(logName, elapsed);
}

}
