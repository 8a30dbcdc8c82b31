#include "sim/receivers/NovatelRequests.h"

#include "sim/receivers/NovatelCommandTable.h"
#include "sim/text/ByteText.h"

namespace GnssSim {

namespace {

// Receivers log at up to 20 Hz.
const double kShortestPeriod = 0.05;

// One rule per field after the baud rate, for the port commands.
const char* const kComFieldRules[] = {"N|E|O", "7|8", "1|2", "N|XON|CTS", "ON|OFF", "ON|OFF"};
const char* const kSerialConfigFieldRules[] = {"N|E|O", "7|8", "1|2", "N|XON|CTS", "ON|OFF"};

bool IsOneOf(const std::string& rule, const std::string& word)
{
    for (const std::string& alternative : SplitKeepingEmpty(rule, '|')) {
        if (alternative == word) {
            return true;
        }
    }
    return false;
}

// The index of the first word after an optional port name.
std::size_t AfterPort(const std::vector<std::string>& words, std::string& port)
{
    if (words.size() > 1 && IsPortName(words[1])) {
        port = words[1];
        return 2;
    }
    return 1;
}

// LOG and UNLOG alike: the port, if one is named, and the log's name, which the generation must
// know; at is left at the name's index.
LogRequest ParseLogName(const std::vector<std::string>& words, Generation generation, std::size_t& at)
{
    LogRequest request;
    at = AfterPort(words, request.port);
    if (at >= words.size() || !KnowsLog(generation, words[at])) {
        request.badField = static_cast<int>(at) + 1;
    } else {
        request.name = words[at];
    }
    return request;
}

int CheckTrigger(LogRequest& request, const std::vector<std::string>& words, std::size_t at)
{
    if (at >= words.size()) {
        return 0;
    }
    request.trigger = words[at];
    if (request.trigger == "ONCE" || request.trigger == "ONNEW" || request.trigger == "ONCHANGED") {
        return 0;
    }
    if (request.trigger != "ONTIME") {
        return static_cast<int>(at) + 1;
    }
    const bool hasPeriod = at + 1 < words.size() && ParseDecimal(words[at + 1], request.period);
    return hasPeriod && request.period >= kShortestPeriod ? 0 : static_cast<int>(at) + 2;
}

}

LogRequest ParseLogRequest(const std::vector<std::string>& words, Generation generation)
{
    std::size_t at = 0;
    LogRequest request = ParseLogName(words, generation, at);
    if (request.badField == 0) {
        request.badField = CheckTrigger(request, words, at + 1);
    }
    return request;
}

LogRequest ParseUnlogRequest(const std::vector<std::string>& words, Generation generation)
{
    std::size_t at = 0;
    LogRequest request = ParseLogName(words, generation, at);
    if (request.badField == 0 && at + 1 < words.size()) {
        request.badField = static_cast<int>(at) + 2;
    }
    return request;
}

PortSettings ParsePortSettings(const std::vector<std::string>& words)
{
    PortSettings settings;
    const bool hasEcho = words[0] == "COM";
    const char* const* rules = hasEcho ? kComFieldRules : kSerialConfigFieldRules;
    const std::size_t ruleCount = hasEcho ? sizeof kComFieldRules / sizeof kComFieldRules[0]
                                          : sizeof kSerialConfigFieldRules / sizeof kSerialConfigFieldRules[0];
    const std::size_t at = AfterPort(words, settings.port);
    if (at >= words.size() || !ParseInteger(words[at], settings.baud) || !IsPortBaud(settings.baud)) {
        settings.badField = static_cast<int>(at) + 1;
        return settings;
    }
    for (std::size_t i = at + 1; i < words.size(); ++i) {
        const std::size_t rule = i - at - 1;
        if (rule >= ruleCount || !IsOneOf(rules[rule], words[i])) {
            settings.badField = static_cast<int>(i) + 1;
            return settings;
        }
    }
    const std::size_t echoAt = at + 5;
    if (hasEcho && echoAt < words.size()) {
        settings.echo = words[echoAt];
    }
    settings.settings = JoinWords(words, at, " ");
    return settings;
}

EchoRequest ParseEchoRequest(const std::vector<std::string>& words)
{
    EchoRequest request;
    const std::size_t at = AfterPort(words, request.port);
    if (at >= words.size() || (words[at] != "ON" && words[at] != "OFF")) {
        request.badField = static_cast<int>(at) + 1;
        return request;
    }
    if (at + 1 < words.size()) {
        request.badField = static_cast<int>(at) + 2;
        return request;
    }
    request.on = words[at] == "ON";
    return request;
}

}
