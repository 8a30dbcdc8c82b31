#include "tests/e2e/LineDiff.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

// Unchanged lines shown on each side of a change.
constexpr std::size_t kContextLines = 2;

const char kNoLineEnd[] = "  <no line end>";

std::string Visible(const std::string& line)
{
    std::string shown;
    for (const char c : line) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\r') {
            shown += "\\r";
        } else if (c == '\t') {
            shown += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            shown += escaped;
        } else {
            shown += c;
        }
    }
    return shown;
}

std::vector<std::string> VisibleLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(Visible(text.substr(start)) + kNoLineEnd);
            break;
        }
        lines.push_back(Visible(text.substr(start, end - start)));
        start = end + 1;
    }
    return lines;
}

struct DiffLine {
    char mark;  // ' ', '-' or '+'
    std::string text;
};

// The classic longest-common-subsequence walk; the texts compared here are a few hundred lines.
std::vector<DiffLine> Differences(const std::vector<std::string>& a, const std::vector<std::string>& b)
{
    std::vector<std::vector<std::size_t>> common(a.size() + 1, std::vector<std::size_t>(b.size() + 1, 0));
    for (std::size_t i = a.size(); i-- > 0;) {
        for (std::size_t j = b.size(); j-- > 0;) {
            common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::vector<DiffLine> lines;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            lines.push_back({' ', a[i++]});
            ++j;
        } else if (i < a.size() && (j == b.size() || common[i + 1][j] >= common[i][j + 1])) {
            lines.push_back({'-', a[i++]});
        } else {
            lines.push_back({'+', b[j++]});
        }
    }
    return lines;
}

bool NearAChange(const std::vector<DiffLine>& lines, std::size_t index)
{
    const std::size_t first = index > kContextLines ? index - kContextLines : 0;
    for (std::size_t k = first; k < lines.size() && k <= index + kContextLines; ++k) {
        if (lines[k].mark != ' ') {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string LineDiff(const std::string& expected, const std::string& actual)
{
    if (expected == actual) {
        return std::string();
    }
    const std::vector<DiffLine> lines = Differences(VisibleLines(expected), VisibleLines(actual));
    std::string shown;
    bool skipping = false;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (!NearAChange(lines, index)) {
            shown += skipping ? "" : "...\n";
            skipping = true;
            continue;
        }
        skipping = false;
        shown += std::string(1, lines[index].mark) + " " + lines[index].text + "\n";
    }
    return shown;
}
