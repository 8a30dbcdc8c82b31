#ifndef GNSS_APP_QUERYREPORT_H
#define GNSS_APP_QUERYREPORT_H

#include <ostream>

class CGPSConfigurer;

// Asks the receiver for its identity through configurer and prints it: type and firmware, and
// with extended also the package version and version record (NovAtel receivers only) and the raw
// version information. Every item is asked for afresh, as it is printed.
void PrintQueryReport(CGPSConfigurer& configurer, int receiverType, bool extended,
                      std::ostream& out);

#endif
