#ifndef GNSS_CMDLINE_GPSCOMMANDLINE_H
#define GNSS_CMDLINE_GPSCOMMANDLINE_H

#include "receivers/GpsSettings.h"

// How a parse ends that does not fill the settings: help or version shown, or arguments rejected.
enum class ParseEnding {
    // The parser library prints its text and ends the process itself (status 0 for help and
    // version, 1 for an error): the statuses start-up scripts read.
    ExitsProcess,
    // For callers that parse many command lines in one process: help and version are printed and
    // set settings.bHelpShown; a rejection is printed as "error: <text> for arg <argument>".
    ReturnsToCaller,
};

// Parses the command line into settings. On return, settings.bParsedOk tells whether the settings
// were filled.
void ParseGpsCommandLine(int argc, const char* const* argv, GpsSettings& settings,
                         ParseEnding ending = ParseEnding::ExitsProcess);

#endif
