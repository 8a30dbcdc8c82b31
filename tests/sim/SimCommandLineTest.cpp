#include "tools/SimCommandLine.h"
#include "tools/SimProgram.h"

#include "sim/model/ReceiverCatalogue.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <unistd.h>

using namespace GnssSim;

namespace {

bool Parse(const std::vector<std::string>& args, SimProgramOptions& options, std::string& error)
{
    std::ostringstream help;
    return ParseSimCommandLine(args, options, help, error);
}

// Faults as the wire log describes them, which names every field.
std::vector<std::string> FaultTexts(const std::vector<Fault>& faults)
{
    std::vector<std::string> texts;
    texts.reserve(faults.size());
    for (const Fault& fault : faults) {
        texts.push_back(DescribeFault(fault));
    }
    return texts;
}

// A file holding bytes, removed with the object.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& bytes)
    {
        const int fd = mkstemp(m_path);
        EXPECT_EQ(write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        close(fd);
    }
    ~ScratchFile() { unlink(m_path); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string Path() const { return m_path; }

private:
    char m_path[32] = "/tmp/gnss-sim-line-XXXXXX";
};

// A version line as a unit might send it: a lone CR, a NUL and a byte above 127 in it.
const char kOddBytes[] = "#VERSIONA,COM1;1,GPSCARD,\"\r\0\xe9\"*0\n";
const std::string kOddVersionLine(kOddBytes, sizeof kOddBytes - 1);

ReceiverIdentity DefaultIdentityOf(const std::string& receiver)
{
    ReceiverKind kind;
    EXPECT_TRUE(FindReceiverKind(receiver, kind));
    return DefaultIdentity(kind);
}

}

// Scripts, the fault matrix and the figures build these command lines; each row is one promise of
// the manual page.
TEST(SimCommandLine, TurnsEveryOptionIntoSimulatorOptions)
{
    const ScratchFile versionLine(kOddVersionLine);
    struct Case {
        const char* name;
        std::vector<std::string> args;
        std::function<void(const SimProgramOptions&)> check;
    };
    const Case cases[] = {
        {"defaults",
         {"--receiver", "oem6"},
         [](const SimProgramOptions& o) {
             EXPECT_EQ(o.sim.receiver, "oem6");
             EXPECT_EQ(o.sim.startupBaud, 115200);
             EXPECT_EQ(o.sim.restartMs, 5000);
             EXPECT_EQ(o.sim.port, "COM1");
             EXPECT_EQ(o.sim.channelConfig, 1);
             EXPECT_FALSE(o.sim.channelConfigCount.has_value());
             EXPECT_FALSE(o.sim.validModels.has_value());
             EXPECT_EQ(o.sim.noiseSeed, kDefaultNoiseSeed);
             EXPECT_FALSE(o.sim.pace || o.sim.echo || o.quiet || o.help);
             EXPECT_TRUE(o.sim.faults.empty() && o.command.empty() && o.heardPath.empty());
             EXPECT_TRUE(o.sim.linkPath.empty() && o.sim.wireLogPath.empty());
             EXPECT_EQ(o.sim.identity->Main().swVersion, DefaultIdentityOf("oem6").Main().swVersion);
             EXPECT_FALSE(o.sim.versionLine.has_value());
         }},
        {"values after a blank or an equals sign",
         {"--receiver=csi", "--baud", "9600", "--restart-ms=1", "--port", "COM2", "--channel-config", "3",
          "--channel-configs=4", "--seed", "7", "--link", "/dev/ttyO1", "--log=wire.log", "--heard",
          "heard.txt"},
         [](const SimProgramOptions& o) {
             EXPECT_EQ(o.sim.receiver, "csi");
             EXPECT_EQ(o.sim.startupBaud, 9600);
             EXPECT_EQ(o.sim.restartMs, 1);
             EXPECT_EQ(o.sim.port, "COM2");
             EXPECT_EQ(o.sim.channelConfig, 3);
             EXPECT_EQ(o.sim.channelConfigCount, 4);
             EXPECT_EQ(o.sim.noiseSeed, 7u);
             EXPECT_EQ(o.sim.linkPath, "/dev/ttyO1");
             EXPECT_EQ(o.sim.wireLogPath, "wire.log");
             EXPECT_EQ(o.heardPath, "heard.txt");
         }},
        {"switches",
         {"--pace", "--receiver", "oem6", "--echo", "--quiet"},
         [](const SimProgramOptions& o) { EXPECT_TRUE(o.sim.pace && o.sim.echo && o.quiet && !o.help); }},
        {"identity on top of the receiver's own, whatever the order",
         {"--model", "M", "--psn", "P", "--receiver", "oem7700", "--hw-version", "H", "--sw-version", "S",
          "--boot-version", "B", "--component-type", "T", "--valid-models", "M,,N"},
         [](const SimProgramOptions& o) {
             const Component& main = o.sim.identity->Main();
             EXPECT_EQ(main.type + main.model + main.psn + main.hwVersion + main.swVersion + main.bootVersion,
                       "TMPHSB");
             EXPECT_EQ(main.date, DefaultIdentityOf("oem7700").Main().date);
             ASSERT_NE(o.sim.identity->Package(), nullptr);
             EXPECT_EQ(o.sim.identity->Package()->swVersion,
                       DefaultIdentityOf("oem7700").Package()->swVersion);
             EXPECT_EQ(*o.sim.validModels, (std::vector<ValidModel>{{"M"}, {""}, {"N"}}));
         }},
        {"an empty package version removes the component",
         {"--receiver", "oem6", "--package-version="},
         [](const SimProgramOptions& o) { EXPECT_EQ(o.sim.identity->Package(), nullptr); }},
        {"a package version where there was none",
         {"--receiver", "csi", "--package-version", "V2"},
         [](const SimProgramOptions& o) {
             ASSERT_NE(o.sim.identity->Package(), nullptr);
             EXPECT_EQ(o.sim.identity->Package()->swVersion, "V2");
         }},
        {"a version line typed gets the receivers' line end",
         {"--receiver", "oemv", "--version-line", "#VERSIONA,COM1;\"L\""},
         [](const SimProgramOptions& o) { EXPECT_EQ(o.sim.versionLine, "#VERSIONA,COM1;\"L\"\r\n"); }},
        {"a version line file byte for byte",
         {"--version-line-file", versionLine.Path(), "--receiver", "oem7700"},
         [](const SimProgramOptions& o) { EXPECT_EQ(o.sim.versionLine, kOddVersionLine); }},
        {"answer faults, each as often as given",
         {"--receiver", "oem6", "--no-answer", "SBASCONTROL *", "--no-answer=LOG VERSIONA", "--delay", "300",
          "--delay", "20:echo off", "--split", "5:$JAPP", "--nul-in", "A", "--nul-before", "B"},
         [](const SimProgramOptions& o) {
             EXPECT_EQ(
                 FaultTexts(o.sim.faults),
                 FaultTexts({Fault::NoAnswer("SBASCONTROL *"), Fault::NoAnswer("LOG VERSIONA"),
                             Fault::Delay(300), Fault::Delay(20, "echo off"), Fault::SplitAnswer(5, "$JAPP"),
                             Fault::NulInAnswer("A"), Fault::NulBeforeAnswer("B")}));
         }},
        {"the long-line length wherever it stands",
         {"--receiver", "oem6", "--long-line-in", "A", "--long-line-length", "40", "--long-line-before", "B"},
         [](const SimProgramOptions& o) {
             EXPECT_EQ(FaultTexts(o.sim.faults),
                       FaultTexts({Fault::LongLineInAnswer("A", 40), Fault::LongLineBeforeAnswer("B", 40)}));
         }},
        {"long lines of the default length",
         {"--receiver", "oem6", "--long-line-before", "*"},
         [](const SimProgramOptions& o) {
             EXPECT_EQ(FaultTexts(o.sim.faults), FaultTexts({Fault::LongLineBeforeAnswer("*")}));
         }},
        {"line faults",
         {"--receiver", "oem6", "--noise-between", "16", "--hang-up-after", "100", "--start-baud", "9600",
          "--nmea-flood", "20"},
         [](const SimProgramOptions& o) {
             EXPECT_EQ(FaultTexts(o.sim.faults),
                       FaultTexts({Fault::NoiseBetweenLines(16), Fault::HangUpAfterBytes(100),
                                   Fault::StartAtBaud(9600), Fault::NmeaFlood(20)}));
         }},
        {"everything after -- is the command",
         {"--receiver", "oem6", "--", "sh", "-c", "echo --baud x", "--", "--bogus"},
         [](const SimProgramOptions& o) {
             EXPECT_EQ(o.command, (std::vector<std::string>{"sh", "-c", "echo --baud x", "--", "--bogus"}));
             EXPECT_EQ(o.sim.startupBaud, 115200);
         }},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.name);
        SimProgramOptions options;
        std::string error;
        const bool parsed = Parse(example.args, options, error);
        EXPECT_TRUE(parsed) << error;
        if (parsed) {
            example.check(options);
        }
    }
}

// People and scripts read the reason on standard error; status 2 tells a usage mistake from a
// line that could not be set up (1).
TEST(SimCommandLine, RefusesWithItsReasonAndStatusTwo)
{
    struct Case {
        const char* name;
        std::vector<std::string> args;
        const char* reason;
    };
    const Case cases[] = {
        {"no receiver", {"--baud", "9600"}, "--receiver is required"},
        {"unknown receiver", {"--receiver", "oem8"}, "unknown receiver \"oem8\""},
        {"unknown option", {"--receiver", "oem6", "--bogus"}, "unknown option \"--bogus\""},
        {"a word that is no option", {"--receiver", "oem6", "oem7700"}, "unknown option \"oem7700\""},
        {"a lone dash", {"--receiver", "oem6", "-"}, "unknown option \"-\""},
        {"a value for a switch", {"--receiver", "oem6", "--pace=yes"}, "unknown option \"--pace=yes\""},
        {"missing value", {"--receiver", "oem6", "--seed"}, "--seed needs a value"},
        {"the command's -- is no value",
         {"--receiver", "oem6", "--link", "--", "true"},
         "--link needs a value"},
        {"a setting given twice",
         {"--receiver", "oem6", "--baud", "9600", "--baud=4800"},
         "--baud may be given only once"},
        {"not a number", {"--receiver", "oem6", "--baud", "fast"}, "--baud needs a number, not \"fast\""},
        {"negative number",
         {"--receiver", "oem6", "--restart-ms=-1"},
         "--restart-ms needs a number, not \"-1\""},
        {"delay without a number",
         {"--receiver", "oem6", "--delay", ":LOG"},
         "--delay needs a number, not \"\""},
        {"a version line for a receiver without a version log",
         {"--receiver", "csi", "--version-line", "#VERSIONA"},
         "--version-line needs a NovAtel receiver (oemv, oemstar, oemstarg, oem6, oem7500 or oem7700); csi "
         "sends no version log"},
        {"two version lines",
         {"--receiver", "oem6", "--version-line-file", "/dev/null", "--version-line", "#VERSIONA"},
         "--version-line-file and --version-line both give the version line; give one"},
        {"a version line file that cannot be read",
         {"--receiver", "oem6", "--version-line-file", "/"},
         "cannot read --version-line-file \"/\": Is a directory"},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.name);
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(RunSimProgram(example.args, out, err), 2);
        EXPECT_EQ(err.str(), "gnss-sim: " + std::string(example.reason) + "\nTry gnss-sim --help.\n");
        EXPECT_EQ(out.str(), "");
    }
}

TEST(SimCommandLine, HelpNeedsNoReceiverGoesToStdout)
{
    for (const char* help : {"--help", "-h"}) {
        SCOPED_TRACE(help);
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(RunSimProgram({help}, out, err), 0);
        EXPECT_NE(out.str().find("--nmea-flood"), std::string::npos) << out.str();
        EXPECT_EQ(err.str(), "");
    }
}
