#ifndef GNSS_TOOLS_SIMOPTIONTABLE_H
#define GNSS_TOOLS_SIMOPTIONTABLE_H

#include "tools/HelpOutput.h"
#include "tools/SimProgramOptions.h"

#include <tclap/CmdLine.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

// gnss-sim's options, each declared once: its name, the label of its value, its help text and what
// it does to the program's options. TCLAP reads the command line and prints the help from these
// declarations; the table then applies the values given, option by option in the order the options
// were declared, which is also the order of the help.
class SimOptionTable {
public:
    // What a value given to the option (named as given, "--baud") does to the options; false with
    // the reason when the value does not fit.
    using Setter = std::function<bool(const std::string& option, const std::string& value,
                                      SimProgramOptions& options, std::string& error)>;

    enum class Occurs {
        AtMostOnce,
        Required,
        Repeatable, // every value is applied, in the order given
    };

    // The help goes to `help`; message closes it.
    SimOptionTable(const std::string& message, std::ostream& help);
    SimOptionTable(const SimOptionTable&) = delete;
    SimOptionTable& operator=(const SimOptionTable&) = delete;

    void Switch(const std::string& name, const std::string& helpText,
                std::function<void(SimProgramOptions&)> set);
    void Value(const std::string& name, const std::string& label, const std::string& helpText, Setter set,
               Occurs occurs = Occurs::AtMostOnce);

    // Reads the options (the arguments without the program name and without the command) and
    // applies them; once per table. --help (-h) prints the help and sets options.help. false with
    // the reason when TCLAP or a setter refuses them.
    bool Parse(const std::vector<std::string>& args, SimProgramOptions& options, std::string& error);

private:
    struct Declared {
        std::unique_ptr<TCLAP::Arg> arg;
        bool takesValue;
        // Applies what was given for the option, if anything.
        std::function<bool(SimProgramOptions&, std::string&)> apply;
    };

    bool PrepareArguments(const std::vector<std::string>& args, std::vector<std::string>& prepared,
                          std::string& error) const;
    void AddToParser();

    std::vector<Declared> m_declared;
    TCLAP::CmdLine m_parser;
    HelpOutput m_helpOutput;
    TCLAP::CmdLineOutput* m_helpOutputPointer = &m_helpOutput;
    TCLAP::HelpVisitor m_showHelp;
    TCLAP::SwitchArg m_help;
};

#endif
