#ifndef GNSS_SIM_LINE_PTY_H
#define GNSS_SIM_LINE_PTY_H

#include <string>

namespace GnssSim {

// The simulated serial line: a pseudo-terminal whose slave side the tool opens like a serial
// device, while the receiver sits on the master side. All termios and pty calls live here.
//
// The pty keeps a handle of its own on the slave side: without it the master reports a hang-up
// each time the tool closes the port, and the slave's line settings would be lost between the
// tool's runs. The line starts raw at 9600 baud, like a freshly configured serial port, so that
// nothing is echoed back to the receiver before the tool has set the line up.
class Pty {
public:
    Pty() = default;
    ~Pty();
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;

    bool Open(std::string& error);

    // A symbolic link to the slave device at linkPath. An existing symbolic link there (left by an
    // earlier run) is replaced; anything else at that path is an error.
    bool MakeLink(const std::string& linkPath, std::string& error);

    // Removes the link, but only while it still points at this pty's slave.
    void RemoveLink();

    // Closes the master, which the tool sees as a hang-up: its reads fail from then on.
    void HangUp();

    void Close();

    bool IsOpen() const { return m_master >= 0; }
    int MasterFd() const { return m_master; }
    const std::string& SlavePath() const { return m_slavePath; }
    const std::string& LinkPath() const { return m_linkPath; }

    // The speed the tool set on the slave, in baud, as the master reports the slave's termios.
    // 0 when the line is closed or the speed has no number (B0, a speed this table lacks).
    int LineBaud() const;

    // Whether the tool has written bytes that the master has not read yet. The kernel moves what
    // the slave wrote to the master on a work queue; poll waits for that work, so a false answer
    // means every byte written before the call has been read.
    bool HasUnreadInput() const;

    // Whether bytes the receiver sent still wait in the slave's input for the tool to read them.
    // Asked on the simulator's own slave handle, which shares the tool's input buffer.
    bool ToolHasUnreadInput() const;

private:
    bool OpenSlaveHandle(std::string& error);

    int m_master = -1;
    int m_slave = -1;
    std::string m_slavePath;
    std::string m_linkPath;
};

// The baud number of a termios speed constant, 0 when it has none.
int BaudOfSpeed(unsigned long speed);

}

#endif
