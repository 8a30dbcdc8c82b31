#include "tools/SimCommandLine.h"

#include "sim/model/ReceiverCatalogue.h"
#include "sim/text/ByteText.h"
#include "tools/SimOptionTable.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

using GnssSim::Component;
using GnssSim::Fault;
using Occurs = SimOptionTable::Occurs;
using Setter = SimOptionTable::Setter;

// The command a fault concerns when its option names none.
const char kEveryCommand[] = "*";

// Closes the help.
const char kHelpMessage[] =
    "gnss-sim --receiver NAME [options] [-- COMMAND ARGS...] plays a GNSS receiver on a pseudo-terminal. "
    "Given a command after --, it starts the command once the line is ready (its environment holds "
    "GNSS_SIM_PORT, the line's path), waits for it, prints a summary of the wire log on standard error and "
    "exits with the command's status. Without one, it serves until interrupted (Ctrl-C) and then prints "
    "the summary. Options take their value as the next argument or after \"=\". CMD is a command as the "
    "receiver hears it, compared word by word without regard to case; a last word * stands for any "
    "further words, and * alone for every command.";

Setter Text(std::function<void(SimProgramOptions&, const std::string&)> set)
{
    return [set = std::move(set)](const std::string&, const std::string& value, SimProgramOptions& options,
                                  std::string&) {
        set(options, value);
        return true;
    };
}

bool ReadNumber(const std::string& option, const std::string& text, long& number, std::string& error)
{
    if (!GnssSim::ParseInteger(text, number) || number < 0) {
        error = option + " needs a number, not \"" + text + "\"";
        return false;
    }
    return true;
}

// A whole number, not negative.
Setter Number(std::function<void(SimProgramOptions&, long)> set)
{
    return [set = std::move(set)](const std::string& option, const std::string& value,
                                  SimProgramOptions& options, std::string& error) {
        long number = 0;
        if (!ReadNumber(option, value, number, error)) {
            return false;
        }
        set(options, number);
        return true;
    };
}

// "MS" or "MS:CMD".
Setter MsAndCommand(std::function<Fault(long, const std::string&)> makeFault)
{
    return [makeFault = std::move(makeFault)](const std::string& option, const std::string& value,
                                              SimProgramOptions& options, std::string& error) {
        const std::size_t colon = value.find(':');
        long ms = 0;
        if (!ReadNumber(option, value.substr(0, colon), ms, error)) {
            return false;
        }
        options.sim.faults.push_back(
            makeFault(ms, colon == std::string::npos ? kEveryCommand : value.substr(colon + 1)));
        return true;
    };
}

Setter AnswerFault(std::function<Fault(const std::string&)> makeFault)
{
    return Text([makeFault = std::move(makeFault)](SimProgramOptions& options, const std::string& command) {
        options.sim.faults.push_back(makeFault(command));
    });
}

Setter LineFault(std::function<Fault(long)> makeFault)
{
    return Number([makeFault = std::move(makeFault)](SimProgramOptions& options, long value) {
        options.sim.faults.push_back(makeFault(value));
    });
}

// A field of the receiver's main component, in the identity --receiver chose.
Setter IdentityField(std::string Component::*field)
{
    return Text([field](SimProgramOptions& options, const std::string& value) {
        options.sim.identity->Main().*field = value;
    });
}

// Sets the receiver's own identity as well, which the identity options then change.
bool ChooseReceiver(const std::string&, const std::string& name, SimProgramOptions& options,
                    std::string& error)
{
    GnssSim::ReceiverKind kind;
    if (!GnssSim::FindReceiverKind(name, kind)) {
        error = "unknown receiver \"" + name + "\"";
        return false;
    }
    options.sim.receiver = name;
    options.sim.identity = GnssSim::DefaultIdentity(kind);
    return true;
}

void SetLongLineLength(SimProgramOptions& options, long length)
{
    for (Fault& fault : options.sim.faults) {
        if (fault.kind == GnssSim::FaultKind::LongLineInAnswer ||
            fault.kind == GnssSim::FaultKind::LongLineBeforeAnswer) {
            fault.value = length;
        }
    }
}

// "oemv, oemstar, ... pmcag or silent".
std::string NameList(const std::vector<std::string>& names)
{
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + names[i];
    }
    return list;
}

std::string ReceiverList()
{
    return NameList(GnssSim::ReceiverNames());
}

bool IsNovatel(const std::string& name)
{
    GnssSim::ReceiverKind kind;
    return GnssSim::FindReceiverKind(name, kind) && kind.family == GnssSim::Family::Novatel;
}

// Only the NovAtel receivers send a version log; a line given for another would be silently
// unused, and a field report reproduced with it would mislead.
bool SetVersionLine(const std::string& option, const std::string& line, SimProgramOptions& options,
                    std::string& error)
{
    if (!IsNovatel(options.sim.receiver)) {
        std::vector<std::string> novatel = GnssSim::ReceiverNames();
        novatel.erase(std::remove_if(novatel.begin(), novatel.end(), [](const std::string& name) { return !IsNovatel(name); }),
                      novatel.end());
        error = option + " needs a NovAtel receiver (" + NameList(novatel) + "); " + options.sim.receiver +
                " sends no version log";
        return false;
    }
    if (options.sim.versionLine) {
        error = option + " and --version-line both give the version line; give one";
        return false;
    }
    options.sim.versionLine = line;
    return true;
}

// The receivers end their logs with CR LF; a line typed on the command line has none.
bool VersionLineText(const std::string& option, const std::string& text, SimProgramOptions& options,
                     std::string& error)
{
    return SetVersionLine(option, text + "\r\n", options, error);
}

// The system's words for an error number; strerrordesc_np only looks them up, sharing no buffer.
std::string ErrorText(int number)
{
    const char* text = strerrordesc_np(number);
    return text != nullptr ? text : "error " + std::to_string(number);
}

// The whole file; false with the system's reason when it cannot be read. An empty file gives no
// bytes.
bool ReadFileBytes(const std::string& path, std::string& bytes, std::string& reason)
{
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        reason = ErrorText(errno);
        return false;
    }
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(fd, buffer, sizeof buffer)) > 0) {
        bytes.append(buffer, static_cast<std::size_t>(count));
    }
    reason = count < 0 ? ErrorText(errno) : "";
    close(fd);
    return count == 0;
}

// The file's bytes exactly, so that a line saved from a real unit keeps its line end and any odd
// byte in it.
bool VersionLineFile(const std::string& option, const std::string& path, SimProgramOptions& options,
                     std::string& error)
{
    std::string bytes;
    std::string reason;
    if (!ReadFileBytes(path, bytes, reason)) {
        error = "cannot read " + option + " \"" + path + "\": " + reason;
        return false;
    }
    return SetVersionLine(option, bytes, options, error);
}

void DeclareReceiverOptions(SimOptionTable& table)
{
    // First: the identity options apply to the identity of the receiver it chooses.
    table.Value("receiver", "NAME", "The receiver to play: " + ReceiverList() + ".", ChooseReceiver,
                Occurs::Required);
    table.Value("baud", "N",
                "The receiver's start-up speed: " + std::to_string(GnssSim::kDefaultStartupBaud) +
                    " by default (real receivers leave the factory at 9600).",
                Number([](SimProgramOptions& o, long baud) { o.sim.startupBaud = static_cast<int>(baud); }));
    table.Value("port", "COMn",
                "The receiver port it listens on, named in its prompt and log headers: COM1 by default.",
                Text([](SimProgramOptions& o, const std::string& port) { o.sim.port = port; }));
    table.Switch("echo", "Send back what it hears, as receivers do with ECHO ON.",
                 [](SimProgramOptions& o) { o.sim.echo = true; });
    table.Value("restart-ms", "N",
                "How long a reset or selectchanconfig keeps the receiver silent, in milliseconds: " +
                    std::to_string(GnssSim::kDefaultRestartMs) + " by default.",
                Number([](SimProgramOptions& o, long ms) { o.sim.restartMs = ms; }));
    table.Value(
        "channel-config", "N", "The channel configuration in use at start: 1 by default.",
        Number([](SimProgramOptions& o, long number) { o.sim.channelConfig = static_cast<int>(number); }));
    table.Value(
        "channel-configs", "N",
        "How many channel configurations the receiver offers: by default as many as its generation.",
        Number([](SimProgramOptions& o, long count) { o.sim.channelConfigCount = static_cast<int>(count); }));
    table.Value("valid-models", "M1,M2,...",
                "The models list the receiver reports: by default its own model and one other.",
                Text([](SimProgramOptions& o, const std::string& list) {
                    o.sim.validModels.emplace();
                    for (const std::string& model : GnssSim::SplitKeepingEmpty(list, ',')) {
                        o.sim.validModels->push_back(GnssSim::ValidModel{model, 0, 0, 0});
                    }
                }));
}

void DeclareIdentityOptions(SimOptionTable& table)
{
    table.Value("component-type", "TYPE", "The type of the receiver's main component in its version log.",
                IdentityField(&Component::type));
    table.Value("model", "M", "The receiver's model.", IdentityField(&Component::model));
    table.Value("psn", "S", "The receiver's product serial number.", IdentityField(&Component::psn));
    table.Value("hw-version", "V", "The receiver's hardware version.", IdentityField(&Component::hwVersion));
    table.Value("sw-version", "V", "The receiver's software version.", IdentityField(&Component::swVersion));
    table.Value("boot-version", "V", "The receiver's boot code version.",
                IdentityField(&Component::bootVersion));
    table.Value("package-version", "V",
                "The software version of the PACKAGE component; an empty one removes the component.",
                Text([](SimProgramOptions& o, const std::string& version) {
                    o.sim.identity->SetPackageVersion(version);
                }));
    // After the identity options: the line replaces the whole version log they describe.
    table.Value("version-line", "TEXT",
                "Answer a request for the version log with TEXT and CR LF instead of a log made from the "
                "identity, so that a unit's own line can be tried (NovAtel receivers only).",
                VersionLineText);
    table.Value("version-line-file", "FILE",
                "Answer a request for the version log with the bytes of FILE exactly, line end and any odd "
                "byte included (NovAtel receivers only).",
                VersionLineFile);
}

void DeclareLineOptions(SimOptionTable& table)
{
    table.Value(
        "link", "PATH",
        "Make PATH (for example /dev/ttyO1) a symbolic link to the line, removed on exit; an existing file "
        "that is not a symbolic link is never replaced.",
        Text([](SimProgramOptions& o, const std::string& path) { o.sim.linkPath = path; }));
    table.Switch(
        "pace", "Send at the line's byte rate, 10 bits a byte: a version log takes about 0.3 s at 9600 baud.",
        [](SimProgramOptions& o) { o.sim.pace = true; });
    table.Value(
        "seed", "N", "Seed of the noise generator, for a different repeatable run.",
        Number([](SimProgramOptions& o, long seed) { o.sim.noiseSeed = static_cast<std::uint32_t>(seed); }));
    table.Value("log", "FILE", "Write the wire log to FILE as it grows.",
                Text([](SimProgramOptions& o, const std::string& path) { o.sim.wireLogPath = path; }));
    table.Value(
        "heard", "FILE",
        "Write what the receiver heard to FILE on exit, one entry a line, without times or byte counts "
        "(for golden files).",
        Text([](SimProgramOptions& o, const std::string& path) { o.heardPath = path; }));
    table.Value(
        "timeline", "FILE",
        "Draw the session in FILE on exit, an SVG picture: time across, the tool's lines above and the "
        "receiver's below, the speeds, what was lost and the waits.",
        Text([](SimProgramOptions& o, const std::string& path) { o.timelinePath = path; }));
    table.Switch(
        "quiet",
        "Print neither the start line nor the summary, so that standard error carries only the command's "
        "own (and gnss-sim's errors).",
        [](SimProgramOptions& o) { o.quiet = true; });
}

void DeclareFaultOptions(SimOptionTable& table)
{
    table.Value("no-answer", "CMD", "Hear CMD but neither carry it out nor answer it.",
                AnswerFault([](const std::string& command) { return Fault::NoAnswer(command); }),
                Occurs::Repeatable);
    table.Value("delay", "MS[:CMD]", "Answer CMD MS milliseconds late (every command when CMD is left out).",
                MsAndCommand([](long ms, const std::string& command) { return Fault::Delay(ms, command); }),
                Occurs::Repeatable);
    table.Value(
        "split", "MS[:CMD]",
        "Send the answer to CMD in two writes MS milliseconds apart, cut two characters into it (every "
        "command's when CMD is left out).",
        MsAndCommand([](long ms, const std::string& command) { return Fault::SplitAnswer(ms, command); }),
        Occurs::Repeatable);
    table.Value("nul-in", "CMD", "A NUL byte inside the answer to CMD, so that it cannot be recognised.",
                AnswerFault([](const std::string& command) { return Fault::NulInAnswer(command); }),
                Occurs::Repeatable);
    table.Value("nul-before", "CMD", "A NUL byte on a line of its own before the answer to CMD.",
                AnswerFault([](const std::string& command) { return Fault::NulBeforeAnswer(command); }),
                Occurs::Repeatable);
    table.Value("long-line-in", "CMD", "An over-long answer to CMD (filler after its first character).",
                AnswerFault([](const std::string& command) { return Fault::LongLineInAnswer(command); }),
                Occurs::Repeatable);
    table.Value("long-line-before", "CMD", "An over-long line before the answer to CMD.",
                AnswerFault([](const std::string& command) { return Fault::LongLineBeforeAnswer(command); }),
                Occurs::Repeatable);
    // After the long-line faults, which it lengthens wherever it stands.
    table.Value("long-line-length", "N",
                "The length of the over-long lines: " + std::to_string(Fault::kDefaultLongLine) +
                    " by default, wherever the option stands.",
                Number(SetLongLineLength));
    table.Value("noise-between", "N", "N garbled bytes before every line the receiver starts.",
                LineFault([](long bytes) { return Fault::NoiseBetweenLines(bytes); }));
    table.Value(
        "hang-up-after", "N",
        "Drop the line once the receiver has sent N bytes and the tool has read them (or a second later).",
        LineFault([](long bytes) { return Fault::HangUpAfterBytes(bytes); }));
    table.Value(
        "start-baud", "N",
        "Start at N baud instead of the start-up speed, and return to the start-up speed after a reset.",
        LineFault([](long baud) { return Fault::StartAtBaud(baud); }));
    table.Value(
        "nmea-flood", "HZ",
        "GGA and RMC sentences HZ times a second each, unasked, from the start, at the receiver's speed "
        "(none while it restarts), whatever the receiver was told to log.",
        LineFault([](long perSecond) { return Fault::NmeaFlood(perSecond); }));
}

}

bool ParseSimCommandLine(const std::vector<std::string>& args, SimProgramOptions& options, std::ostream& help,
                         std::string& error)
{
    const auto commandStart = std::find(args.begin(), args.end(), "--");
    SimOptionTable table(kHelpMessage, help);
    DeclareReceiverOptions(table);
    DeclareIdentityOptions(table);
    DeclareLineOptions(table);
    DeclareFaultOptions(table);
    if (!table.Parse(std::vector<std::string>(args.begin(), commandStart), options, error)) {
        return false;
    }
    if (commandStart != args.end()) {
        options.command.assign(commandStart + 1, args.end());
    }
    return true;
}
