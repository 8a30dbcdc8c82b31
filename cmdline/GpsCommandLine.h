#ifndef GNSS_CMDLINE_GPSCOMMANDLINE_H
#define GNSS_CMDLINE_GPSCOMMANDLINE_H

#include "receivers/GpsSettings.h"

// Parses the command line into settings. Help, version and rejected arguments are reported by the
// parser library, which then ends the process itself (status 0 for help and version, 1 for an
// error). On return, settings.bParsedOk tells whether the settings were filled.
void ParseGpsCommandLine(int argc, const char* const* argv, GpsSettings& settings);

#endif
