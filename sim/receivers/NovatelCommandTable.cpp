#include "sim/receivers/NovatelCommandTable.h"

#include "sim/text/ByteText.h"
#include "sim/text/NmeaSentences.h"

#include <cstring>

namespace GnssSim {

namespace {

const unsigned kOemV = 1u << static_cast<int>(Generation::OemV);
const unsigned kStar = (1u << static_cast<int>(Generation::OemStar)) | (1u << static_cast<int>(Generation::OemStarG));
const unsigned kOem6 = 1u << static_cast<int>(Generation::Oem6);
const unsigned kOem7 = (1u << static_cast<int>(Generation::Oem7500)) | (1u << static_cast<int>(Generation::Oem7700));
const unsigned kLater = kOem6 | kOem7;
const unsigned kAll = kOemV | kStar | kLater;

#define GNSS_SYSTEMS "GPS|GLONASS|SBAS|GALILEO|BEIDOU|QZSS|NAVIC"

// OEMV and OEM-Star set their ports with "COM"; OEM6 and OEM7 replaced it with "SERIALCONFIG".
// Channel configurations arrived with OEM-Star; system lock-out and the radar setting with OEM7.
const NovatelCommandRule kCommands[] = {
    {"ECHO", kAll, CommandAction::Echo, 1, 2, 0, "", nullptr, nullptr},
    {"LOG", kAll, CommandAction::Log, 1, 6, 0, "", nullptr, nullptr},
    {"UNLOG", kAll, CommandAction::Unlog, 1, 2, 0, "", nullptr, nullptr},
    {"UNLOGALL", kAll, CommandAction::UnlogAll, 0, 2, 0, "", nullptr, nullptr},
    {"RESET", kAll, CommandAction::Reset, 0, 1, 0, "#", nullptr, nullptr},
    {"SAVECONFIG", kAll, CommandAction::SaveConfig, 0, 0, 0, "", nullptr, nullptr},
    {"SELECTCHANCONFIG", kStar | kLater, CommandAction::SelectChanConfig, 1, 1, 0, "#", nullptr, nullptr},
    {"COM", kOemV | kStar, CommandAction::SerialPort, 1, 8, 0, "", nullptr, nullptr},
    {"SERIALCONFIG", kLater, CommandAction::SerialPort, 1, 7, 0, "", nullptr, nullptr},
    {"PSRDIFFSOURCE", kAll, CommandAction::Setting, 1, 3, 0,
     "NONE|AUTO|RTCM|RTCA|CMR|OMNISTAR|SBAS|RTCMV3|NOVATELX", nullptr, nullptr},
    {"SBASCONTROL", kAll, CommandAction::Setting, 1, 4, 0,
     "ENABLE|DISABLE AUTO|ANY|WAAS|EGNOS|MSAS|GAGAN|QZSS|NONE # NONE|ZEROTOTWO|IGNOREZERO", nullptr, nullptr},
    {"ASSIGN", kAll, CommandAction::Setting, 2, 4, 1, "# #|AUTO|IDLE|ACTIVE # #", nullptr, nullptr},
    {"ASSIGNALL", kAll, CommandAction::Setting, 1, 4, 1, GNSS_SYSTEMS "|AUTO|IDLE|ACTIVE AUTO|IDLE|ACTIVE|# # #",
     nullptr, nullptr},
    {"GGAQUALITY", kAll, CommandAction::Setting, 1, 99, 0, "# * #", nullptr, nullptr},
    {"DYNAMICS", kAll, CommandAction::Setting, 1, 1, 0, "AUTO|FOOT|LAND|AIR", nullptr, nullptr},
    {"PDPFILTER", kAll, CommandAction::Setting, 1, 1, 0, "DISABLE|ENABLE|RESET", nullptr, "RESET"},
    {"PDPMODE", kAll, CommandAction::Setting, 1, 2, 0, "NORMAL|RELATIVE AUTO|STATIC|DYNAMIC", nullptr, nullptr},
    {"SETIONOTYPE", kStar | kLater, CommandAction::Setting, 1, 1, 0, "GPS|KLOBUCHAR|GRID|L1L2|AUTO|SBAS", nullptr,
     nullptr},
    {"RADARCONFIG", kOem7, CommandAction::Setting, 1, 3, 0, "ENABLE|DISABLE #.# #.#", nullptr, nullptr},
    {"LOCKOUTSYSTEM", kOem7, CommandAction::Setting, 1, 1, 1, GNSS_SYSTEMS, nullptr, nullptr},
    {"UNLOCKOUTSYSTEM", kOem7, CommandAction::Setting, 1, 1, 1, GNSS_SYSTEMS, "LOCKOUTSYSTEM", nullptr},
    {"ASSIGNLBANDBEAM", kLater, CommandAction::Setting, 1, 4, 0, "IDLE|AUTO|MANUAL", nullptr, nullptr},
    {"PPPDYNAMICS", kLater, CommandAction::Setting, 1, 1, 0, "AUTO|DYNAMIC|STATIC", nullptr, nullptr},
};

#undef GNSS_SYSTEMS

const char* const kAsciiLogs[] = {"VERSIONA", "VALIDMODELSA"};

const long kPortBauds[] = {300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 230400};

bool FitsAlternative(const std::string& alternative, const std::string& word)
{
    if (alternative == "*") {
        return true;
    }
    if (alternative == "#") {
        long integer = 0;
        return ParseInteger(word, integer);
    }
    if (alternative == "#.#") {
        double number = 0.0;
        return ParseDecimal(word, number);
    }
    return alternative == word;
}

bool FitsRule(const std::string& rule, const std::string& word)
{
    for (const std::string& alternative : SplitKeepingEmpty(rule, '|')) {
        if (FitsAlternative(alternative, word)) {
            return true;
        }
    }
    return false;
}

std::vector<std::string> RulesOf(const NovatelCommandRule& command)
{
    std::vector<std::string> rules;
    for (const std::string& rule : SplitKeepingEmpty(command.rules, ' ')) {
        if (!rule.empty()) {
            rules.push_back(rule);
        }
    }
    return rules;
}

// An SBAS satellite can only be tracked on an SBAS channel, and only channels that exist can be
// assigned; a GLONASS-less generation has no GLONASS channels to assign.
int GenerationBadField(const NovatelCommandRule& command, const std::vector<std::string>& words, Generation generation)
{
    const GenerationTraits traits = TraitsOf(generation);
    if (std::strcmp(command.word, "ASSIGN") == 0) {
        long channel = 0;
        long prn = 0;
        ParseInteger(words[1], channel);
        if (channel < 0 || channel >= traits.channelCount) {
            return 2;
        }
        const bool sbasPrn = ParseInteger(words[2], prn) && prn >= 120 && prn <= 158;
        return sbasPrn && channel < traits.firstSbasChannel ? 3 : 0;
    }
    if (std::strcmp(command.word, "ASSIGNALL") == 0 && words[1] == "GLONASS" && !traits.glonass) {
        return 2;
    }
    return 0;
}

}

GenerationTraits TraitsOf(Generation generation)
{
    switch (generation) {
    case Generation::OemV: return GenerationTraits{14, 12, 0, false};
    case Generation::OemStar: return GenerationTraits{14, 12, 2, false};
    case Generation::OemStarG: return GenerationTraits{14, 12, 5, true};
    case Generation::Oem6: return GenerationTraits{20, 16, 5, true};
    case Generation::Oem7500:
    case Generation::Oem7700: return GenerationTraits{24, 20, 5, true};
    case Generation::None: break;
    }
    return GenerationTraits{0, 0, 0, false};
}

unsigned GenerationBit(Generation generation)
{
    return 1u << static_cast<int>(generation);
}

const NovatelCommandRule* FindNovatelCommand(const std::string& word, Generation generation)
{
    for (const NovatelCommandRule& command : kCommands) {
        if (word == command.word) {
            return (command.generations & GenerationBit(generation)) != 0 ? &command : nullptr;
        }
    }
    return nullptr;
}

int FirstBadField(const NovatelCommandRule& command, const std::vector<std::string>& words, Generation generation)
{
    const int args = static_cast<int>(words.size()) - 1;
    if (args < command.minArgs) {
        return args + 2;
    }
    if (args > command.maxArgs) {
        return command.maxArgs + 2;
    }
    const std::vector<std::string> rules = RulesOf(command);
    for (std::size_t i = 1; i < words.size() && i - 1 < rules.size(); ++i) {
        if (!FitsRule(rules[i - 1], words[i])) {
            return static_cast<int>(i) + 1;
        }
    }
    return GenerationBadField(command, words, generation);
}

bool KnowsLog(Generation generation, const std::string& logName)
{
    if (IsNmeaLogName(logName)) {
        return true;
    }
    if (logName == "CHANCONFIGLISTA") {
        return TraitsOf(generation).channelConfigCount > 0;
    }
    for (const char* known : kAsciiLogs) {
        if (logName == known) {
            return true;
        }
    }
    return false;
}

bool IsPortName(const std::string& word)
{
    return word == "COM1" || word == "COM2" || word == "COM3" || word == "THISPORT";
}

bool IsPortBaud(long baud)
{
    for (long known : kPortBauds) {
        if (baud == known) {
            return true;
        }
    }
    return false;
}

}
