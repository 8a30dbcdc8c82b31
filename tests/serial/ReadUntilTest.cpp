#include "tests/serial/PortOnPseudoTerminal.h"

#include "util/Sleep.h"
#include "util/Stopwatch.h"

#include <atomic>
#include <string>
#include <thread>

namespace {

// Long enough to measure, short enough to keep the suite quick.
constexpr int kTimeoutMs = 200;
// How late a loaded two-core machine, or qemu-arm, may hand control back after a wait.
constexpr int kSchedulingSlackMs = 150;
// ReadUntil counts its allowance in whole milliseconds, so it may end up to 1 ms early.
constexpr double kTruncationSeconds = 0.001;

struct ReadResult {
    int code;
    int count;
    std::string text;
};

constexpr int kBufferSize = 100;

ReadResult ReadLine(CComPort& port, int size = kBufferSize, int timeoutMs = kArrivalMs)
{
    char buf[kBufferSize + 1];
    int count = -1;
    const int code = port.ReadUntil(buf, '\n', size, &count, timeoutMs);
    return {code, count, std::string(buf)};
}

void ExpectTimedOutAfter(const Stopwatch& clock, int timeoutMs)
{
    EXPECT_GT(clock.ElapsedSeconds(), timeoutMs / 1000.0 - kTruncationSeconds);
    EXPECT_LT(clock.ElapsedMs(), timeoutMs + kSchedulingSlackMs);
}

using ReadUntilOnPty = PortOnPseudoTerminal;

TEST_F(ReadUntilOnPty, KeepsTheTerminatorAndLeavesTheNextReplyQueued)
{
    ASSERT_TRUE(pty.Send("abc\r\n<OK\r\n"));
    const ReadResult first = ReadLine(port);
    EXPECT_EQ(0, first.code);
    EXPECT_EQ(5, first.count);
    EXPECT_EQ("abc\r\n", first.text);
    const ReadResult second = ReadLine(port);
    EXPECT_EQ(0, second.code);
    EXPECT_EQ("<OK\r\n", second.text);
}

TEST_F(ReadUntilOnPty, BufferFullWinsEvenOverATerminatorInTheLastPlace)
{
    ASSERT_TRUE(pty.Send("abcdef\nab\nrest\n"));
    const ReadResult full = ReadLine(port, 4);
    EXPECT_EQ(COMERR_BUFFER_FULL, full.code);
    EXPECT_EQ(3, full.count);
    EXPECT_EQ("abc", full.text);
    EXPECT_EQ("def\n", ReadLine(port).text);

    const ReadResult terminatorLast = ReadLine(port, 4);
    EXPECT_EQ(COMERR_BUFFER_FULL, terminatorLast.code);
    EXPECT_EQ("ab\n", terminatorLast.text);
    EXPECT_EQ("rest\n", ReadLine(port).text);
}

TEST_F(ReadUntilOnPty, ANulEndsTheReadUncounted)
{
    ASSERT_TRUE(pty.Send(std::string("ab\0cd\n", 6)));
    const ReadResult nul = ReadLine(port);
    EXPECT_EQ(COMERR_NUL_RECEIVED, nul.code);
    EXPECT_EQ(2, nul.count);
    EXPECT_EQ("ab", nul.text);
    EXPECT_EQ("cd\n", ReadLine(port).text);
}

TEST_F(ReadUntilOnPty, ReadStopsOnlyWhenFullOrOutOfTime)
{
    ASSERT_TRUE(pty.Send("one\ntwo\n"));
    char buf[kBufferSize];
    int count = -1;
    EXPECT_EQ(0, port.Read(buf, sizeof buf, &count, kTimeoutMs));
    EXPECT_EQ("one\ntwo\n", std::string(buf));
    EXPECT_EQ(8, count);
}

TEST_F(ReadUntilOnPty, TimeOutIsSuccessWithWhateverArrived)
{
    ASSERT_TRUE(pty.Send("partial"));
    const Stopwatch clock;
    const ReadResult partial = ReadLine(port, kBufferSize, kTimeoutMs);
    ExpectTimedOutAfter(clock, kTimeoutMs);
    EXPECT_EQ(0, partial.code);
    EXPECT_EQ(7, partial.count);
    EXPECT_EQ("partial", partial.text);
}

TEST_F(ReadUntilOnPty, SilenceGivesAnEmptyLineInTime)
{
    const Stopwatch clock;
    const ReadResult nothing = ReadLine(port, kBufferSize, kTimeoutMs);
    ExpectTimedOutAfter(clock, kTimeoutMs);
    EXPECT_EQ(0, nothing.code);
    EXPECT_EQ(0, nothing.count);
    EXPECT_EQ("", nothing.text);
}

TEST_F(ReadUntilOnPty, TricklingBytesDoNotExtendTheDeadline)
{
    // A byte every 20 ms for far longer than the time-out, never a terminator.
    constexpr int kByteIntervalMs = 20;
    std::atomic<bool> stop{false};
    std::thread sender([&] {
        while (!stop && pty.Send("x")) {
            SleepMs(kByteIntervalMs);
        }
    });
    const Stopwatch clock;
    const ReadResult trickle = ReadLine(port, kBufferSize, kTimeoutMs);
    ExpectTimedOutAfter(clock, kTimeoutMs);
    stop = true;
    sender.join();
    EXPECT_EQ(0, trickle.code);
    EXPECT_GT(trickle.count, 1);
}

TEST_F(ReadUntilOnPty, MinusOneWaitsWithoutLimit)
{
    // Longer than any time-out a caller passes with -1 misread as a short wait.
    constexpr int kLateReplyMs = 300;
    const Stopwatch clock;
    std::thread sender([&] {
        SleepMs(kLateReplyMs);
        pty.Send("late\n");
    });
    const ReadResult late = ReadLine(port, kBufferSize, -1);
    sender.join();
    EXPECT_GE(clock.ElapsedMs(), kLateReplyMs);
    EXPECT_EQ(0, late.code);
    EXPECT_EQ("late\n", late.text);
}

TEST_F(ReadUntilOnPty, AHungUpLineIsAReadFailureAtOnce)
{
    pty.HangUp();
    const Stopwatch clock;
    const ReadResult hungUp = ReadLine(port, kBufferSize, kTimeoutMs);
    EXPECT_LT(clock.ElapsedMs(), kTimeoutMs);
    EXPECT_EQ(COMERR_READ, hungUp.code);
    EXPECT_EQ(0, hungUp.count);
}

TEST_F(ReadUntilOnPty, ReadByteWaitsPollsOrTimesOut)
{
    unsigned char byte = 0;
    EXPECT_EQ(COMERR_READ, port.ReadByte(&byte, -1));  // -1 reads once, and nothing is there
    const Stopwatch clock;
    EXPECT_EQ(COMERR_TIMEOUT, port.ReadByte(&byte, kTimeoutMs));
    ExpectTimedOutAfter(clock, kTimeoutMs);

    ASSERT_TRUE(pty.Send("AB"));
    EXPECT_EQ(0, port.ReadByte(&byte, kArrivalMs));
    EXPECT_EQ('A', byte);
    EXPECT_EQ(0, port.ReadByte(&byte, -1));
    EXPECT_EQ('B', byte);
}

}  // namespace
