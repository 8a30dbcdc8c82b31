#include "sim/text/NmeaSentences.h"

#include "sim/text/Checksums.h"

#include <cmath>
#include <cstdio>

namespace GnssSim {

namespace {

const double kStartSecondsOfDay = 36000.0;

const char* const kNmeaLogNames[] = {"GPGGA", "GPGGALONG", "GPGSA", "GPGSV", "GPVTG", "GPZDA", "GPRMC", "GPGLL"};

// hhmmss.ss
std::string UtcText(double secondsOfDay)
{
    const double wrapped = std::fmod(secondsOfDay, 86400.0);
    const int whole = static_cast<int>(wrapped);
    const int hundredths = static_cast<int>((wrapped - whole) * 100.0);
    char text[48];
    (void)std::snprintf(text, sizeof text, "%02d%02d%02d.%02d", whole / 3600, whole / 60 % 60, whole % 60, hundredths);
    return text;
}

std::string Gga(const std::string& utc, bool longForm)
{
    const char* position = longForm ? "5130.0123456,N,00007.0654321,W" : "5130.0123,N,00007.0654,W";
    const char* heights = longForm ? "45.123,M,47.012,M" : "45.1,M,47.0,M";
    return NmeaSentence("GPGGA," + utc + "," + position + ",2,09,0.9," + heights + ",,");
}

}

std::string NmeaSentence(const std::string& body)
{
    return "$" + body + "*" + NmeaChecksumText(NmeaChecksum(body)) + "\r\n";
}

bool IsNmeaLogName(const std::string& name)
{
    for (const char* known : kNmeaLogNames) {
        if (name == known) {
            return true;
        }
    }
    return false;
}

std::string NmeaSentencesFor(const std::string& name, double secondsSinceStart)
{
    const std::string utc = UtcText(kStartSecondsOfDay + secondsSinceStart);
    if (name == "GPGGA" || name == "GPGGALONG") {
        return Gga(utc, name == "GPGGALONG");
    }
    if (name == "GPGSA") {
        return NmeaSentence("GPGSA,A,3,02,05,12,13,15,18,21,24,25,,,,1.8,0.9,1.5");
    }
    if (name == "GPGSV") {
        return NmeaSentence("GPGSV,2,1,08,02,45,120,45,05,30,210,42,12,60,045,48,13,15,300,38") +
               NmeaSentence("GPGSV,2,2,08,15,22,090,40,18,70,180,50,21,10,330,33,24,35,260,44");
    }
    if (name == "GPVTG") {
        return NmeaSentence("GPVTG,054.7,T,053.1,M,000.1,N,000.2,K,D");
    }
    if (name == "GPZDA") {
        return NmeaSentence("GPZDA," + utc + ",12,06,2024,00,00");
    }
    if (name == "GPRMC") {
        return NmeaSentence("GPRMC," + utc + ",A,5130.0123,N,00007.0654,W,000.1,054.7,120624,001.6,W,D");
    }
    if (name == "GPGLL") {
        return NmeaSentence("GPGLL,5130.0123,N,00007.0654,W," + utc + ",A,D");
    }
    return std::string();
}

}
