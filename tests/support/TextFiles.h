#ifndef GNSS_TESTS_SUPPORT_TEXTFILES_H
#define GNSS_TESTS_SUPPORT_TEXTFILES_H

#include <fstream>
#include <sstream>
#include <string>

// The whole of a file that a run left (a transcript, a driver record, a log), byte for byte; ""
// when there is no such file, which is how a run that wrote nothing shows.
inline std::string ReadWholeFile(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

#endif
