#ifndef GNSS_TESTS_E2E_LINEDIFF_H
#define GNSS_TESTS_E2E_LINEDIFF_H

#include <string>

// What changed from expected to actual, line by line, for a person to read: "- " before a line
// that is expected but missing, "+ " before one that is new, "  " before unchanged lines next to a
// change, and "..." for unchanged stretches between. Control characters are shown escaped (a CR
// as \r), and a last line without a line end is marked so. Empty when the texts are equal.
std::string LineDiff(const std::string& expected, const std::string& actual);

#endif
