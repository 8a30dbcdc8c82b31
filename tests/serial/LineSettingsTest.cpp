// What the port does about a console's serial line that a pseudo-terminal left to itself never
// shows: settings that another program left on the port, and a tool started as a session leader.
#include "serial/LinuxSerialKernel.h"
#include "tests/serial/PortOnPseudoTerminal.h"
#include "util/Sleep.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace {

// Every setting of the line that is not raw 8N1 without flow control, with CLOCAL and CREAD: what
// the receivers are commanded to and what a console's UART must therefore match.
std::vector<std::string> WhatIsNotRaw8N1(const termios& line)
{
    struct Rule {
        const char* name;
        bool holds;
    };
    const Rule rules[] = {
        {"8 data bits", (line.c_cflag & CSIZE) == CS8},
        {"no parity", (line.c_cflag & PARENB) == 0},
        {"one stop bit", (line.c_cflag & CSTOPB) == 0},
        {"no hardware flow control", (line.c_cflag & CRTSCTS) == 0},
        {"modem lines ignored (CLOCAL)", (line.c_cflag & CLOCAL) != 0},
        {"receiver on (CREAD)", (line.c_cflag & CREAD) != 0},
        {"no software flow control", (line.c_iflag & (IXON | IXOFF | IXANY)) == 0},
        {"input taken as it comes",
         (line.c_iflag & (IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR | ICRNL)) == 0},
        {"output sent as written", (line.c_oflag & OPOST) == 0},
        {"no line editing, echo or signals",
         (line.c_lflag & (ECHO | ECHONL | ICANON | ISIG | IEXTEN)) == 0},
    };
    std::vector<std::string> wrong;
    for (const Rule& rule : rules) {
        if (!rule.holds) {
            wrong.emplace_back(rule.name);
        }
    }
    return wrong;
}

void SevenDataBitsWithParity(termios& line)
{
    line.c_cflag = (line.c_cflag & ~static_cast<tcflag_t>(CSIZE)) | CS7 | PARENB;
}

// What other programs leave on a port, one at a time and all at once; every other flag is clear,
// so CLOCAL and CREAD start clear too.
TEST(LineSettings, EveryFlagLeftOnThePortIsSetForTheReceiver)
{
    const std::vector<std::pair<const char*, std::function<void(termios&)>>> leftOnThePort = {
        {"hardware flow control", [](termios& l) { l.c_cflag |= CRTSCTS; }},
        {"two stop bits", [](termios& l) { l.c_cflag |= CSTOPB; }},
        {"7 data bits, even parity", SevenDataBitsWithParity},
        {"XOFF sent when input fills up", [](termios& l) { l.c_iflag |= IXOFF; }},
        {"any byte restarts output", [](termios& l) { l.c_iflag |= IXANY; }},
        {"XOFF from the receiver stops output", [](termios& l) { l.c_iflag |= IXON; }},
        {"modem lines watched, receiver off", [](termios&) {}},
        {"all of them, on a cooked line",
         [](termios& l) {
             SevenDataBitsWithParity(l);
             l.c_cflag |= CRTSCTS | CSTOPB | HUPCL;
             l.c_iflag |= IXON | IXOFF | IXANY | ICRNL;
             l.c_oflag |= OPOST | ONLCR;
             l.c_lflag |= ICANON | ECHO | ISIG | IEXTEN;
         }},
    };
    for (const auto& [name, leave] : leftOnThePort) {
        termios line{};
        leave(line);
        SetRawEightNoneOne(&line);
        EXPECT_EQ(std::vector<std::string>(), WhatIsNotRaw8N1(line)) << name;
    }
}

// The flags a pseudo-terminal holds (it forces 8 data bits, no parity and the receiver on), left
// on the line before the port opens, and read back while the port talks.
TEST(LineSettings, FlowControlAndTwoStopBitsBecome8N1)
{
    PseudoTerminal pty;
    termios dirty = pty.SlaveSettings();
    SevenDataBitsWithParity(dirty);
    dirty.c_cflag |= CRTSCTS | CSTOPB;
    dirty.c_cflag &= ~static_cast<tcflag_t>(CLOCAL);
    dirty.c_iflag |= IXOFF | IXANY;
    ASSERT_TRUE(pty.SetSlaveSettings(dirty));
    const termios left = pty.SlaveSettings();
    ASSERT_EQ(static_cast<tcflag_t>(CRTSCTS | CSTOPB), left.c_cflag & (CRTSCTS | CSTOPB | CLOCAL));
    ASSERT_EQ(static_cast<tcflag_t>(IXOFF | IXANY), left.c_iflag & (IXOFF | IXANY));

    PathComPort port(pty.SlavePath());
    ASSERT_EQ(0, port.Open());
    int written = 0;
    ASSERT_EQ(0, port.WriteString("log versiona once\r\n", &written));
    EXPECT_EQ("log versiona once\r\n", pty.ReceiveUntilQuiet(kQuietMs));
    ASSERT_TRUE(pty.Send("<OK\r\n"));
    EXPECT_EQ("0 5 <OK\r\n", ReadLine(port));
    EXPECT_EQ(std::vector<std::string>(), WhatIsNotRaw8N1(pty.SlaveSettings()));
    port.Close();
}

void CloseAllDescriptorsBut(int kept)
{
    const long open = std::min(sysconf(_SC_OPEN_MAX), 4096L);
    for (int fd = STDERR_FILENO + 1; fd < open; ++fd) {
        if (fd != kept) {
            close(fd);
        }
    }
}

// A service manager starts the tool as a session leader without a controlling terminal. The port
// must not become one: the line's hang-up would then end the tool with SIGHUP.
TEST(SessionLeader, TakesNoTerminalAndOutlivesTheHangUp)
{
    // Enough for a hang-up's signal to arrive after the read it ended.
    constexpr int kAfterHangUpMs = 200;
    PseudoTerminal pty;
    int opened[2];
    ASSERT_EQ(0, pipe(opened));
    const pid_t child = fork();
    ASSERT_NE(-1, child);
    if (child == 0) {
        // The master's copy in this process would keep the line from hanging up.
        CloseAllDescriptorsBut(opened[1]);
        setsid();
        PathComPort port(pty.SlavePath());
        const int openResult = port.Open();
        // A process without a controlling terminal cannot open /dev/tty.
        const int controlling = open("/dev/tty", O_RDWR);
        (void)!write(opened[1], "o", 1);
        char line[16];
        int count = 0;
        port.ReadUntil(line, '\n', sizeof line, &count, kArrivalMs);
        SleepMs(kAfterHangUpMs);
        _exit(openResult != 0 ? 2 : controlling != -1 ? 3 : 0);
    }
    char byte = 0;
    ASSERT_EQ(1, read(opened[0], &byte, 1));
    pty.HangUp();
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    ASSERT_FALSE(WIFSIGNALED(status)) << "ended by signal " << WTERMSIG(status);
    EXPECT_EQ(0, WEXITSTATUS(status)) << "2: the port did not open; 3: it became the controlling terminal";
    close(opened[0]);
    close(opened[1]);
}

}  // namespace
