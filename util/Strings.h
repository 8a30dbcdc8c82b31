#ifndef GNSS_UTIL_STRINGS_H
#define GNSS_UTIL_STRINGS_H

#include <string>
#include <vector>

// printf-style formatting into a std::string of any length.
std::string FormatString(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Cuts text at every character of delimiters. Empty fields are kept, a trailing one too
// ("a;;b;" gives "a", "", "b", ""); an empty text gives no fields at all.
std::vector<std::string> SplitFields(const std::string& text, const std::string& delimiters);

// Strips leading and trailing characters of set; a text made only of them becomes "".
std::string TrimChars(const std::string& text, const std::string& set);

bool StartsWith(const std::string& text, const std::string& prefix);

// Characters first to last inclusive. A negative last counts from the end (last + length - 1), a
// last past the end stops at the end; a first at or past the end, a negative first or a last
// before first gives "".
std::string SubstrRange(const std::string& text, int first, int last);

// Decimal stream extraction ("12abc" gives 12, leading blanks are skipped). Throws
// std::domain_error("invalid string to number conversion") when no number can be read.
int StringToInt(const std::string& text);

#endif
