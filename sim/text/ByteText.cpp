#include "sim/text/ByteText.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace GnssSim {

namespace {

bool IsPrintable(unsigned char byte)
{
    return byte >= 0x20 && byte < 0x7F;
}

int HexValue(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    return -1;
}

bool IsSeparator(char character)
{
    return character == ' ' || character == '\t' || character == ',';
}

// Bytes as one printable line; quotes and backslashes escaped only where the text is to be read
// back.
std::string Escaped(const std::string& bytes, bool quoting)
{
    std::string text;
    for (unsigned char byte : bytes) {
        switch (byte) {
        case '\r': text += "\\r"; break;
        case '\n': text += "\\n"; break;
        case '\t': text += "\\t"; break;
        default:
            if (quoting && (byte == '\\' || byte == '"')) {
                text += '\\';
                text += static_cast<char>(byte);
            } else if (IsPrintable(byte)) {
                text += static_cast<char>(byte);
            } else {
                char escaped[5];
                (void)std::snprintf(escaped, sizeof escaped, "\\x%02x", static_cast<unsigned>(byte));
                text += escaped;
            }
        }
    }
    return text;
}

}

std::string EscapeBytes(const std::string& bytes)
{
    return Escaped(bytes, true);
}

std::string ShownBytes(const std::string& bytes)
{
    return Escaped(bytes, false);
}

bool UnescapeBytes(const std::string& text, std::string& bytes)
{
    bytes.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
            continue;
        }
        if (++i >= text.size()) {
            return false;
        }
        switch (text[i]) {
        case 'r': bytes += '\r'; break;
        case 'n': bytes += '\n'; break;
        case 't': bytes += '\t'; break;
        case '\\': bytes += '\\'; break;
        case '"': bytes += '"'; break;
        case 'x': {
            if (i + 2 >= text.size()) {
                return false;
            }
            const int high = HexValue(text[i + 1]);
            const int low = HexValue(text[i + 2]);
            if (high < 0 || low < 0) {
                return false;
            }
            bytes += static_cast<char>(high * 16 + low);
            i += 2;
            break;
        }
        default:
            return false;
        }
    }
    return true;
}

std::string HexBytes(const std::string& bytes)
{
    std::string text;
    for (unsigned char byte : bytes) {
        char hex[4];
        (void)std::snprintf(hex, sizeof hex, "%s%02x", text.empty() ? "" : " ", static_cast<unsigned>(byte));
        text += hex;
    }
    return text;
}

std::string WithoutLineEnd(const std::string& line)
{
    std::size_t end = line.size();
    while (end > 0 && (line[end - 1] == '\r' || line[end - 1] == '\n')) {
        --end;
    }
    return line.substr(0, end);
}

std::string UpperCase(const std::string& text)
{
    std::string upper = text;
    for (char& character : upper) {
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    }
    return upper;
}

std::vector<std::string> CommandWords(const std::string& line)
{
    std::string text = WithoutLineEnd(line);
    const std::size_t star = text.rfind('*');
    const bool endsInChecksum = !text.empty() && text[0] == '$' && star != std::string::npos &&
                                star + 3 == text.size() && HexValue(text[star + 1]) >= 0 &&
                                HexValue(text[star + 2]) >= 0;
    if (endsInChecksum) {
        text.erase(star);
    }
    std::vector<std::string> words;
    std::string word;
    for (char character : text) {
        if (IsSeparator(character)) {
            if (!word.empty()) {
                words.push_back(UpperCase(word));
            }
            word.clear();
        } else {
            word += character;
        }
    }
    if (!word.empty()) {
        words.push_back(UpperCase(word));
    }
    return words;
}

std::string JoinWords(const std::vector<std::string>& words, std::size_t first, const char* separator)
{
    std::string joined;
    for (std::size_t i = first; i < words.size(); ++i) {
        if (i > first) {
            joined += separator;
        }
        joined += words[i];
    }
    return joined;
}

std::vector<std::string> SplitKeepingEmpty(const std::string& text, char delimiter)
{
    std::vector<std::string> fields(1);
    for (char character : text) {
        if (character == delimiter) {
            fields.emplace_back();
        } else {
            fields.back() += character;
        }
    }
    return fields;
}

bool ParseInteger(const std::string& text, long& value)
{
    if (text.empty()) {
        return false;
    }
    char* end = nullptr;
    value = std::strtol(text.c_str(), &end, 10);
    return end != nullptr && *end == '\0' && std::isdigit(static_cast<unsigned char>(text.back()));
}

bool ParseDecimal(const std::string& text, double& value)
{
    bool digitSeen = false;
    for (char character : text) {
        if (std::isdigit(static_cast<unsigned char>(character))) {
            digitSeen = true;
        } else if (character != '.' && character != '-' && character != '+') {
            return false;
        }
    }
    if (!digitSeen) {
        return false;
    }
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return end != nullptr && *end == '\0' && std::isfinite(value);
}

}
