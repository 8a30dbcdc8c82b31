#ifndef GNSS_TOOLS_HELPOUTPUT_H
#define GNSS_TOOLS_HELPOUTPUT_H

#include <tclap/CmdLine.h>

#include <ostream>

// TCLAP's help, in TCLAP's layout, written to the stream the program was given rather than to
// std::cout, so that the program runs in-process in a test with its output collected.
class HelpOutput : public TCLAP::StdOutput {
public:
    explicit HelpOutput(std::ostream& out) : m_out(out) {}

    void usage(TCLAP::CmdLineInterface& command) override;

private:
    std::ostream& m_out;
};

#endif
