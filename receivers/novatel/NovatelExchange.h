#ifndef GNSS_RECEIVERS_NOVATEL_NOVATELEXCHANGE_H
#define GNSS_RECEIVERS_NOVATEL_NOVATELEXCHANGE_H

#include <functional>
#include <string>

class CComPort;

// The line-level conversation with a NovAtel receiver: commands out, reply lines in, each line
// read with a time-out. Nothing here prints or throws.
namespace NovatelCommon {

// Reply lines are read into a buffer of this size, so at most 999 characters make one line.
constexpr int kReplyBufferSize = 1000;
// WaitForOk only looks for a short "<OK" and reads into a smaller buffer.
constexpr int kOkBufferSize = 100;

// Sends command (adding "\r\n" as a separate write when it does not already end with it) and
// returns the first reply line that begins with expected, with a "[COM1]", "[COM2]" or "[COM3]"
// prompt removed and the receiver's line end kept. "" when no such line came within timeoutMs
// (the wait may run over by one read of at most 500 ms) or the command could not be written.
// Lines that do not match, error replies included, are skipped.
std::string ExchangeCommand(CComPort& port, const std::string& command, const std::string& expected,
                            int timeoutMs);

// Reads lines until one begins with "<OK" (no prompt is stripped here) or timeoutMs has passed;
// each read may itself wait the whole timeoutMs.
bool WaitForOk(CComPort& port, int timeoutMs);

// 6 when line begins with one of the receiver's port prompts "[COM1]", "[COM2]", "[COM3]", else 0.
size_t PortPrefixLength(const std::string& line);

// What ExchangeCommand makes of one reply line: the line without its port prompt when what is
// left begins with expected (line end kept), else "".
std::string MatchingReply(const std::string& line, const std::string& expected);

// What ReadMatchingLine makes of one complete reply line: the text to return, or "" to go on.
using LineMatcher = std::function<std::string(const std::string& line)>;

// Reads reply lines of at most bufferSize - 1 characters, perReadMs each, until match returns a
// non-empty text (which is returned) or timeoutMs has passed ("" then). Lines shorter than two
// characters, over-long ones and failed reads count as no line.
std::string ReadMatchingLine(CComPort& port, int timeoutMs, int perReadMs, int bufferSize,
                             const LineMatcher& match);

}  // namespace NovatelCommon

#endif
