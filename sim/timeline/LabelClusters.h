#ifndef GNSS_SIM_TIMELINE_LABELCLUSTERS_H
#define GNSS_SIM_TIMELINE_LABELCLUSTERS_H

#include "sim/timeline/Session.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace GnssSim {

// How labels are set: how far apart their feet must be, how close a repeated label stands to the
// one it repeats, how many characters a label has.
struct LabelRoom {
    double spacing = 0.0;
    double repeatDistance = 0.0;
    std::size_t maxChars = 0;
};

// Lines of one side that crossed too close together to be labelled each, labelled together.
struct LabelCluster {
    double x = 0.0;                   // where the first of them crossed, in the picture
    std::vector<std::size_t> members; // the lines', as indexes into the session's lines
    std::string lead;                 // "lost: " when all were lost, "3 lost: " when some, else ""
    std::string text;                 // what they said, abbreviated with the lead to fit
    bool allLost = false;
    // Only streamed lines, of the logs the cluster before streamed too: the stream goes on, and
    // its marks need no label of their own.
    bool continuesStream = false;
    // Says what the cluster just before says, and close to it: a tool trying the same again and
    // again, which one label tells as well as a row of them.
    bool repeats = false;
    std::string tooltip;              // every line in full, with its time and what became of it
};

// The clusters of a side's lines, given where a time is in the picture: a cluster starts at a line
// at least room.spacing to the right of the start of the one before, so that labels set at the
// clusters' feet at the same slant keep that far apart. A label says what its lines said, the
// receiver's streamed sentences by the log's name: one line as it is, repeats counted ("x ×3"),
// up to three kinds joined ("a · b ×2 · c"), more by the first and the last ("a … z (9 lines)");
// streamed lines only when there is nothing else, empty lines only when there is nothing at all.
// The parts are cut to share room.maxChars characters, each cut part ending in "…".
std::vector<LabelCluster> ClusterLabels(const std::vector<SessionLine>& lines, Side side,
                                        const std::function<double(double)>& xOf, const LabelRoom& room);

// Characters, not bytes, of UTF-8 text: what a monospaced font gives a cell each.
std::size_t CharCount(const std::string& text);

// The text cut to at most maxChars characters, "…" last when cut.
std::string Abbreviated(const std::string& text, std::size_t maxChars);

}

#endif
