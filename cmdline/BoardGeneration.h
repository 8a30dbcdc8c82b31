#ifndef GNSS_CMDLINE_BOARDGENERATION_H
#define GNSS_CMDLINE_BOARDGENERATION_H

#include <string>

// The console's board generation. It belongs to the console's platform library; this tool only
// runs on generation 4 consoles, so the answer is fixed here, the one place a real query replaces.
int GetBoardGeneration();

// The receiver's serial device when the command line names none: consoles of every generation
// after 0 carry the receiver on the first i.MX UART, generation 0 on the first PC-style port.
std::string DefaultGpsPort();

#endif
