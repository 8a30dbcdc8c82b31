#ifndef GNSS_RECEIVERS_OTHER_PACEDLINEREAD_H
#define GNSS_RECEIVERS_OTHER_PACEDLINEREAD_H

#include <functional>
#include <string>

class CComPort;
class Stopwatch;

// The port's ReadUntil with LF as terminator, for loops that keep reading until a budget is
// spent. A port that fails at once (a hung-up or closed line) would turn such a loop into a spin,
// so after a failure the rest of the read's time-out is slept away: the loop keeps the pace, and
// the time-out, that a quiet line gives it. Returns ReadUntil's code and count unchanged.
int PacedLineRead(CComPort& port, char* buf, int size, int* count, int timeoutMs);

// What a caller makes of one read, from ReadUntil's code and the bytes received: true when they
// hold the answer it waits for.
using AnswerTest = std::function<bool(int code, const char* bytes, int count)>;

// Paced line reads, each waiting at most 200 ms, until isAnswer accepts one (true). After a read
// that it did not accept: false once more than budgetMs have passed on start.
bool ReadForAnswer(CComPort& port, const Stopwatch& start, long budgetMs,
                   const AnswerTest& isAnswer);

// The read as a line: its bytes when it ended without error and brought more than one byte,
// otherwise "".
std::string LineOf(int code, const char* bytes, int count);

#endif
