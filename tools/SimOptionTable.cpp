#include "tools/SimOptionTable.h"

#include <algorithm>
#include <list>
#include <utility>

namespace {

// The name the help shows, whatever path the program was started by.
const char kProgramName[] = "gnss-sim";

const char kNameStart[] = "--";

// The option an exception names: TCLAP gives "Argument: (--seed)" for an option, "Argument: --x"
// for an argument it could not place, and " " for none.
std::string NamedArgument(const TCLAP::ArgException& refusal)
{
    std::string id = refusal.argId();
    const std::string prefix = "Argument: ";
    id = id.rfind(prefix, 0) == 0 ? id.substr(prefix.size()) : std::string();
    if (id.size() > 2 && id.front() == '(' && id.back() == ')') {
        id = id.substr(1, id.size() - 2);
    }
    return id;
}

// TCLAP's reasons in the words scripts and people read from gnss-sim; a reason TCLAP gives in
// other words passes through with the argument it names.
std::string Reason(const TCLAP::ArgException& refusal)
{
    const std::string argument = NamedArgument(refusal);
    const std::string& text = refusal.error();
    const std::string missing = "Required argument missing: ";
    if (text == "Couldn't find match for argument") {
        return "unknown option \"" + argument + "\"";
    }
    if (text == "Missing a value for this argument!") {
        return argument + " needs a value";
    }
    if (text == "Argument already set!") {
        return argument + " may be given only once";
    }
    if (text.rfind(missing, 0) == 0) {
        return kNameStart + text.substr(missing.size()) + " is required";
    }
    return text + (argument.empty() ? std::string() : " (" + argument + ")");
}

}

SimOptionTable::SimOptionTable(const std::string& message, std::ostream& help)
    : m_parser(message, ' ', "", false), m_helpOutput(help), m_showHelp(&m_parser, &m_helpOutputPointer),
      m_help("h", "help", "Print this help and exit.", false, &m_showHelp)
{
}

void SimOptionTable::Switch(const std::string& name, const std::string& helpText,
                            std::function<void(SimProgramOptions&)> set)
{
    auto arg = std::make_unique<TCLAP::SwitchArg>("", name, helpText, false);
    const TCLAP::SwitchArg* given = arg.get();
    m_declared.push_back(
        {std::move(arg), false, [given, set = std::move(set)](SimProgramOptions& options, std::string&) {
             if (given->getValue()) {
                 set(options);
             }
             return true;
         }});
}

void SimOptionTable::Value(const std::string& name, const std::string& label, const std::string& helpText,
                           Setter set, Occurs occurs)
{
    const std::string option = kNameStart + name;
    if (occurs == Occurs::Repeatable) {
        auto arg = std::make_unique<TCLAP::MultiArg<std::string>>("", name, helpText, false, label);
        const TCLAP::MultiArg<std::string>* given = arg.get();
        m_declared.push_back(
            {std::move(arg), true,
             [given, set = std::move(set), option](SimProgramOptions& options, std::string& error) {
                 return std::all_of(given->begin(), given->end(), [&](const std::string& value) {
                     return set(option, value, options, error);
                 });
             }});
        return;
    }
    auto arg = std::make_unique<TCLAP::ValueArg<std::string>>("", name, helpText, occurs == Occurs::Required,
                                                              "", label);
    const TCLAP::ValueArg<std::string>* given = arg.get();
    m_declared.push_back(
        {std::move(arg), true,
         [given, set = std::move(set), option](SimProgramOptions& options, std::string& error) {
             return !given->isSet() || set(option, given->getValue(), options, error);
         }});
}

bool SimOptionTable::Parse(const std::vector<std::string>& args, SimProgramOptions& options,
                           std::string& error)
{
    std::vector<std::string> tclapArgs = {kProgramName};
    if (!PrepareArguments(args, tclapArgs, error)) {
        return false;
    }
    AddToParser();
    try {
        m_parser.setExceptionHandling(false);
        m_parser.parse(tclapArgs);
    } catch (const TCLAP::ArgException& refusal) {
        error = Reason(refusal);
        return false;
    } catch (const TCLAP::ExitException&) {
        options.help = true;
        return true;
    }
    return std::all_of(m_declared.begin(), m_declared.end(),
                       [&](const Declared& declared) { return declared.apply(options, error); });
}

// TCLAP takes an option's value only as the next argument: "--baud=9600" becomes two arguments.
// Anything else, "--pace=yes" among it, is left for TCLAP to refuse, except what TCLAP would let
// pass without a word: "-", or "-" and asterisks, which it reads as an empty group of
// single-letter switches.
bool SimOptionTable::PrepareArguments(const std::vector<std::string>& args,
                                      std::vector<std::string>& prepared, std::string& error) const
{
    for (const std::string& arg : args) {
        if (arg.rfind('-', 0) == 0 && arg.find_first_not_of('*', 1) == std::string::npos) {
            error = "unknown option \"" + arg + "\"";
            return false;
        }
        const std::size_t equals = arg.find('=');
        const std::string name = arg.rfind(kNameStart, 0) == 0 ? arg.substr(0, equals) : std::string();
        const bool takesValue =
            equals != std::string::npos &&
            std::any_of(m_declared.begin(), m_declared.end(), [&](const Declared& declared) {
                return declared.takesValue && kNameStart + declared.arg->getName() == name;
            });
        if (takesValue) {
            prepared.push_back(name);
            prepared.push_back(arg.substr(equals + 1));
        } else {
            prepared.push_back(arg);
        }
    }
    return true;
}

// TCLAP lists the options in its help last added first, so they are added last declared first.
// The program cuts the command off at "--" before TCLAP sees the arguments; TCLAP's own "--"
// switch (also --ignore_rest) would only describe it wrongly in the help, so it goes.
void SimOptionTable::AddToParser()
{
    std::list<TCLAP::Arg*>& parserArgs = m_parser.getArgList();
    parserArgs.remove_if(
        [](const TCLAP::Arg* arg) { return arg->getName() == TCLAP::Arg::ignoreNameString(); });
    m_parser.add(m_help);
    for (auto declared = m_declared.rbegin(); declared != m_declared.rend(); ++declared) {
        m_parser.add(*declared->arg);
    }
}
