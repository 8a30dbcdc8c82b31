#ifndef GNSS_APP_DRYRUNREPORT_H
#define GNSS_APP_DRYRUNREPORT_H

#include <ostream>

#include "receivers/GpsSettings.h"

// Prints the one line that says what a run with these settings would do: the first mode that
// applies, or the full settings print-out when the run would configure the receiver.
void PrintDryRunReport(const GpsSettings& settings, std::ostream& out);

#endif
