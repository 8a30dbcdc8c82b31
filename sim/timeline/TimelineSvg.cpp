#include "sim/timeline/TimelineSvg.h"

#include "sim/timeline/LabelClusters.h"
#include "sim/timeline/SvgWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

namespace GnssSim {

namespace {

// Text widths are reckoned in the cells of a monospaced font: DejaVu Sans Mono's are 0.602 of its
// size, and a little more keeps a reckoning on the safe side for a font slightly wider.
constexpr double kFontSize = 11.0;
constexpr double kCharWidth = 6.8;       // at 11 px
constexpr double kSmallCharWidth = 6.2;  // at 10 px
constexpr double kTitleCharWidth = 8.2;  // bold, at 13 px

// The labels slant at 45 degrees. Two of them whose feet are kLabelSpacing apart stay clear of each
// other: 11-px text is 13 px from its descenders to its ascenders, and 13 / sin 45 degrees is 18.4.
constexpr double kLabelAngle = 45.0;
constexpr double kSlant = 0.7071;
constexpr double kLabelSpacing = 20.0;
constexpr std::size_t kMaxLabelChars = 52;
// A label that says what the one just before says, at most this far to its right, says "again".
constexpr double kRepeatDistance = 3 * kLabelSpacing;
const char kAgain[] = "again";

// Time across: a short session at 100 px a second; a longer one gets at least 1200 px, and 40 px a
// second, where a wait of a second still has room for its length; no picture grows past 4000 px.
constexpr double kShortSessionPixelsPerSecond = 100.0;
constexpr double kLongSessionPixelsPerSecond = 40.0;
constexpr double kMinPlotWidth = 400.0;
constexpr double kLongPlotWidth = 1200.0;
constexpr double kMaxPlotWidth = 4000.0;
// Tick marks at least this far apart, so that their numbers do not touch.
constexpr double kMinTickSpacing = 60.0;

// The picture, from the top: title, legend, the tool's labels, its marks and speed, the waits, the
// time axis, the receiver's speed and marks, its labels.
constexpr double kLeft = 128.0;  // room for the rows' names
constexpr double kMargin = 12.0;
constexpr double kTitleBaseline = 20.0;
constexpr double kLegendTop = 32.0;
constexpr double kLabelsTop = 56.0;
constexpr double kMarkRow = 14.0;
constexpr double kBand = 16.0;
constexpr double kWaitRow = 18.0;
constexpr double kAxisRow = 20.0;

struct SpeedColour {
    const char* fill;
    int baud;
    bool dark;  // wants white text
};

// Colours told apart by people with any kind of colour blindness (Okabe and Ito's set), one for
// each common speed; any other speed is grey.
const SpeedColour kSpeedColours[] = {
    {"#cc79a7", 4800, true},   {"#e69f00", 9600, false},  {"#56b4e9", 19200, false}, {"#009e73", 38400, true},
    {"#f0e442", 57600, false}, {"#0072b2", 115200, true}, {"#882255", 230400, true},
};

const char kLostColour[] = "#d62728";

std::string SpeedClass(int baud)
{
    for (const SpeedColour& colour : kSpeedColours) {
        if (colour.baud == baud) {
            return "b" + std::to_string(baud);
        }
    }
    return baud == 0 ? "nospeed" : "bother";
}

bool IsDark(int baud)
{
    for (const SpeedColour& colour : kSpeedColours) {
        if (colour.baud == baud) {
            return colour.dark;
        }
    }
    return false;
}

std::string StyleSheet()
{
    std::string css =
        "text{font-family:'DejaVu Sans Mono',monospace;font-size:11px;fill:#222}\n"
        ".page{fill:#fff}\n"
        ".title{font-size:13px;font-weight:bold}\n"
        ".small,.caption,.tick,.band,.wait text{font-size:10px}\n"
        ".caption{text-anchor:end;fill:#555}\n"
        ".tick,.band,.wait text{text-anchor:middle}\n"
        ".band.light{fill:#fff}\n"
        ".axis,.tickmark{stroke:#444;stroke-width:1}\n"
        ".wait line{stroke:#444;stroke-width:1}\n"
        ".heard{fill:#222}\n"
        ".streamed{fill:#9a9a9a}\n"
        ".lost,.label.lost,.lostlead{fill:" +
        std::string(kLostColour) +
        "}\n"
        ".nospeed{fill:#fff;stroke:#bbb;stroke-width:0.5}\n"
        ".bother{fill:#bbbbbb}\n"
        ".restarting{fill:url(#restarting)}\n"
        ".streamlabel{fill:#777}\n";
    for (const SpeedColour& colour : kSpeedColours) {
        css += ".b" + std::to_string(colour.baud) + "{fill:" + colour.fill + "}\n";
    }
    return css;
}

const char kRestartingPattern[] =
    "<defs><pattern id=\"restarting\" width=\"6\" height=\"6\" patternUnits=\"userSpaceOnUse\" "
    "patternTransform=\"rotate(45)\"><rect width=\"6\" height=\"6\" fill=\"#e6e6e6\"/>"
    "<rect width=\"2\" height=\"6\" fill=\"#a0a0a0\"/></pattern></defs>";

std::string Seconds(double seconds, const char* format = "%.1f s")
{
    char text[32];
    (void)std::snprintf(text, sizeof text, format, seconds);
    return text;
}

double PixelsPerSecond(double duration)
{
    const double seconds = std::max(duration, 0.001);
    double pixels = seconds * kShortSessionPixelsPerSecond <= kLongPlotWidth
                        ? kShortSessionPixelsPerSecond
                        : std::max(kLongSessionPixelsPerSecond, kLongPlotWidth / seconds);
    pixels = std::max(pixels, kMinPlotWidth / seconds);
    return std::min(pixels, kMaxPlotWidth / seconds);
}

double TickStep(double pixelsPerSecond)
{
    const double steps[] = {0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 1200, 3600};
    for (double step : steps) {
        if (step * pixelsPerSecond >= kMinTickSpacing) {
            return step;
        }
    }
    return steps[sizeof steps / sizeof steps[0] - 1];
}

double LabelChars(const LabelCluster& cluster)
{
    return cluster.continuesStream ? 0.0
           : cluster.repeats       ? static_cast<double>(CharCount(kAgain))
                                   : static_cast<double>(CharCount(cluster.lead) + CharCount(cluster.text));
}

// How far the side's slanted labels reach up (or down) from their feet.
double LabelsHeight(const std::vector<LabelCluster>& clusters)
{
    double chars = 0.0;
    for (const LabelCluster& cluster : clusters) {
        chars = std::max(chars, LabelChars(cluster));
    }
    return chars * kCharWidth * kSlant + kFontSize + 4.0;
}

// The text on one line, every run of blanks, tabs and line ends one blank.
std::string OneLine(const std::string& text)
{
    std::string line;
    for (char character : text) {
        const bool blank = character == ' ' || character == '\t' || character == '\n' || character == '\r';
        if (!blank) {
            line += character;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    return line;
}

class Picture {
public:
    Picture(const Session& session, const std::string& title);
    std::string Draw();

private:
    double X(double seconds) const { return kLeft + seconds * m_pixelsPerSecond; }
    double Width() const;
    void DrawTitle(SvgWriter& svg) const;
    // Draws the legend when given a writer; its right end either way.
    double Legend(SvgWriter* svg) const;
    void DrawCaptions(SvgWriter& svg) const;
    void DrawBand(SvgWriter& svg, const std::vector<SpeedStretch>& stretches, double top, const char* whose) const;
    void DrawWaits(SvgWriter& svg) const;
    void DrawAxis(SvgWriter& svg) const;
    void DrawSide(SvgWriter& svg, const std::vector<LabelCluster>& clusters, Side side) const;
    void DrawMark(SvgWriter& svg, const SessionLine& line, double top) const;

    const Session& m_session;
    const std::string m_title;
    const double m_pixelsPerSecond;
    std::vector<LabelCluster> m_toolLabels;
    std::vector<LabelCluster> m_receiverLabels;
    // The rows' tops.
    double m_toolMarks = 0.0;
    double m_toolBand = 0.0;
    double m_waits = 0.0;
    double m_axis = 0.0;
    double m_receiverBand = 0.0;
    double m_receiverMarks = 0.0;
    double m_receiverLabelsTop = 0.0;
    double m_height = 0.0;
};

Picture::Picture(const Session& session, const std::string& title)
    : m_session(session), m_title(title), m_pixelsPerSecond(PixelsPerSecond(session.end))
{
    const auto xOf = [this](double seconds) { return X(seconds); };
    const LabelRoom room{kLabelSpacing, kRepeatDistance, kMaxLabelChars};
    m_toolLabels = ClusterLabels(session.lines, Side::Tool, xOf, room);
    m_receiverLabels = ClusterLabels(session.lines, Side::Receiver, xOf, room);
    m_toolMarks = kLabelsTop + LabelsHeight(m_toolLabels);
    m_toolBand = m_toolMarks + kMarkRow;
    m_waits = m_toolBand + kBand;
    m_axis = m_waits + kWaitRow;
    m_receiverBand = m_axis + kAxisRow;
    m_receiverMarks = m_receiverBand + kBand;
    m_receiverLabelsTop = m_receiverMarks + kMarkRow;
    m_height = m_receiverLabelsTop + LabelsHeight(m_receiverLabels) + kMargin;
}

double Picture::Width() const
{
    double right = std::max(X(m_session.end) + 2 * kMargin, Legend(nullptr) + kMargin);
    for (const auto* clusters : {&m_toolLabels, &m_receiverLabels}) {
        for (const LabelCluster& cluster : *clusters) {
            right = std::max(right, cluster.x + LabelChars(cluster) * kCharWidth * kSlant + kFontSize + kMargin);
        }
    }
    return right;
}

std::string Picture::Draw()
{
    SvgWriter svg(Width(), m_height, StyleSheet());
    svg.Raw(kRestartingPattern);
    DrawTitle(svg);
    Legend(&svg);
    DrawCaptions(svg);
    DrawBand(svg, m_session.lineSpeeds, m_toolBand, "the line");
    DrawWaits(svg);
    DrawAxis(svg);
    DrawBand(svg, m_session.receiverSpeeds, m_receiverBand, "the receiver");
    DrawSide(svg, m_toolLabels, Side::Tool);
    DrawSide(svg, m_receiverLabels, Side::Receiver);
    return svg.Finish();
}

void Picture::DrawTitle(SvgWriter& svg) const
{
    const std::string full = OneLine(m_title) + " (" + Seconds(m_session.end) + ")";
    const auto room = static_cast<std::size_t>((Width() - 2 * kMargin) / kTitleCharWidth);
    const std::string shown = Abbreviated(full, room);
    svg.BeginGroup("heading", shown == full ? "" : full);
    svg.Text(kMargin, kTitleBaseline, shown, "title");
    svg.EndGroup();
}

// Swatches of the speeds that occur, then the signs: restarting, lost, streamed, wait.
double Picture::Legend(SvgWriter* svg) const
{
    std::set<int> bauds;
    bool restarts = false;
    for (const auto* stretches : {&m_session.lineSpeeds, &m_session.receiverSpeeds}) {
        for (const SpeedStretch& stretch : *stretches) {
            restarts = restarts || stretch.restarting;
            if (!stretch.restarting && stretch.baud != 0) {
                bauds.insert(stretch.baud);
            }
        }
    }
    double x = kMargin;
    const double y = kLegendTop;
    const auto entry = [&](const std::string& swatchClass, const std::string& text) {
        if (svg != nullptr) {
            svg->Rect(x, y, 14, 10, swatchClass);
            svg->Text(x + 18, y + 9, text, "small");
        }
        x += 18 + static_cast<double>(CharCount(text)) * kSmallCharWidth + 14;
    };
    const std::string speeds = "speed, baud:";
    const std::string wait = "a wait of the tool's, with its length";
    if (svg != nullptr) {
        svg->BeginGroup("legend");
        svg->Text(x, y + 9, speeds, "small");
    }
    x += static_cast<double>(speeds.size() + 1) * kSmallCharWidth;
    for (int baud : bauds) {
        entry(SpeedClass(baud), std::to_string(baud));
    }
    if (restarts) {
        entry("restarting", "restarting");
    }
    entry("heard", "heard");
    entry("lost", "lost: sent at a speed not listened at, or into a restart");
    entry("streamed", "streamed unasked");
    if (svg != nullptr) {
        svg->Line(x, y + 5, x + 24, y + 5, "axis");
        svg->Line(x, y + 1, x, y + 9, "axis");
        svg->Line(x + 24, y + 1, x + 24, y + 9, "axis");
        svg->Text(x + 30, y + 9, wait, "small");
        svg->EndGroup();
    }
    return x + 30 + static_cast<double>(wait.size()) * kSmallCharWidth;
}

void Picture::DrawCaptions(SvgWriter& svg) const
{
    // Clear of the first tick's number, which stands centred under the start of the axis.
    const double x = kLeft - 18;
    svg.BeginGroup("captions");
    svg.Text(x, m_toolMarks + 11, "the tool sent", "caption");
    svg.Text(x, m_toolBand + 12, "line's speed", "caption");
    svg.Text(x, m_waits + 13, "waits", "caption");
    svg.Text(x, m_axis + 14, "seconds", "caption");
    svg.Text(x, m_receiverBand + 12, "receiver's speed", "caption");
    svg.Text(x, m_receiverMarks + 11, "the receiver sent", "caption");
    svg.EndGroup();
}

void Picture::DrawBand(SvgWriter& svg, const std::vector<SpeedStretch>& stretches, double top, const char* whose) const
{
    for (const SpeedStretch& stretch : stretches) {
        const double left = X(stretch.from);
        const double width = X(stretch.to) - left;
        const std::string what = stretch.restarting ? "restarting " + Seconds(stretch.to - stretch.from)
                                 : stretch.baud == 0 ? std::string("no speed")
                                                     : std::to_string(stretch.baud);
        svg.BeginGroup("stretch", std::string(whose) + ": " + what + ", from " + Seconds(stretch.from, "%.3f s") +
                                      " to " + Seconds(stretch.to, "%.3f s"));
        svg.Rect(left, top, width, kBand, stretch.restarting ? "restarting" : SpeedClass(stretch.baud));
        if (stretch.baud != 0 && static_cast<double>(what.size()) * kSmallCharWidth + 6 <= width) {
            svg.Text(left + width / 2, top + 12, what, IsDark(stretch.baud) && !stretch.restarting ? "band light" : "band");
        }
        svg.EndGroup();
    }
}

// A bracket across each wait, its length in a gap in the middle where there is room.
void Picture::DrawWaits(SvgWriter& svg) const
{
    const double y = m_waits + 9;
    for (const Wait& wait : m_session.waits) {
        const double left = X(wait.from);
        const double right = X(wait.to);
        const std::string length = Seconds(wait.to - wait.from);
        const double textWidth = static_cast<double>(length.size()) * kSmallCharWidth;
        svg.BeginGroup("wait", "the tool waited " + Seconds(wait.to - wait.from, "%.3f s") + ", from " +
                                   Seconds(wait.from, "%.3f s") + " to " + Seconds(wait.to, "%.3f s"));
        svg.Line(left, y - 4, left, y + 4, "");
        svg.Line(right, y - 4, right, y + 4, "");
        if (textWidth + 8 <= right - left) {
            const double middle = (left + right) / 2;
            svg.Line(left, y, middle - textWidth / 2 - 3, y, "");
            svg.Line(middle + textWidth / 2 + 3, y, right, y, "");
            svg.Text(middle, y + 4, length, "");
        } else {
            svg.Line(left, y, right, y, "");
        }
        svg.EndGroup();
    }
}

void Picture::DrawAxis(SvgWriter& svg) const
{
    const double step = TickStep(m_pixelsPerSecond);
    svg.BeginGroup("time");
    svg.Line(X(0), m_axis, X(m_session.end), m_axis, "axis");
    const char* format = step < 0.1 ? "%.2f" : step < 1 ? "%.1f" : "%.0f";
    for (int i = 0; i * step <= m_session.end + 1e-9; ++i) {
        const double x = X(i * step);
        svg.Line(x, m_axis, x, m_axis + 4, "tickmark");
        svg.Text(x, m_axis + 14, Seconds(i * step, format), "tick");
    }
    svg.EndGroup();
}

void Picture::DrawMark(SvgWriter& svg, const SessionLine& line, double top) const
{
    const double left = X(line.start);
    const double width = std::max(1.2, X(line.end) - left);
    if (line.lost) {
        svg.Rect(left, top, width, kMarkRow, "lost");
    } else {
        svg.Rect(left, top + 3, width, kMarkRow - 6, line.streamed ? "streamed" : "heard");
    }
}

// Each cluster is a group: its marks and its label share the tooltip that lists its lines.
void Picture::DrawSide(SvgWriter& svg, const std::vector<LabelCluster>& clusters, Side side) const
{
    const bool tool = side == Side::Tool;
    const double marks = tool ? m_toolMarks : m_receiverMarks;
    if (clusters.empty()) {
        // A silent receiver's row says so rather than look forgotten.
        svg.Text(X(0) + 4, marks + 11, "nothing", "small streamlabel");
    }
    for (const LabelCluster& cluster : clusters) {
        svg.BeginGroup("cluster", cluster.tooltip);
        for (std::size_t index : cluster.members) {
            DrawMark(svg, m_session.lines[index], marks);
        }
        // The tool's labels rise from above its marks; the receiver's fall from below its own,
        // their feet lowered by the height of the letters that stand on them.
        const double x = tool ? cluster.x : cluster.x + 3;
        const double y = tool ? marks - 4 : marks + kMarkRow + 10;
        const double angle = tool ? -kLabelAngle : kLabelAngle;
        const bool streamedOnly = std::all_of(cluster.members.begin(), cluster.members.end(),
                                              [&](std::size_t i) { return m_session.lines[i].streamed; });
        const std::string textClass = cluster.allLost ? "label lost" : streamedOnly ? "label streamlabel" : "label";
        if (cluster.continuesStream) {
            // The stream goes on; its marks say so.
        } else if (cluster.repeats) {
            svg.Text(x, y, kAgain, textClass, angle);
        } else if (cluster.lead.empty() || cluster.allLost) {
            svg.Text(x, y, cluster.lead + cluster.text, textClass, angle);
        } else {
            svg.Text(x, y, cluster.lead, "lostlead", cluster.text, textClass, angle);
        }
        svg.EndGroup();
    }
}

}

std::string TimelineSvg(const Session& session, const std::string& title)
{
    return Picture(session, title).Draw();
}

}
