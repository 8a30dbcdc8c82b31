#include "tests/serial/PortOnPseudoTerminal.h"

#include <utility>
#include <vector>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

// The whole life of a port: the rate stored while closed, a raw line at that rate once open, every
// standard rate applied at once and no other, and a closed port again that answers without a device.
TEST(LinuxComPortLife, StoresOpensRawAppliesRatesAndClosesOnce)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    EXPECT_EQ(0, port.SetBaudRate(115200));
    EXPECT_EQ(115200, port.GetBaudRate());
    ASSERT_EQ(0, port.Open());
    EXPECT_EQ(115200, pty.SlaveBaud());

    // Cooked input would turn CR into LF and echo it back; cooked output would add a CR.
    ASSERT_TRUE(pty.Send("a\rb\n"));
    EXPECT_EQ("0 4 a\rb\n", ReadLine(port));
    int written = 0;
    ASSERT_EQ(0, port.WriteString("x\n", &written));
    EXPECT_EQ("x\n", pty.ReceiveUntilQuiet(kQuietMs));

    for (int baud : {50, 75, 110, 134, 150, 200, 300, 600, 1200, 1800, 2400, 4800, 9600, 19200,
                     38400, 57600, 115200, 230400}) {
        EXPECT_EQ(0, port.SetBaudRate(baud)) << baud;
        EXPECT_EQ(baud, pty.SlaveBaud()) << baud;
    }
    const std::vector<std::pair<int, std::string>> unmappable = {
        {0, ""}, {12345, "Couldn't map baud 12345\n"}, {460800, "Couldn't map baud 460800\n"},
        {-9600, "Couldn't map baud -9600\n"}};
    for (const auto& [baud, message] : unmappable) {
        CaptureStderr();
        EXPECT_EQ(COMERR_BAUD, port.SetBaudRate(baud)) << baud;
        EXPECT_EQ(message, GetCapturedStderr()) << baud;
        EXPECT_EQ(230400, port.GetBaudRate()) << baud;
        EXPECT_EQ(230400, pty.SlaveBaud()) << baud;
    }

    EXPECT_EQ(0, port.Close());
    EXPECT_EQ(COMERR_CLOSE_NOT_OPEN, port.Close());
    EXPECT_EQ(0, port.Drain());  // deliberately not COMERR_NOT_OPEN: callers drain unconditionally
    EXPECT_EQ(COMERR_NOT_OPEN, port.FlushInput());
    EXPECT_EQ(COMERR_NOT_OPEN, port.WriteString("x", &written));
    EXPECT_EQ("102 0 ", ReadLine(port));
}

}  // namespace
