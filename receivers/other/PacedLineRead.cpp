#include "receivers/other/PacedLineRead.h"

#include "serial/CComPort.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"

namespace {

// Each read waits at most this long for the rest of a line, so that a budget is checked several
// times a second.
constexpr int kReadTimeoutMs = 200;
// Longer than any answer these receivers give.
constexpr int kReadBufferSize = 200;

// Codes with which ReadUntil returns while bytes are still arriving, so the next read will wait
// again by itself. Any other non-zero code comes from a line that answers nothing but failures.
bool BytesAreFlowing(int code)
{
    return code == 0 || code == COMERR_BUFFER_FULL || code == COMERR_NUL_RECEIVED;
}

}  // namespace

int PacedLineRead(CComPort& port, char* buf, int size, int* count, int timeoutMs)
{
    const Stopwatch clock;
    const int code = port.ReadUntil(buf, '\n', size, count, timeoutMs);
    if (!BytesAreFlowing(code) && timeoutMs > 0) {
        const long left = timeoutMs - clock.ElapsedMs();
        if (left > 0) {
            SleepMs(static_cast<int>(left));
        }
    }
    return code;
}

bool ReadForAnswer(CComPort& port, const Stopwatch& start, long budgetMs,
                   const AnswerTest& isAnswer)
{
    char buffer[kReadBufferSize];
    for (;;) {
        int count = 0;
        const int code = PacedLineRead(port, buffer, kReadBufferSize, &count, kReadTimeoutMs);
        if (isAnswer(code, buffer, count)) {
            return true;
        }
        if (start.ElapsedMs() > budgetMs) {
            return false;
        }
    }
}

std::string LineOf(int code, const char* bytes, int count)
{
    return (code == 0 && count > 1) ? std::string(bytes, static_cast<std::size_t>(count)) : "";
}
