#ifndef GNSS_TESTS_SERIAL_PORTONPSEUDOTERMINAL_H
#define GNSS_TESTS_SERIAL_PORTONPSEUDOTERMINAL_H

#include "tests/support/PathComPort.h"
#include "tests/support/PseudoTerminal.h"

#include <gtest/gtest.h>

#include <string>

// Bytes already sent arrive within microseconds; this bound only matters when the code is wrong.
constexpr int kArrivalMs = 1000;

// Once the line has been quiet this long nothing more is coming (echo would follow at once).
constexpr int kQuietMs = 50;

// Room for every line the tests read.
constexpr int kBufferSize = 100;

// One ReadUntil call with terminator LF as "code count text", so that a whole result is compared
// at once.
inline std::string ReadLine(CComPort& port, int size = kBufferSize, int timeoutMs = kArrivalMs)
{
    char buf[kBufferSize + 1] = "garbage";
    int count = -1;
    const int code = port.ReadUntil(buf, '\n', size, &count, timeoutMs);
    return std::to_string(code) + " " + std::to_string(count) + " " + buf;
}

// The real termios port, open on the slave of a pseudo-terminal that plays the receiver.
class PortOnPseudoTerminal : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(0, port.Open()); }
    void TearDown() override { port.Close(); }

    PseudoTerminal pty;
    PathComPort port{pty.SlavePath()};
};

#endif
