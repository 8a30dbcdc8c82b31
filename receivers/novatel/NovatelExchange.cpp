#include "receivers/novatel/NovatelExchange.h"

#include "serial/CComPort.h"
#include "serial/ComPortError.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"
#include "util/Strings.h"

#include <algorithm>
#include <vector>

namespace NovatelCommon {

namespace {

// A single read never waits longer than this, so a long exchange still notices the end of its
// time within half a second.
constexpr int kMaxReadSliceMs = 500;

// A read of a zero-length slice returns at once; a positive time-out is never read in slices
// shorter than this, or a 1 ms exchange would spin instead of sleeping.
constexpr int kMinReadSliceMs = 1;

const char* const kLineEnd = "\r\n";
const char* const kOkReply = "<OK";
const char* const kPortPrefixes[] = {"[COM1]", "[COM2]", "[COM3]"};
constexpr size_t kPortPrefixLength = 6;

bool EndsWithLineEnd(const std::string& command)
{
    const size_t length = command.size();
    return length >= 2 && command[length - 2] == '\r' && command[length - 1] == '\n';
}

// A closed or hung-up line answers a read at once with an error; without this pause the read loop
// would spin until its time-out.
bool LineIsDead(int code)
{
    return code == COMERR_NOT_OPEN || code == COMERR_READ;
}

void SleepRestOfSlice(const Stopwatch& slice, int perReadMs)
{
    SleepMs(perReadMs - static_cast<int>(slice.ElapsedMs()));
}

}  // namespace

size_t PortPrefixLength(const std::string& line)
{
    for (const char* prefix : kPortPrefixes) {
        if (StartsWith(line, prefix)) {
            return kPortPrefixLength;
        }
    }
    return 0;
}

std::string MatchingReply(const std::string& line, const std::string& expected)
{
    std::string reply = line.substr(PortPrefixLength(line));
    return StartsWith(reply, expected) ? reply : std::string();
}

std::string ReadMatchingLine(CComPort& port, int timeoutMs, int perReadMs, int bufferSize,
                             const LineMatcher& match)
{
    std::vector<char> buffer(static_cast<size_t>(bufferSize));
    const Stopwatch clock;
    for (;;) {
        const Stopwatch slice;
        int count = 0;
        const int code = port.ReadUntil(buffer.data(), '\n', bufferSize, &count, perReadMs);
        if (code == 0 && count >= 2) {
            std::string matched = match(std::string(buffer.data(), static_cast<size_t>(count)));
            if (!matched.empty()) {
                return matched;
            }
        } else if (LineIsDead(code)) {
            SleepRestOfSlice(slice, perReadMs);
        }
        // A read that ran its full time ends the exchange when that was its last slice: the port
        // never ends a read before its time-out.
        if (clock.ElapsedMs() >= timeoutMs) {
            return "";
        }
    }
}

std::string ExchangeCommand(CComPort& port, const std::string& command, const std::string& expected,
                            int timeoutMs)
{
    const int perReadMs = std::max(std::min(timeoutMs / 2, kMaxReadSliceMs),
                                   timeoutMs > 0 ? kMinReadSliceMs : 0);
    // Whatever the receiver still had to say about the previous command must not answer this one.
    port.Drain();
    port.FlushInput();

    int written = 0;
    const int writeResult = port.WriteString(command.c_str(), &written);
    if (!EndsWithLineEnd(command)) {
        port.WriteString(kLineEnd, &written);
    }
    if (writeResult != 0) {
        return "";
    }
    return ReadMatchingLine(port, timeoutMs, perReadMs, kReplyBufferSize,
                            [&expected](const std::string& line) {
                                return MatchingReply(line, expected);
                            });
}

bool WaitForOk(CComPort& port, int timeoutMs)
{
    const std::string ok = ReadMatchingLine(
        port, timeoutMs, timeoutMs, kOkBufferSize,
        [](const std::string& line) { return StartsWith(line, kOkReply) ? line : std::string(); });
    return !ok.empty();
}

}  // namespace NovatelCommon
