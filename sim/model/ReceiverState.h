#ifndef GNSS_SIM_MODEL_RECEIVERSTATE_H
#define GNSS_SIM_MODEL_RECEIVERSTATE_H

#include <map>
#include <string>

namespace GnssSim {

// What a receiver has been told: the part of it that SAVECONFIG keeps and a reset restores.
struct ReceiverState {
    // The speed of the port the receiver listens on.
    int baud = 115200;

    // Whether the receiver sends back what it hears on that port.
    bool echo = false;

    // The channel configuration in use (NovAtel's selectchanconfig). It lives in the receiver's
    // non-volatile memory, so a reset keeps it whether or not the configuration was saved.
    int channelConfig = 1;

    // Logs and sentences switched on for the port, upper-case name to period in seconds
    // ("GPGGALONG" -> 0.2 after "LOG GPGGALONG ONTIME 0.2", "GPGGA" -> 0.2 after "$JASC,GPGGA,5").
    std::map<std::string, double> logs;

    // Everything else the receiver was told, one entry for each thing that can be set, with the
    // command words in upper case: "SBASCONTROL" -> "ENABLE AUTO", "ASSIGN 12" -> "138 0 500",
    // "LOCKOUTSYSTEM BEIDOU" -> "", "SERIALCONFIG COM2" -> "115200 N 8 1 N OFF",
    // "$JDIFF" -> "WAAS", "PACKET 83" -> "02 78 00 40 ...".
    std::map<std::string, std::string> settings;

    bool operator==(const ReceiverState& other) const
    {
        return baud == other.baud && echo == other.echo && channelConfig == other.channelConfig &&
               logs == other.logs && settings == other.settings;
    }
};

}

#endif
