#ifndef GNSS_SIM_RECEIVERS_NOVATELREQUESTS_H
#define GNSS_SIM_RECEIVERS_NOVATELREQUESTS_H

#include "sim/model/ReceiverCatalogue.h"

#include <string>
#include <vector>

namespace GnssSim {

// Reading the arguments of the NovAtel commands whose first argument may name a port. Each takes
// the command's upper-case words (the command word first) and reports a bad field as the tool's
// error line numbers it: the command word is field 1.

// "LOG [port] name [trigger [period [offset [hold]]]]" and "UNLOG [port] name".
struct LogRequest {
    std::string port = "THISPORT";
    std::string name;
    std::string trigger = "ONCE";  // ONCE when none is given
    double period = 0.0;           // seconds, for ONTIME
    int badField = 0;
};

LogRequest ParseLogRequest(const std::vector<std::string>& words, Generation generation);
LogRequest ParseUnlogRequest(const std::vector<std::string>& words, Generation generation);

// "COM [port] baud [parity [databits [stopbits [handshake [echo [break]]]]]]" (OEMV, OEM-Star) and
// "SERIALCONFIG [port] baud [parity [databits [stopbits [handshake [break]]]]]" (OEM6, OEM7).
struct PortSettings {
    std::string port = "THISPORT";
    long baud = 0;
    std::string echo;      // "ON", "OFF", or "" when the command has no echo field or leaves it out
    std::string settings;  // everything after the port, blank-separated
    int badField = 0;
};

PortSettings ParsePortSettings(const std::vector<std::string>& words);

// "ECHO [port] ON|OFF".
struct EchoRequest {
    std::string port = "THISPORT";
    bool on = false;
    int badField = 0;
};

EchoRequest ParseEchoRequest(const std::vector<std::string>& words);

}

#endif
