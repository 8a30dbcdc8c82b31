#ifndef GNSS_SIM_TEXT_BYTETEXT_H
#define GNSS_SIM_TEXT_BYTETEXT_H

#include <string>
#include <vector>

// Small text helpers of the simulator: how bytes are shown to people, and how receivers cut the
// command lines they hear into words.
namespace GnssSim {

// Bytes as one printable line: CR, LF and TAB as \r \n \t, backslash and double quote escaped,
// every other byte outside the printable ASCII range as \xHH. Never contains a line end or a blank
// other than the space character itself.
std::string EscapeBytes(const std::string& bytes);

// Bytes as one line for people to read rather than to read back: as EscapeBytes, but backslash and
// double quote as they are.
std::string ShownBytes(const std::string& bytes);

// The reverse of EscapeBytes; false when the text holds an escape it does not produce.
bool UnescapeBytes(const std::string& text, std::string& bytes);

// Bytes as two-digit lower-case hexadecimal numbers between blanks ("40 0a"), as packet payloads
// are shown; "" for no bytes.
std::string HexBytes(const std::string& bytes);

// The line without its trailing CR and LF characters.
std::string WithoutLineEnd(const std::string& line);

std::string UpperCase(const std::string& text);

// Upper-cased words of a command line, cut at blanks, tabs and commas (NovAtel's abbreviated ASCII
// takes either as a separator, and its commands are case-insensitive). Empty words are dropped. A
// sentence's closing checksum ("*5D") is not part of its words.
std::vector<std::string> CommandWords(const std::string& line);

std::string JoinWords(const std::vector<std::string>& words, std::size_t first, const char* separator);

// Cut at every delimiter character, keeping empty fields ("a,,b," gives a, "", b, "").
std::vector<std::string> SplitKeepingEmpty(const std::string& text, char delimiter);

// A whole decimal integer, optionally signed; false for anything else ("12abc", "", "1.5").
bool ParseInteger(const std::string& text, long& value);

// A decimal number such as "0.2", "5", ".2" or "36.11"; false for "inf", "nan" and anything else.
bool ParseDecimal(const std::string& text, double& value);

}

#endif
