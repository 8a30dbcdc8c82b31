#ifndef GNSS_SIM_TEXT_NMEASENTENCES_H
#define GNSS_SIM_TEXT_NMEASENTENCES_H

#include <string>

namespace GnssSim {

// "$" + body + "*" + checksum + CR LF.
std::string NmeaSentence(const std::string& body);

// Whether the name is an NMEA sentence the simulated receivers can stream: GPGGA, GPGGALONG (the
// GGA sentence with more decimals, still headed "$GPGGA"), GPGSA, GPGSV, GPVTG, GPZDA, GPRMC, GPGLL.
bool IsNmeaLogName(const std::string& name);

// The sentence(s) for a log name, secondsSinceStart after the simulator started: the time of day
// starts at 10:00:00 UTC so that repeated runs give the same sentences, the position is fixed.
// "" for a name that is not an NMEA log. GPGSV gives its two sentences together.
std::string NmeaSentencesFor(const std::string& name, double secondsSinceStart);

}

#endif
