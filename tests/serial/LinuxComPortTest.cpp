#include "tests/serial/PortOnPseudoTerminal.h"

#include <string>
#include <utility>
#include <vector>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

std::string ReadOneLine(CComPort& port)
{
    char buf[100];
    int count = 0;
    port.ReadUntil(buf, '\n', sizeof buf, &count, kQuietMs);
    return buf;
}

TEST(LinuxComPortOpen, MakesTheLineRawAtTheStoredRate)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    ASSERT_NE(9600, pty.SlaveBaud());  // the kernel's default is another rate
    ASSERT_EQ(0, port.Open());
    EXPECT_EQ(9600, pty.SlaveBaud());

    // Cooked input would turn CR into LF and end the line there; echo would come back.
    ASSERT_TRUE(pty.Send("a\rb\n"));
    EXPECT_EQ("a\rb\n", ReadOneLine(port));
    EXPECT_EQ("", pty.ReceiveUntilQuiet(kQuietMs));
    // Cooked output would add a CR before the LF.
    int written = 0;
    ASSERT_EQ(0, port.WriteString("x\n", &written));
    EXPECT_EQ("x\n", pty.Receive(2, kArrivalMs));
    port.Close();
}

TEST(LinuxComPortBaud, AClosedPortStoresTheRateForTheNextOpen)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    EXPECT_EQ(0, port.SetBaudRate(115200));
    EXPECT_EQ(115200, port.GetBaudRate());
    ASSERT_EQ(0, port.Open());
    EXPECT_EQ(115200, pty.SlaveBaud());
    port.Close();
}

TEST(LinuxComPortBaud, UnmappableRatesAreRefusedAndNotStored)
{
    PathComPort port("/nonexistent/port");
    const std::vector<std::pair<int, std::string>> cases = {
        {0, ""},
        {12345, "Couldn't map baud 12345\n"},
        {460800, "Couldn't map baud 460800\n"},
        {-9600, "Couldn't map baud -9600\n"},
    };
    for (const auto& [baud, message] : cases) {
        CaptureStderr();
        EXPECT_EQ(COMERR_BAUD, port.SetBaudRate(baud)) << baud;
        EXPECT_EQ(message, GetCapturedStderr()) << baud;
        EXPECT_EQ(9600, port.GetBaudRate()) << baud;
    }
}

using LinuxComPortOnPty = PortOnPseudoTerminal;

TEST_F(LinuxComPortOnPty, EveryStandardRateReachesTheLine)
{
    for (int baud : {50, 75, 110, 134, 150, 200, 300, 600, 1200, 1800, 2400, 4800, 9600, 19200,
                     38400, 57600, 115200, 230400}) {
        EXPECT_EQ(0, port.SetBaudRate(baud)) << baud;
        EXPECT_EQ(baud, pty.SlaveBaud()) << baud;
        EXPECT_EQ(baud, port.GetBaudRate()) << baud;
    }
    CaptureStderr();
    EXPECT_EQ(COMERR_BAUD, port.SetBaudRate(12345));
    GetCapturedStderr();
    EXPECT_EQ(230400, pty.SlaveBaud());
}

TEST_F(LinuxComPortOnPty, WritesSendExactlyTheBytesGiven)
{
    int written = 0;
    EXPECT_EQ(0, port.WriteString("log versiona once\r\n", &written));
    EXPECT_EQ(19, written);
    const char packet[] = {'\x10', '\0', '\x03', '\0'};
    EXPECT_EQ(0, port.WriteBuffer(packet, sizeof packet, &written));
    EXPECT_EQ(4, written);
    EXPECT_EQ(0, port.WriteChar('Z'));
    EXPECT_EQ(0, port.Drain());
    EXPECT_EQ(std::string("log versiona once\r\n\x10\0\x03\0Z", 24), pty.Receive(24, kArrivalMs));
}

TEST_F(LinuxComPortOnPty, FlushInputDropsOnlyWhatArrivedBefore)
{
    ASSERT_TRUE(pty.Send("stale\n"));
    ASSERT_TRUE(pty.WaitForSlaveInput(kArrivalMs));
    EXPECT_EQ(0, port.FlushInput());
    EXPECT_EQ("", ReadOneLine(port));
    ASSERT_TRUE(pty.Send("fresh\n"));
    EXPECT_EQ("fresh\n", ReadOneLine(port));
}

TEST_F(LinuxComPortOnPty, FillRingBufferTakesEverythingPending)
{
    ASSERT_TRUE(pty.Send("abc"));
    ASSERT_TRUE(pty.WaitForSlaveInput(kArrivalMs));
    EXPECT_EQ(COMERR_TIMEOUT, port.FillRingBuffer());
    EXPECT_EQ("", ReadOneLine(port));
}

TEST_F(LinuxComPortOnPty, ALineWithoutCountersShowsNoFramingErrors)
{
    port.MarkFrameErrorCount();  // fails here, as under qemu-user: counters read as zero
    EXPECT_EQ(0, port.GetFrameErrorCount());
}

TEST(LinuxComPortClosed, AnswersWithoutTouchingADevice)
{
    PseudoTerminal pty;
    PathComPort port(pty.SlavePath());
    ASSERT_EQ(0, port.Open());
    EXPECT_EQ(1, port.IsOpenFlag());
    EXPECT_EQ(0, port.Close());
    EXPECT_EQ(COMERR_CLOSE_NOT_OPEN, port.Close());
    EXPECT_EQ(0, port.IsOpenFlag());
    EXPECT_EQ(0, port.Drain());  // deliberately not 102: callers drain unconditionally
    EXPECT_EQ(COMERR_NOT_OPEN, port.FlushInput());
    int n = 0;
    EXPECT_EQ(COMERR_NOT_OPEN, port.WriteString("x", &n));
    EXPECT_EQ(COMERR_NOT_OPEN, port.WriteChar('x'));
    unsigned char byte = 0;
    EXPECT_EQ(COMERR_NOT_OPEN, port.ReadByte(&byte, 0));
    char buf[8] = "garbage";
    EXPECT_EQ(COMERR_NOT_OPEN, port.ReadUntil(buf, '\n', sizeof buf, &n, 0));
    EXPECT_EQ(0, n);
    EXPECT_EQ("", std::string(buf));
}

TEST(LinuxComPortSlots, UnsupportedOperationsGiveTheirFixedCodes)
{
    PathComPort linuxPort("/nonexistent/port");
    CComPort& port = linuxPort;
    int value = 0;
    char ch = 0;
    EXPECT_EQ(110, port.UnsupportedOperation7());
    EXPECT_EQ(110, port.UnsupportedOperation8());
    EXPECT_EQ(103, port.UnsupportedFlush9());
    EXPECT_EQ(110, port.UnsupportedOperation11());
    EXPECT_EQ(110, port.UnsupportedOperation12());
    EXPECT_EQ(106, port.UnsupportedRead14());
    EXPECT_EQ(109, port.UnsupportedWrite17());
    EXPECT_EQ(109, port.UnsupportedWrite18());
    EXPECT_EQ(106, port.ReadChar(&ch));
    EXPECT_EQ(106, port.ReadBuffer(&ch, 1, &value));
    EXPECT_EQ(110, port.LineQueryA(&value, 0));
    EXPECT_EQ(112, port.UnsupportedOperation26());
    EXPECT_EQ(110, port.LineQueryB(&value));
    EXPECT_EQ(110, port.LineQueryC(&value, 0));
    EXPECT_EQ(112, port.UnsupportedOperation29());
    EXPECT_EQ(112, port.UnsupportedOperation32());
    EXPECT_EQ(112, port.UnsupportedOperation33());
    EXPECT_EQ(112, port.UnsupportedOperation34());
    EXPECT_EQ(0, port.GetLineStatus());
}

}  // namespace
