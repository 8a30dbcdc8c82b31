#include "util/Strings.h"

#include <cstdarg>
#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace {

// Most command lines fit in the first buffer; longer texts cost one more formatting pass.
constexpr size_t kFirstFormatBufferSize = 128;
// Room added to the size the formatter asked for, which leaves out the terminating NUL: four bytes
// hold it with some to spare.
constexpr size_t kFormatBufferSlack = 4;

// Formats into a buffer of the first size and grows it until the text fits: to the size the
// formatter asked for, or to twice the size when it reported an error instead.
std::string FormatWithArguments(const char* format, va_list arguments)
{
    std::vector<char> buffer(kFirstFormatBufferSize);
    for (;;) {
        va_list attempt;
        va_copy(attempt, arguments);
        // The analyser does not follow a va_list received as a parameter into va_copy.
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
        const int needed = vsnprintf(buffer.data(), buffer.size(), format, attempt);
        va_end(attempt);
        if (needed >= 0 && static_cast<size_t>(needed) < buffer.size()) {
            return std::string(buffer.data(), static_cast<size_t>(needed));
        }
        const size_t nextSize =
            needed < 0 ? buffer.size() * 2 : static_cast<size_t>(needed) + kFormatBufferSlack;
        buffer.assign(nextSize, '\0');
    }
}

}  // namespace

std::string FormatString(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = FormatWithArguments(format, arguments);
    va_end(arguments);
    return text;
}

std::vector<std::string> SplitFields(const std::string& text, const std::string& delimiters)
{
    std::vector<std::string> fields;
    if (text.empty()) {
        return fields;
    }
    size_t fieldStart = 0;
    for (;;) {
        const size_t delimiter = text.find_first_of(delimiters, fieldStart);
        if (delimiter == std::string::npos) {
            fields.push_back(text.substr(fieldStart));
            return fields;
        }
        fields.push_back(text.substr(fieldStart, delimiter - fieldStart));
        fieldStart = delimiter + 1;
    }
}

std::string TrimChars(const std::string& text, const std::string& set)
{
    const size_t first = text.find_first_not_of(set);
    if (first == std::string::npos) {
        return "";
    }
    const size_t last = text.find_last_not_of(set);
    return text.substr(first, last - first + 1);
}

bool StartsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::string SubstrRange(const std::string& text, int first, int last)
{
    const int length = static_cast<int>(text.size());
    if (last < 0) {
        last = last + length - 1;
    }
    if (first < 0 || first >= length || last < first) {
        return "";
    }
    if (last >= length) {
        last = length - 1;
    }
    return text.substr(static_cast<size_t>(first),
                       static_cast<size_t>(last) - static_cast<size_t>(first) + 1);
}

int StringToInt(const std::string& text)
{
    std::istringstream stream(text);
    int value = 0;
    if (!(stream >> value)) {
        throw std::domain_error("invalid string to number conversion");
    }
    return value;
}
