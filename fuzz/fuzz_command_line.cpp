// Any command line must be parsed without a crash, and a command line that is accepted must fill
// settings the rest of the run can rely on: SBAS PRNs 120 to 158, a baud rate of 115200 or 19200,
// an override type that is a real receiver type, and the same settings every time it is parsed.
//
// Input: the arguments after the program name, one a line ("-R\nOEM 7700:070600\n"); a final line
// end ends the last argument, and an argument ends at a NUL as a C string does. The parser returns
// instead of ending the process on help, version and rejected arguments.
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "cmdline/GpsCommandLine.h"
#include "fuzz/FuzzProperty.h"
#include "receivers/ReceiverType.h"

namespace {

constexpr int kFirstPrn = 120;
constexpr int kLastPrn = 158;

std::vector<std::string> Arguments(const std::string& input)
{
    std::vector<std::string> arguments;
    std::istringstream lines(input);
    std::string argument;
    while (std::getline(lines, argument)) {
        // A program's arguments are C strings: each ends at its first NUL.
        arguments.push_back(argument.substr(0, argument.find('\0')));
    }
    return arguments;
}

GpsSettings Parse(const std::vector<std::string>& arguments)
{
    std::vector<const char*> argv{"gnss-setup"};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    GpsSettings settings;
    ParseGpsCommandLine(static_cast<int>(argv.size()), argv.data(), settings,
                        ParseEnding::ReturnsToCaller);
    return settings;
}

// Every field, so that two parses can be compared and a violation shows what was filled.
std::string Describe(const GpsSettings& s)
{
    std::ostringstream text;
    text << s.bParsedOk << " port=" << s.strPort << " " << s.bNoUseGps << s.bUseGlonass
         << s.bUseBeidou << s.bUseGalileo << s.bUseQzss << s.bUseSbas << s.bUsePpp
         << s.bAllowType0 << " baud=" << s.nBaudRate << " " << s.bOutputGSA << s.bOutputVTG
         << s.bOutputGSV << s.bOutputZDA << " rates=" << s.fGGAFrequency << ","
         << s.fVTGFrequency << "," << s.fZDAFrequency << "," << s.fGSAFrequency << ","
         << s.fGSVFrequency << " prns=";
    for (const int prn : s.PRNs) {
        text << prn << ",";
    }
    text << " " << s.bFix << s.bConfigure << s.bQueryOnly << s.bExtendedQuery << s.bDryRun
         << " type=" << s.nReceiverType << " firmware=" << s.strFirmware
         << " extended=" << s.strExtendedVersion << " " << s.bResetReceiver << s.bResetPdpFilter
         << s.bListModels << s.bListCurrentModel << s.bHelpShown << s.bSaveConfig;
    return text.str();
}

void CheckFilled(const GpsSettings& settings)
{
    const std::string filled = Describe(settings);
    for (const int prn : settings.PRNs) {
        RequireProperty(prn >= kFirstPrn && prn <= kLastPrn, "every PRN is 120 to 158", filled);
    }
    RequireProperty(settings.nBaudRate == 115200 || settings.nBaudRate == 19200,
                    "the baud rate is 115200 or 19200", filled);
    RequireProperty(settings.nReceiverType != ReceiverType::Unknown &&
                        settings.nReceiverType >= ReceiverType::Novatel &&
                        settings.nReceiverType <= ReceiverType::Uninitialized,
                    "the override type is a receiver type, never Unknown", filled);
    RequireProperty(settings.nReceiverType != ReceiverType::Uninitialized ||
                        settings.strFirmware.empty(),
                    "without an override there is no firmware", filled);
    RequireProperty(settings.strFirmware.find(':') == std::string::npos,
                    "the override's firmware is its second piece alone", filled);
    RequireProperty(settings.strExtendedVersion.empty(),
                    "the override never carries an extended version", filled);
    RequireProperty(!settings.bExtendedQuery || settings.bQueryOnly,
                    "an extended query is a query", filled);
    RequireProperty(!settings.bHelpShown, "filled settings come from no help or version", filled);
}

void SilenceParserOutput()
{
    // Help texts and error lines for millions of command lines would drown a finding's report,
    // which the sanitizers and RequireProperty write directly to the standard error's descriptor.
    // The buffer outlives the standard streams, which flush into it as the process ends: a
    // static object would already be destroyed by then.
    static std::stringbuf* const sink = new std::stringbuf;
    std::cout.rdbuf(sink);
    std::cerr.rdbuf(sink);
    sink->str("");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::vector<std::string> arguments =
        Arguments(std::string(reinterpret_cast<const char*>(data), size));
    for (const std::string& argument : arguments) {
        // "--" (or "--ignore_rest") makes the parser library ignore the options that follow it
        // for the rest of the process, with no way to undo it; the tool parses once, a fuzzer
        // millions of times.
        if (argument == "--" || argument == "--ignore_rest") {
            return 0;
        }
    }
    SilenceParserOutput();
    const GpsSettings settings = Parse(arguments);
    if (settings.bParsedOk) {
        CheckFilled(settings);
    } else {
        GpsSettings untouched;
        untouched.bHelpShown = settings.bHelpShown;
        RequireProperty(Describe(settings) == Describe(untouched),
                        "a command line that is not accepted fills nothing", Describe(settings));
    }
    RequireProperty(Describe(Parse(arguments)) == Describe(settings),
                    "a command line parsed again gives the same settings", Describe(settings));
    return 0;
}
