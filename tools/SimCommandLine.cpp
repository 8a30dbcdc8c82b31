#include "tools/SimCommandLine.h"

#include "sim/model/ReceiverCatalogue.h"
#include "sim/text/ByteText.h"


namespace {

using GnssSim::Fault;

// The command a fault concerns when its option names none.
const char kEveryCommand[] = "*";

const char* const kValueOptions[] = {
    "--receiver", "--baud", "--port", "--restart-ms", "--channel-config", "--channel-configs", "--valid-models",
    "--component-type", "--model", "--psn", "--hw-version", "--sw-version", "--boot-version", "--package-version",
    "--link", "--log", "--heard", "--seed", "--no-answer", "--delay", "--split", "--nul-in", "--nul-before",
    "--long-line-in", "--long-line-before", "--long-line-length", "--noise-between", "--hang-up-after",
    "--start-baud", "--nmea-flood",
};

enum class Taken { No, Yes, Bad };

bool TakesValue(const std::string& name)
{
    for (const char* option : kValueOptions) {
        if (name == option) {
            return true;
        }
    }
    return false;
}

bool ReadNumber(const std::string& name, const std::string& text, long& value, std::string& error)
{
    if (!GnssSim::ParseInteger(text, value) || value < 0) {
        error = name + " needs a number, not \"" + text + "\"";
        return false;
    }
    return true;
}

Taken Result(bool ok)
{
    return ok ? Taken::Yes : Taken::Bad;
}

Taken ApplyReceiverOption(const std::string& name, const std::string& value, GnssSim::SimOptions& sim,
                          std::string& error)
{
    long number = 0;
    if (name == "--receiver") {
        sim.receiver = value;
    } else if (name == "--port") {
        sim.port = value;
    } else if (name == "--baud") {
        const bool ok = ReadNumber(name, value, number, error);
        sim.startupBaud = static_cast<int>(number);
        return Result(ok);
    } else if (name == "--restart-ms") {
        return Result(ReadNumber(name, value, sim.restartMs, error));
    } else if (name == "--channel-config") {
        const bool ok = ReadNumber(name, value, number, error);
        sim.channelConfig = static_cast<int>(number);
        return Result(ok);
    } else if (name == "--channel-configs") {
        const bool ok = ReadNumber(name, value, number, error);
        sim.channelConfigCount = static_cast<int>(number);
        return Result(ok);
    } else if (name == "--valid-models") {
        sim.validModels = std::vector<GnssSim::ValidModel>();
        for (const std::string& model : GnssSim::SplitKeepingEmpty(value, ',')) {
            sim.validModels->push_back(GnssSim::ValidModel{model, 0, 0, 0});
        }
    } else {
        return Taken::No;
    }
    return Taken::Yes;
}

Taken ApplyIdentityOption(const std::string& name, const std::string& value, GnssSim::ReceiverIdentity& identity)
{
    GnssSim::Component& main = identity.Main();
    if (name == "--component-type") {
        main.type = value;
    } else if (name == "--model") {
        main.model = value;
    } else if (name == "--psn") {
        main.psn = value;
    } else if (name == "--hw-version") {
        main.hwVersion = value;
    } else if (name == "--sw-version") {
        main.swVersion = value;
    } else if (name == "--boot-version") {
        main.bootVersion = value;
    } else if (name == "--package-version") {
        identity.SetPackageVersion(value);
    } else {
        return Taken::No;
    }
    return Taken::Yes;
}

Taken ApplyLineOption(const std::string& name, const std::string& value, SimProgramOptions& options,
                      std::string& error)
{
    long seed = 0;
    if (name == "--link") {
        options.sim.linkPath = value;
    } else if (name == "--log") {
        options.sim.wireLogPath = value;
    } else if (name == "--heard") {
        options.heardPath = value;
    } else if (name == "--seed") {
        const bool ok = ReadNumber(name, value, seed, error);
        options.sim.noiseSeed = static_cast<std::uint32_t>(seed);
        return Result(ok);
    } else {
        return Taken::No;
    }
    return Taken::Yes;
}

// "MS" or "MS:COMMAND".
bool ReadMsAndCommand(const std::string& name, const std::string& text, long& ms, std::string& command,
                      std::string& error)
{
    const std::size_t colon = text.find(':');
    command = colon == std::string::npos ? kEveryCommand : text.substr(colon + 1);
    return ReadNumber(name, text.substr(0, colon), ms, error);
}

// Over-long line faults take their length from --long-line-length, wherever it stands.
struct FaultOptions {
    std::vector<Fault> faults;
    std::vector<Fault> longLines;
    long longLineLength = Fault::kDefaultLongLine;
};

Taken ApplyTimedFault(const std::string& name, const std::string& value, FaultOptions& faults, std::string& error)
{
    long ms = 0;
    std::string command;
    if (name != "--delay" && name != "--split") {
        return Taken::No;
    }
    if (!ReadMsAndCommand(name, value, ms, command, error)) {
        return Taken::Bad;
    }
    faults.faults.push_back(name == "--delay" ? Fault::Delay(ms, command) : Fault::SplitAnswer(ms, command));
    return Taken::Yes;
}

Taken ApplyLineFault(const std::string& name, const std::string& value, FaultOptions& faults, std::string& error)
{
    long number = 0;
    if (name != "--noise-between" && name != "--hang-up-after" && name != "--start-baud" &&
        name != "--nmea-flood" && name != "--long-line-length") {
        return Taken::No;
    }
    if (!ReadNumber(name, value, number, error)) {
        return Taken::Bad;
    }
    if (name == "--noise-between") {
        faults.faults.push_back(Fault::NoiseBetweenLines(number));
    } else if (name == "--hang-up-after") {
        faults.faults.push_back(Fault::HangUpAfterBytes(number));
    } else if (name == "--start-baud") {
        faults.faults.push_back(Fault::StartAtBaud(number));
    } else if (name == "--nmea-flood") {
        faults.faults.push_back(Fault::NmeaFlood(number));
    } else {
        faults.longLineLength = number;
    }
    return Taken::Yes;
}

Taken ApplyAnswerFault(const std::string& name, const std::string& value, FaultOptions& faults)
{
    if (name == "--no-answer") {
        faults.faults.push_back(Fault::NoAnswer(value));
    } else if (name == "--nul-in") {
        faults.faults.push_back(Fault::NulInAnswer(value));
    } else if (name == "--nul-before") {
        faults.faults.push_back(Fault::NulBeforeAnswer(value));
    } else if (name == "--long-line-in") {
        faults.longLines.push_back(Fault::LongLineInAnswer(value));
    } else if (name == "--long-line-before") {
        faults.longLines.push_back(Fault::LongLineBeforeAnswer(value));
    } else {
        return Taken::No;
    }
    return Taken::Yes;
}

bool ApplySwitch(const std::string& name, SimProgramOptions& options)
{
    if (name == "--help" || name == "-h") {
        options.help = true;
    } else if (name == "--pace") {
        options.sim.pace = true;
    } else if (name == "--echo") {
        options.sim.echo = true;
    } else if (name == "--quiet") {
        options.quiet = true;
    } else {
        return false;
    }
    return true;
}

// Splits "--name=value" into its two parts; false when there is no "=".
bool SplitAssignment(const std::string& arg, std::string& name, std::string& value)
{
    const std::size_t equals = arg.find('=');
    name = arg.substr(0, equals);
    value = equals == std::string::npos ? std::string() : arg.substr(equals + 1);
    return equals != std::string::npos;
}

using NamedValues = std::vector<std::pair<std::string, std::string>>;

// Sorts the arguments into switches, named values and the command after "--".
bool CollectArguments(const std::vector<std::string>& args, SimProgramOptions& options, NamedValues& values,
                      std::string& error)
{
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--") {
            options.command.assign(args.begin() + static_cast<long>(i) + 1, args.end());
            return true;
        }
        std::string name;
        std::string value;
        const bool assigned = SplitAssignment(args[i], name, value);
        if (!assigned && ApplySwitch(name, options)) {
            continue;
        }
        if (!TakesValue(name)) {
            error = "unknown option \"" + args[i] + "\"";
            return false;
        }
        if (!assigned && ++i >= args.size()) {
            error = name + " needs a value";
            return false;
        }
        values.emplace_back(name, assigned ? value : args[i]);
    }
    return true;
}

Taken ApplyValue(const std::string& name, const std::string& value, SimProgramOptions& options,
                 FaultOptions& faults, std::string& error)
{
    Taken taken = ApplyReceiverOption(name, value, options.sim, error);
    if (taken == Taken::No) {
        taken = ApplyIdentityOption(name, value, *options.sim.identity);
    }
    if (taken == Taken::No) {
        taken = ApplyLineOption(name, value, options, error);
    }
    if (taken == Taken::No) {
        taken = ApplyTimedFault(name, value, faults, error);
    }
    if (taken == Taken::No) {
        taken = ApplyLineFault(name, value, faults, error);
    }
    if (taken == Taken::No) {
        taken = ApplyAnswerFault(name, value, faults);
    }
    return taken;
}

// The receiver comes first: the identity options change its default identity.
bool FindReceiver(const NamedValues& values, SimProgramOptions& options, std::string& error)
{
    bool given = false;
    for (const auto& option : values) {
        if (option.first == "--receiver") {
            options.sim.receiver = option.second;
            given = true;
        }
    }
    GnssSim::ReceiverKind kind;
    if (!options.help && !given) {
        error = "--receiver is required";
        return false;
    }
    if (!options.help && !GnssSim::FindReceiverKind(options.sim.receiver, kind)) {
        error = "unknown receiver \"" + options.sim.receiver + "\"";
        return false;
    }
    options.sim.identity = GnssSim::DefaultIdentity(kind);
    return true;
}

}

bool ParseSimCommandLine(const std::vector<std::string>& args, SimProgramOptions& options, std::string& error)
{
    NamedValues values;
    if (!CollectArguments(args, options, values, error) || !FindReceiver(values, options, error)) {
        return false;
    }
    FaultOptions faults;
    for (const auto& option : values) {
        if (ApplyValue(option.first, option.second, options, faults, error) != Taken::Yes) {
            return false;
        }
    }
    for (Fault fault : faults.longLines) {
        fault.value = faults.longLineLength;
        faults.faults.push_back(fault);
    }
    options.sim.faults = faults.faults;
    return true;
}

std::string SimUsage()
{
    std::string receivers;
    for (const std::string& name : GnssSim::ReceiverNames()) {
        receivers += (receivers.empty() ? "" : ", ") + name;
    }
    return "Usage: gnss-sim --receiver NAME [options] [-- COMMAND ARGS...]\n"
           "\n"
           "Plays a GNSS receiver on a pseudo-terminal. With a command, starts it once the line is ready\n"
           "(its environment holds GNSS_SIM_PORT, the line's path), waits for it, prints a summary of\n"
           "the wire log on standard error and exits with the command's status. Without one, serves\n"
           "until interrupted (Ctrl-C) and then prints the summary.\n"
           "\n"
           "Receiver:\n"
           "  --receiver NAME          " + receivers + "\n"
           "  --baud N                 start-up speed (default 115200; real receivers leave the factory at 9600)\n"
           "  --port COMn              the receiver port it listens on, named in its prompt (default COM1)\n"
           "  --echo                   send back what it hears, as receivers do with ECHO ON\n"
           "  --restart-ms N           how long a reset or selectchanconfig keeps it silent (default 5000)\n"
           "  --channel-config N       channel configuration in use at start (default 1)\n"
           "  --channel-configs N      how many channel configurations it offers\n"
           "  --valid-models M1,M2     the models list it reports\n"
           "  --component-type T --model M --psn S --hw-version V --sw-version V --boot-version V\n"
           "                           its identity fields; --package-version V the PACKAGE component's\n"
           "                           software version (an empty V removes the component)\n"
           "\n"
           "Line:\n"
           "  --link PATH              make PATH (for example /dev/ttyO1) a symbolic link to the line;\n"
           "                           removed on exit\n"
           "  --pace                   send at the line's byte rate (10 bits a byte)\n"
           "  --seed N                 seed of the noise generator, for a different repeatable run\n"
           "  --log FILE               write the wire log to FILE as it grows\n"
           "  --heard FILE             write what the receiver heard to FILE on exit, one entry a line,\n"
           "                           without timestamps (for golden files)\n"
           "  --quiet                  print neither the start line nor the summary, so that standard\n"
           "                           error carries only the command's own (and gnss-sim's errors)\n"
           "\n"
           "Faults (CMD is a command as the receiver hears it, compared word by word without regard\n"
           "to case; a last word * stands for any further words, and * alone for every command):\n"
           "  --no-answer CMD          hear CMD but neither carry it out nor answer it (repeatable)\n"
           "  --delay MS[:CMD]         answer MS ms late (every command when CMD is left out)\n"
           "  --split MS[:CMD]         send the answer in two parts MS ms apart\n"
           "  --nul-in CMD             a NUL byte inside the answer, so it cannot be recognised\n"
           "  --nul-before CMD         a NUL byte on a line of its own before the answer\n"
           "  --long-line-in CMD       an over-long answer (filler after its first character)\n"
           "  --long-line-before CMD   an over-long line before the answer\n"
           "  --long-line-length N     length of the over-long lines (default 1200)\n"
           "  --noise-between N        N garbled bytes before every line the receiver starts\n"
           "  --hang-up-after N        drop the line once the receiver has sent N bytes\n"
           "  --start-baud N           start at N baud instead of the start-up speed (until a reset)\n"
           "  --nmea-flood HZ          GGA and RMC sentences HZ times a second, unasked, from the start\n"
           "\n"
           "  --help                   this text\n";
}
