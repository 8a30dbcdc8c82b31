#include "sim/timeline/LabelClusters.h"

#include "sim/text/ByteText.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <utility>

namespace GnssSim {

namespace {

// A tooltip is for reading: a cluster of a long stream lists its first lines and counts the rest.
constexpr std::size_t kMaxTooltipLines = 30;

const char kEllipsis[] = "\xe2\x80\xa6";  // …
const char kTimes[] = "\xc3\x97";         // ×
const char kMiddleDot[] = "\xc2\xb7";     // ·

// A label names each kind of line up to this many; beyond, the first and the last.
constexpr std::size_t kMaxKindsNamed = 3;

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The labels a cluster's text is made of, each with how often it came, in the order first seen. A
// cluster of a long session can hold thousands of lines, all different.
class Counted {
public:
    void Add(const std::string& label)
    {
        const auto found = m_index.emplace(label, m_entries.size());
        if (found.second) {
            m_entries.emplace_back(label, 0);
        }
        ++m_entries[found.first->second].second;
    }
    const std::vector<std::pair<std::string, int>>& Entries() const { return m_entries; }

private:
    std::vector<std::pair<std::string, int>> m_entries;
    std::unordered_map<std::string, std::size_t> m_index;
};

std::string WithCount(const std::pair<std::string, int>& entry)
{
    return entry.second == 1 ? entry.first : entry.first + " " + kTimes + std::to_string(entry.second);
}

// The lines a label speaks of: those with something to say that were not streamed, else the
// streamed ones, else the empty ones.
std::vector<const SessionLine*> Spoken(const std::vector<SessionLine>& lines, const std::vector<std::size_t>& members)
{
    const std::function<bool(const SessionLine&)> choices[] = {
        [](const SessionLine& line) { return !line.label.empty() && !line.streamed; },
        [](const SessionLine& line) { return !line.label.empty(); },
        [](const SessionLine&) { return true; },
    };
    for (const auto& chosen : choices) {
        std::vector<const SessionLine*> spoken;
        for (std::size_t index : members) {
            if (chosen(lines[index])) {
                spoken.push_back(&lines[index]);
            }
        }
        if (!spoken.empty()) {
            return spoken;
        }
    }
    return {};
}

// The lengths to cut pieces of text to so that together they take at most room characters: the
// longest is shortened first, and none below two (a character and "…").
std::vector<std::size_t> FittedLengths(const std::vector<std::string>& pieces, std::size_t room)
{
    std::vector<std::size_t> lengths;
    std::size_t total = 0;
    for (const std::string& piece : pieces) {
        lengths.push_back(CharCount(piece));
        total += lengths.back();
    }
    while (total > room) {
        auto longest = std::max_element(lengths.begin(), lengths.end());
        if (*longest <= 2) {
            break;
        }
        --*longest;
        --total;
    }
    return lengths;
}

// What the lines said in room for maxChars characters: up to three kinds of line each with its
// count, else the first and the last with the number of lines; each cut to share the room.
std::string Summary(const std::vector<const SessionLine*>& spoken, std::size_t maxChars)
{
    Counted counted;
    for (const SessionLine* line : spoken) {
        counted.Add(line->label.empty() ? ShownBytes(line->bytes) : line->label);
    }
    std::vector<std::string> pieces;
    std::string separator = std::string(" ") + kMiddleDot + " ";
    std::string suffix;
    if (counted.Entries().size() <= kMaxKindsNamed) {
        for (const auto& entry : counted.Entries()) {
            pieces.push_back(WithCount(entry));
        }
    } else {
        pieces = {spoken.front()->label, spoken.back()->label};
        separator = std::string(" ") + kEllipsis + " ";
        suffix = " (" + std::to_string(spoken.size()) + " lines)";
    }
    const std::size_t fixed = CharCount(separator) * (pieces.size() - 1) + CharCount(suffix);
    const std::vector<std::size_t> lengths = FittedLengths(pieces, maxChars > fixed ? maxChars - fixed : 0);
    std::string summary;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        summary += (i == 0 ? "" : separator) + Abbreviated(pieces[i], lengths[i]);
    }
    return summary + suffix;
}

std::string LostLead(const std::vector<const SessionLine*>& spoken, bool& allLost)
{
    std::size_t lost = 0;
    for (const SessionLine* line : spoken) {
        lost += line->lost ? 1 : 0;
    }
    allLost = lost == spoken.size();
    if (lost == 0) {
        return "";
    }
    return allLost ? "lost: " : std::to_string(lost) + " lost: ";
}

std::string TooltipLine(const SessionLine& line)
{
    char time[32];
    (void)std::snprintf(time, sizeof time, "%.3f s: ", line.start);
    return time + ShownBytes(line.bytes) + " (" + line.note + ")";
}

std::string Tooltip(const std::vector<SessionLine>& lines, const std::vector<std::size_t>& members, Side side)
{
    std::string tooltip = side == Side::Tool ? "the tool sent" : "the receiver sent";
    for (std::size_t i = 0; i < members.size() && i < kMaxTooltipLines; ++i) {
        tooltip += "\n" + TooltipLine(lines[members[i]]);
    }
    if (members.size() > kMaxTooltipLines) {
        tooltip += "\n" + std::string(kEllipsis) + " and " + std::to_string(members.size() - kMaxTooltipLines) +
                   " lines more";
    }
    return tooltip;
}

bool OnlyStreamed(const std::vector<SessionLine>& lines, const std::vector<std::size_t>& members)
{
    for (std::size_t index : members) {
        if (!lines[index].streamed) {
            return false;
        }
    }
    return true;
}

// The distinct labels of the cluster's lines: the logs a cluster of streamed lines shows, however
// many sentences of each it holds.
std::vector<std::string> DistinctLabels(const std::vector<SessionLine>& lines, const std::vector<std::size_t>& members)
{
    Counted counted;
    for (std::size_t index : members) {
        counted.Add(lines[index].label);
    }
    std::vector<std::string> labels;
    for (const auto& entry : counted.Entries()) {
        labels.push_back(entry.first);
    }
    return labels;
}

void Describe(LabelCluster& cluster, const std::vector<SessionLine>& lines, Side side, std::size_t maxChars)
{
    const std::vector<const SessionLine*> spoken = Spoken(lines, cluster.members);
    cluster.lead = LostLead(spoken, cluster.allLost);
    const std::size_t leadChars = CharCount(cluster.lead);
    const std::size_t room = maxChars > leadChars ? maxChars - leadChars : 1;
    cluster.text = Abbreviated(Summary(spoken, room), room);
    cluster.tooltip = Tooltip(lines, cluster.members, side);
}

}

std::vector<LabelCluster> ClusterLabels(const std::vector<SessionLine>& lines, Side side,
                                        const std::function<double(double)>& xOf, const LabelRoom& room)
{
    std::vector<LabelCluster> clusters;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (lines[index].side != side) {
            continue;
        }
        const double x = xOf(lines[index].start);
        if (clusters.empty() || x - clusters.back().x >= room.spacing) {
            clusters.emplace_back();
            clusters.back().x = x;
        }
        clusters.back().members.push_back(index);
    }
    for (std::size_t i = 0; i < clusters.size(); ++i) {
        Describe(clusters[i], lines, side, room.maxChars);
        if (i == 0) {
            continue;
        }
        const LabelCluster& before = clusters[i - 1];
        clusters[i].continuesStream = OnlyStreamed(lines, clusters[i].members) && OnlyStreamed(lines, before.members) &&
                                      DistinctLabels(lines, clusters[i].members) == DistinctLabels(lines, before.members);
        clusters[i].repeats = clusters[i].x - before.x < room.repeatDistance &&
                              clusters[i].lead + clusters[i].text == before.lead + before.text;
    }
    return clusters;
}

std::size_t CharCount(const std::string& text)
{
    std::size_t count = 0;
    for (char byte : text) {
        count += IsContinuation(byte) ? 0 : 1;
    }
    return count;
}

std::string Abbreviated(const std::string& text, std::size_t maxChars)
{
    if (CharCount(text) <= maxChars || maxChars == 0) {
        return CharCount(text) <= maxChars ? text : std::string();
    }
    std::string cut;
    std::size_t chars = 0;
    for (char byte : text) {
        if (!IsContinuation(byte) && ++chars == maxChars) {
            break;
        }
        cut += byte;
    }
    return cut + kEllipsis;
}

}
