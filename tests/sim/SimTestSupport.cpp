#include "tests/sim/SimTestSupport.h"

#include "sim/text/Checksums.h"
#include "util/Stopwatch.h"

#include <algorithm>

std::string ReadFor(CComPort& port, int timeoutMs, const std::string& until)
{
    // ReadUntil with room for one byte reports each byte as a full buffer and a NUL as
    // COMERR_NUL_RECEIVED, and, unlike ReadByte, a hung-up line as a read failure.
    const Stopwatch clock;
    std::string bytes;
    while (until.empty() || bytes.find(until) == std::string::npos) {
        const long leftMs = timeoutMs - clock.ElapsedMs();
        char byte[2] = {};
        int count = 0;
        const int result = leftMs < 0 ? 0 : port.ReadUntil(byte, '\n', sizeof byte, &count, static_cast<int>(leftMs));
        if (result != COMERR_BUFFER_FULL && result != COMERR_NUL_RECEIVED) {
            break;
        }
        bytes += byte[0];
    }
    return bytes;
}

void Send(CComPort& port, const std::string& bytes)
{
    int written = 0;
    EXPECT_TRUE(port.WriteBuffer(bytes.data(), static_cast<int>(bytes.size()), &written) == 0 &&
                written == static_cast<int>(bytes.size()));
}

std::string ReplyTo(CComPort& port, const std::string& command)
{
    Send(port, command + "\r\n");
    const std::string received = ReadFor(port, kReplyMs, "[COM1]");
    const std::size_t start = received.find('<');
    return start == std::string::npos ? std::string() : received.substr(start, received.find('\r', start) - start);
}

bool HasRightCheck(const std::string& line)
{
    const bool isLog = line.find('#') != std::string::npos;
    const std::size_t from = line.find(isLog ? '#' : '$');
    const std::size_t star = line.rfind('*');
    if (from == std::string::npos || star == std::string::npos || star < from) {
        return false;
    }
    const std::string between = line.substr(from + 1, star - from - 1);
    const std::string expected = isLog ? GnssSim::NovatelCrcText(GnssSim::NovatelCrc32(between))
                                       : GnssSim::NmeaChecksumText(GnssSim::NmeaChecksum(between));
    return line.compare(star + 1, expected.size(), expected) == 0;
}

bool IsNoise(const std::string& bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == '\0' || (byte & 0x80) != 0; });
}
