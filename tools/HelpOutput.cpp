#include "tools/HelpOutput.h"

void HelpOutput::usage(TCLAP::CmdLineInterface& command)
{
    m_out << "\nUSAGE: \n\n";
    _shortUsage(command, m_out);
    m_out << "\n\nWhere: \n\n";
    _longUsage(command, m_out);
    m_out << "\n";
}
