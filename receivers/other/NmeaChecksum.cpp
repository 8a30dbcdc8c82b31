#include "receivers/other/NmeaChecksum.h"

#include "util/Strings.h"

unsigned char NmeaChecksum(const std::string& sentence)
{
    const std::string::size_type first = (!sentence.empty() && sentence[0] == '$') ? 1 : 0;
    unsigned char checksum = 0;
    for (std::string::size_type i = first; i < sentence.size() && sentence[i] != '*'; ++i) {
        checksum ^= static_cast<unsigned char>(sentence[i]);
    }
    return checksum;
}

std::string FinishNmeaSentence(const std::string& sentence)
{
    return sentence + FormatString("*%02X\r\n", static_cast<unsigned>(NmeaChecksum(sentence)));
}
