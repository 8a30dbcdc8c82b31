#include "sim/receivers/NovatelReceiver.h"

#include "sim/receivers/NovatelLogs.h"
#include "sim/receivers/NovatelRequests.h"
#include "sim/text/ByteText.h"
#include "sim/text/NmeaSentences.h"

namespace GnssSim {

namespace {

// The log header's GPS time starts here when the simulator starts and runs on with it, so that a
// repeated run gives the same lines at the same moments.
const double kStartSecondsOfWeek = 302400.0;

std::string ErrorReply(int field)
{
    return "<ERROR:Invalid Message. Field = " + std::to_string(field);
}

}

NovatelReceiver::NovatelReceiver(const ReceiverSetup& setup, ReceiverLine& line) : ReceiverModel(setup, line)
{
}

std::size_t NovatelReceiver::ConsumeUnit(const std::string& bytes, std::size_t pos)
{
    const std::size_t end = m_input.Take(bytes, pos);
    if (State().echo) {
        Send(bytes.substr(pos, end - pos), "echo");
    }
    if (m_input.HasLine()) {
        bool garbled = false;
        const std::string line = m_input.PopLine(garbled);
        OnLine(line, garbled);
    }
    return end;
}

void NovatelReceiver::OnLine(const std::string& line, bool garbled)
{
    const std::vector<std::string> words = CommandWords(line);
    if (garbled) {
        Outcome unreadable;
        unreadable.badField = 1;
        Answer(line, true, unreadable);
    } else if (words.empty()) {
        RecordLine(line, false, "empty");
    } else if (IsSilenced(line)) {
        RecordLine(line, false, "no answer (fault)");
    } else {
        Answer(line, false, Execute(words));
    }
}

void NovatelReceiver::Answer(const std::string& line, bool garbled, const Outcome& outcome)
{
    const std::string reply = outcome.badField == 0 ? "<OK" : ErrorReply(outcome.badField);
    const std::string meaning = outcome.logName.empty() ? reply : reply + ", then " + outcome.logName;
    RecordLine(line, garbled, meaning);
    const std::string replyText = "\r\n" + reply + "\r\n" + Prompt();
    if (outcome.logName.empty()) {
        SendAnswer(line, "", replyText, meaning);
    } else {
        SendAnswer(line, replyText, LogOutput(outcome.logName), meaning);
    }
    if (outcome.newBaud != 0) {
        ChangeBaud(outcome.newBaud);
    }
    if (outcome.restart) {
        BeginRestart(WithoutLineEnd(line));
    }
}

NovatelReceiver::Outcome NovatelReceiver::Execute(const std::vector<std::string>& words)
{
    Outcome rejected;
    const NovatelCommandRule* command = FindNovatelCommand(words[0], Setup().kind.generation);
    if (command == nullptr) {
        rejected.badField = 1;
        return rejected;
    }
    rejected.badField = FirstBadField(*command, words, Setup().kind.generation);
    return rejected.badField != 0 ? rejected : Dispatch(*command, words);
}

NovatelReceiver::Outcome NovatelReceiver::Dispatch(const NovatelCommandRule& command, const std::vector<std::string>& words)
{
    Outcome outcome;
    switch (command.action) {
    case CommandAction::Setting: return StoreSetting(command, words);
    case CommandAction::Echo: return SetEcho(words);
    case CommandAction::Log: return StartLog(words);
    case CommandAction::Unlog: return StopLog(words);
    case CommandAction::UnlogAll: return StopAllLogs();
    case CommandAction::SerialPort: return ConfigurePort(words);
    case CommandAction::SelectChanConfig: return SelectChannelConfig(words);
    case CommandAction::Reset:
        outcome.restart = true;
        return outcome;
    case CommandAction::SaveConfig:
        SaveState();
        return outcome;
    }
    return outcome;
}

NovatelReceiver::Outcome NovatelReceiver::StoreSetting(const NovatelCommandRule& command,
                                                       const std::vector<std::string>& words)
{
    const std::size_t valueAt = 1 + static_cast<std::size_t>(command.keyArgs);
    std::vector<std::string> keyWords(words.begin(), words.begin() + static_cast<long>(valueAt));
    if (command.transient != nullptr && words[1] == command.transient) {
        return Outcome();
    }
    if (command.cancels != nullptr) {
        keyWords[0] = command.cancels;
        MutableState().settings.erase(JoinWords(keyWords, 0, " "));
        return Outcome();
    }
    MutableState().settings[JoinWords(keyWords, 0, " ")] = JoinWords(words, valueAt, " ");
    return Outcome();
}

NovatelReceiver::Outcome NovatelReceiver::SetEcho(const std::vector<std::string>& words)
{
    Outcome outcome;
    const EchoRequest request = ParseEchoRequest(words);
    outcome.badField = request.badField;
    if (request.badField == 0 && IsOwnPort(request.port)) {
        MutableState().echo = request.on;
    } else if (request.badField == 0) {
        MutableState().settings["ECHO " + request.port] = request.on ? "ON" : "OFF";
    }
    return outcome;
}

NovatelReceiver::Outcome NovatelReceiver::StartLog(const std::vector<std::string>& words)
{
    Outcome outcome;
    const LogRequest request = ParseLogRequest(words, Setup().kind.generation);
    outcome.badField = request.badField;
    if (request.badField != 0) {
        return outcome;
    }
    if (!IsOwnPort(request.port)) {
        MutableState().settings["LOG " + request.port + " " + request.name] = JoinWords(words, 3, " ");
    } else if (request.trigger == "ONTIME") {
        MutableState().logs[request.name] = request.period;
    } else {
        outcome.logName = request.name;
    }
    return outcome;
}

NovatelReceiver::Outcome NovatelReceiver::StopLog(const std::vector<std::string>& words)
{
    Outcome outcome;
    const LogRequest request = ParseUnlogRequest(words, Setup().kind.generation);
    outcome.badField = request.badField;
    if (request.badField == 0 && IsOwnPort(request.port)) {
        MutableState().logs.erase(request.name);
    } else if (request.badField == 0) {
        MutableState().settings.erase("LOG " + request.port + " " + request.name);
    }
    return outcome;
}

NovatelReceiver::Outcome NovatelReceiver::StopAllLogs()
{
    MutableState().logs.clear();
    return Outcome();
}

NovatelReceiver::Outcome NovatelReceiver::ConfigurePort(const std::vector<std::string>& words)
{
    Outcome outcome;
    const PortSettings settings = ParsePortSettings(words);
    outcome.badField = settings.badField;
    if (settings.badField != 0) {
        return outcome;
    }
    const std::string port = settings.port == "THISPORT" ? Setup().port : settings.port;
    MutableState().settings[words[0] + " " + port] = settings.settings;
    if (IsOwnPort(port)) {
        outcome.newBaud = static_cast<int>(settings.baud);
        if (!settings.echo.empty()) {
            MutableState().echo = settings.echo == "ON";
        }
    }
    return outcome;
}

NovatelReceiver::Outcome NovatelReceiver::SelectChannelConfig(const std::vector<std::string>& words)
{
    Outcome outcome;
    long number = 0;
    ParseInteger(words[1], number);
    if (number < 1 || number > Setup().channelConfigCount) {
        outcome.badField = 2;
        return outcome;
    }
    MutableState().channelConfig = static_cast<int>(number);
    outcome.restart = true;
    return outcome;
}

bool NovatelReceiver::IsOwnPort(const std::string& port) const
{
    return port == "THISPORT" || port == Setup().port;
}

std::string NovatelReceiver::Prompt() const
{
    return "[" + Setup().port + "]";
}

std::string NovatelReceiver::LogOutput(const std::string& logName)
{
    const double elapsed = std::chrono::duration<double>(Now() - Setup().start).count();
    if (IsNmeaLogName(logName)) {
        return NmeaSentencesFor(logName, elapsed);
    }
    return AsciiLog(logName);
}

std::string NovatelReceiver::AsciiLog(const std::string& logName) const
{
    NovatelLogHeader header;
    header.port = Setup().port;
    header.seconds = kStartSecondsOfWeek + std::chrono::duration<double>(Now() - Setup().start).count();
    if (logName == "VERSIONA" && Setup().versionLine) {
        return *Setup().versionLine;
    }
    if (logName == "VERSIONA") {
        return FormatNovatelLog(logName, header, VersionLogBody(Setup().identity));
    }
    if (logName == "VALIDMODELSA") {
        return FormatNovatelLog(logName, header, ValidModelsLogBody(Setup().validModels));
    }
    if (logName == "CHANCONFIGLISTA") {
        return FormatNovatelLog(logName, header, ChanConfigListLogBody(State().channelConfig, Setup().channelConfigCount));
    }
    return std::string();
}

}
