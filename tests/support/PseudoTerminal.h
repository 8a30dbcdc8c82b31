#ifndef GNSS_TESTS_SUPPORT_PSEUDOTERMINAL_H
#define GNSS_TESTS_SUPPORT_PSEUDOTERMINAL_H

#include <cstddef>
#include <string>

// A pseudo-terminal standing in for a receiver's serial line. The tool opens SlavePath() (with
// PathComPort); the test, or a simulated receiver, plays the receiver on the master side.
//
// The slave starts in the kernel's default (cooked, echoing) mode, as a real port does before the
// tool's Open makes it raw: send nothing before the port is open. A handle on the slave is kept
// open for the object's lifetime, so the master never sees a hang-up when the tool closes its
// port.
class PseudoTerminal {
public:
    // Throws std::runtime_error when no pseudo-terminal can be had.
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& SlavePath() const;
    // -1 after HangUp.
    int MasterFd() const;

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

    // The line's current rate as set by the tool (115200 for B115200), or -1 for any speed
    // outside 50 to 230400 or when it cannot be read.
    int SlaveBaud() const;

    // Closes the master: the tool's side sees the line hang up.
    void HangUp();

private:
    int m_master = -1;
    int m_slaveKeeper = -1;
    std::string m_slavePath;
};

#endif
