#ifndef GNSS_RECEIVERS_OTHER_NMEACHECKSUM_H
#define GNSS_RECEIVERS_OTHER_NMEACHECKSUM_H

#include <string>

// The XOR of the sentence's characters after a leading '$' and before the first '*' (or the end
// of the text when there is no '*').
unsigned char NmeaChecksum(const std::string& sentence);

// sentence (beginning with '$', without '*') followed by "*", its checksum as two upper-case
// hexadecimal digits and CR LF: the form the receiver accepts.
std::string FinishNmeaSentence(const std::string& sentence);

#endif
