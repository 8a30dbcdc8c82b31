#include "sim/line/WireLog.h"

#include "sim/text/ByteText.h"

#include <cstdio>
#include <cstdlib>

namespace GnssSim {

namespace {

const char* const kDirectionNames[] = {"in", "out", "heard", "event"};

bool DirectionFromName(const std::string& name, WireDirection& direction)
{
    for (int i = 0; i < 4; ++i) {
        if (name == kDirectionNames[i]) {
            direction = static_cast<WireDirection>(i);
            return true;
        }
    }
    return false;
}

// The next blank-separated word of line from pos on; pos moves past it and one blank.
std::string NextWord(const std::string& line, std::size_t& pos)
{
    const std::size_t end = line.find(' ', pos);
    std::string word = line.substr(pos, end == std::string::npos ? std::string::npos : end - pos);
    pos = end == std::string::npos ? line.size() : end + 1;
    return word;
}

// The quoted, escaped bytes field starting at pos; the closing quote is the first one that no
// backslash escapes.
bool QuotedField(const std::string& line, std::size_t& pos, std::string& escaped)
{
    if (pos >= line.size() || line[pos] != '"') {
        return false;
    }
    for (std::size_t i = pos + 1; i < line.size(); ++i) {
        if (line[i] == '\\') {
            ++i;
        } else if (line[i] == '"') {
            escaped = line.substr(pos + 1, i - pos - 1);
            pos = i + 2;
            return true;
        }
    }
    return false;
}


}

const char* WireDirectionName(WireDirection direction)
{
    return kDirectionNames[static_cast<int>(direction)];
}

std::string FormatWireLogEntry(const WireLogEntry& entry)
{
    char head[96];
    (void)std::snprintf(head, sizeof head, "%.6f %s %d %d ", entry.seconds, WireDirectionName(entry.direction),
                  entry.lineBaud, entry.receiverBaud);
    return head + ("\"" + EscapeBytes(entry.bytes) + "\" ") + entry.meaning;
}

bool ParseWireLogLine(const std::string& line, WireLogEntry& entry)
{
    std::size_t pos = 0;
    const std::string seconds = NextWord(line, pos);
    char* end = nullptr;
    entry.seconds = std::strtod(seconds.c_str(), &end);
    if (seconds.empty() || *end != '\0' || !DirectionFromName(NextWord(line, pos), entry.direction)) {
        return false;
    }
    long lineBaud = 0;
    long receiverBaud = 0;
    if (!ParseInteger(NextWord(line, pos), lineBaud) || !ParseInteger(NextWord(line, pos), receiverBaud)) {
        return false;
    }
    entry.lineBaud = static_cast<int>(lineBaud);
    entry.receiverBaud = static_cast<int>(receiverBaud);
    std::string escaped;
    if (!QuotedField(line, pos, escaped) || !UnescapeBytes(escaped, entry.bytes)) {
        return false;
    }
    entry.meaning = pos < line.size() ? line.substr(pos) : std::string();
    return true;
}

WireLog::WireLog(TimePoint start) : m_start(start)
{
}

bool WireLog::OpenFile(const std::string& path, std::string& error)
{
    m_file.open(path, std::ios::out | std::ios::trunc);
    if (!m_file) {
        error = "cannot write the wire log " + path;
        return false;
    }
    return true;
}

void WireLog::Add(TimePoint when, WireDirection direction, int lineBaud, int receiverBaud, const std::string& bytes,
                  const std::string& meaning)
{
    WireLogEntry entry;
    entry.seconds = std::chrono::duration<double>(when - m_start).count();
    entry.direction = direction;
    entry.lineBaud = lineBaud;
    entry.receiverBaud = receiverBaud;
    entry.bytes = bytes;
    entry.meaning = meaning;
    const std::string line = FormatWireLogEntry(entry);
    if (m_file.is_open()) {
        m_file << line << std::endl;
    }
    m_lines.push_back(line);
    if (m_lines.size() > kMaxKeptLines) {
        m_lines.pop_front();
    }
}

std::vector<std::string> WireLog::Lines() const
{
    return std::vector<std::string>(m_lines.begin(), m_lines.end());
}

}
