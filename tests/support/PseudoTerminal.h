#ifndef GNSS_TESTS_SUPPORT_PSEUDOTERMINAL_H
#define GNSS_TESTS_SUPPORT_PSEUDOTERMINAL_H

#include "sim/line/Pty.h"

#include <termios.h>

#include <cstddef>
#include <string>

// A receiver's serial line that the test plays by hand: the tool opens SlavePath() (with
// PathComPort), the test sends and receives on the master side.
//
// The slave starts cooked and echoing, as a real port is before the tool's Open makes it raw: send
// nothing before the port is open. The line keeps a handle on the slave, so the master never sees
// a hang-up when the tool closes its port.
class PseudoTerminal {
public:
    // Throws std::runtime_error when no pseudo-terminal can be had.
    PseudoTerminal();

    const std::string& SlavePath() const { return m_line.SlavePath(); }

    // The line's rate as set by the tool (115200 for B115200), 0 for a speed without a number.
    int SlaveBaud() const { return m_line.LineBaud(); }

    // The slave's line settings, as the tool's port has them; and setting them, as another program
    // that used the port before the tool would have. A pseudo-terminal does not hold every
    // setting a UART does: it keeps 8 data bits, no parity and the receiver on whatever it is told.
    termios SlaveSettings() const;
    bool SetSlaveSettings(const termios& settings);

    // Closes the master: the tool's side sees the line hang up.
    void HangUp() { m_line.HangUp(); }

    // Sends bytes to the tool, as the receiver would. True when all of them were written.
    bool Send(const std::string& bytes);

    // What the tool wrote: reads until count bytes arrived or timeoutMs passed. Bytes beyond
    // count stay queued for the next call.
    std::string Receive(std::size_t count, int timeoutMs);

    // What the tool wrote: everything that arrives until the line has been quiet for quietMs.
    std::string ReceiveUntilQuiet(int quietMs);

    // Waits until bytes sent from the master are readable on the tool's side (the kernel hands
    // them over asynchronously). False when none arrived within timeoutMs. Needs a raw line, that
    // is an open port.
    bool WaitForSlaveInput(int timeoutMs);

private:
    GnssSim::Pty m_line;
};

#endif
