#include "receivers/other/PacedLineRead.h"

#include "serial/CComPort.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"

namespace {

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
