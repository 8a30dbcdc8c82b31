#ifndef GNSS_SIM_RECEIVERS_NOVATELCOMMANDTABLE_H
#define GNSS_SIM_RECEIVERS_NOVATELCOMMANDTABLE_H

#include "sim/model/ReceiverCatalogue.h"

#include <string>
#include <vector>

namespace GnssSim {

// What differs between the NovAtel generations beyond the commands they know.
struct GenerationTraits {
    int channelCount;         // channels of the default configuration; the SBAS channels are the last
    int firstSbasChannel;
    int channelConfigCount;   // 0: no channel configurations (no CHANCONFIGLISTA, no selectchanconfig)
    bool glonass;
};

GenerationTraits TraitsOf(Generation generation);

enum class CommandAction { Setting, Echo, Log, Unlog, UnlogAll, SerialPort, Reset, SaveConfig, SelectChanConfig };

// One command of the abbreviated ASCII language.
struct NovatelCommandRule {
    const char* word;
    unsigned generations;   // bit mask of GenerationBit
    CommandAction action;
    int minArgs;
    int maxArgs;
    int keyArgs;            // arguments that name what is set ("ASSIGN 12"); the rest is the value
    // One rule per argument, blank-separated: alternatives joined by '|', each a word, "#" (an
    // integer) or "#.#" (a decimal number); "*" takes anything, as do arguments past the rules.
    const char* rules;
    const char* cancels;    // the setting this command removes (UNLOCKOUTSYSTEM removes LOCKOUTSYSTEM)
    const char* transient;  // an argument that asks for an action rather than a setting (PDPFILTER RESET)
};

unsigned GenerationBit(Generation generation);

// The command as the generation knows it, or null when the generation would not know it.
const NovatelCommandRule* FindNovatelCommand(const std::string& word, Generation generation);

// 0 when the arguments fit; otherwise the number of the first field that does not, counting the
// command word as field 1 (so an unknown command is field 1, a bad first argument field 2).
int FirstBadField(const NovatelCommandRule& command, const std::vector<std::string>& words, Generation generation);

// Whether the generation can produce the log ("VERSIONA", "GPGGA" ...).
bool KnowsLog(Generation generation, const std::string& logName);

// A receiver port name ("COM1", "COM2", "COM3", "THISPORT").
bool IsPortName(const std::string& word);

// A speed the receivers' serial ports can run at.
bool IsPortBaud(long baud);

}

#endif
