#include "tests/serial/PortOnPseudoTerminal.h"

#include "tests/support/TestTiming.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace {

// Long enough to measure, short enough to keep the suite quick.
constexpr int kTimeoutMs = 200;

// Not a millisecond early: the exchanges above the port count on a read that ran to its time-out
// having used all of it, or they would read once more.
void ExpectTimedOutAfter(const Stopwatch& clock, int timeoutMs)
{
    EXPECT_GE(clock.ElapsedMs(), timeoutMs);
    EXPECT_LT(clock.ElapsedMs(), timeoutMs + kSchedulingSlackMs);
}

using ReadUntilOnPty = PortOnPseudoTerminal;

// Each read takes only its own bytes from the line: the next reply stays queued for the next call.
TEST_F(ReadUntilOnPty, EndsAtTheTerminatorAFullBufferOrANul)
{
    ASSERT_TRUE(pty.Send(std::string("abc\r\n<OK\r\nabcdef\nab\nx\0cd\n", 25)));
    const std::pair<int, const char*> reads[] = {
        {kBufferSize, "0 5 abc\r\n"},
        {kBufferSize, "0 5 <OK\r\n"},
        {4, "108 3 abc"},
        {kBufferSize, "0 4 def\n"},
        {4, "108 3 ab\n"},  // a full buffer wins over a terminator in the last place
        {kBufferSize, "114 1 x"},  // the NUL is not counted
        {kBufferSize, "0 3 cd\n"},
    };
    for (const auto& [size, expected] : reads) {
        EXPECT_EQ(ReadLine(port, size), expected) << "size " << size;
    }
}

TEST_F(ReadUntilOnPty, TimeOutIsSuccessTricklingDoesNotExtend)
{
    Stopwatch clock;
    EXPECT_EQ(ReadLine(port, kBufferSize, kTimeoutMs), "0 0 ");
    ExpectTimedOutAfter(clock, kTimeoutMs);

    // A byte every 20 ms for far longer than the time-out, never a terminator.
    constexpr int kByteIntervalMs = 20;
    std::atomic<bool> stop{false};
    std::thread sender([&] {
        while (!stop && pty.Send("x")) {
            SleepMs(kByteIntervalMs);
        }
    });
    clock.Restart();
    const std::string trickle = ReadLine(port, kBufferSize, kTimeoutMs);
    ExpectTimedOutAfter(clock, kTimeoutMs);
    stop = true;
    sender.join();
    EXPECT_THAT(trickle, testing::MatchesRegex("0 [0-9]+ xx+"));
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
    const std::string late = ReadLine(port, kBufferSize, -1);
    sender.join();
    EXPECT_GE(clock.ElapsedMs(), kLateReplyMs);
    EXPECT_EQ(late, "0 5 late\n");
}

}  // namespace
