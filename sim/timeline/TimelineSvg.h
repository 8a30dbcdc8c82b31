#ifndef GNSS_SIM_TIMELINE_TIMELINESVG_H
#define GNSS_SIM_TIMELINE_TIMELINESVG_H

#include "sim/timeline/Session.h"

#include <string>

namespace GnssSim {

// The session as a picture (an SVG document, self-contained: no scripts, fonts or images of its
// own), for people to see at a glance what happened on the line: time across, the tool's lines
// above the axis and the receiver's below, each at the moment it crossed; the line's speed and the
// receiver's as coloured bands, with a legend; what the other side could not take in marked as
// lost; the waits the tool sat through as brackets with their length. Labels slant so that lines
// close together keep theirs; lines too close for a label each share one, and every line in full
// is in the tooltip of its marks. The title heads the picture. A pure function of its arguments.
std::string TimelineSvg(const Session& session, const std::string& title);

}

#endif
