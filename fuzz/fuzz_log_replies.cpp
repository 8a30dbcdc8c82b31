// Whatever a receiver sends in place of its channel-configuration and models logs, or of any reply
// that an exchange waits for, must parse without a crash, and the results must be ones the tool
// can use: a configuration number only from a "#CHANCONFIGLIST" log, model names without their
// quotes, and an exchange's reply that begins with what it waited for.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/FuzzProperty.h"
#include "receivers/novatel/LogReplies.h"
#include "receivers/novatel/NovatelExchange.h"

namespace {

// What the tool's exchanges wait for.
const char* const kExpectedReplies[] = {"<OK", "#CHANCONFIGLIST", "#VALIDMODELSA", "#VERSIONA"};

constexpr std::size_t kPromptLength = 6;  // "[COM1]"
constexpr std::size_t kFieldsPerModel = 4;

bool IsQuotedName(const std::string& field)
{
    return field.size() >= 3 && field.front() == '"' && field.back() == '"';
}

void CheckChannelConfig(const std::string& reply)
{
    const int config = NovatelCommon::ParseChannelConfigReply(reply);
    RequireProperty(config == -1 || reply.rfind("#CHANCONFIGLIST", 0) == 0,
                    "only a #CHANCONFIGLIST log gives a channel configuration");
}

// Each name is a whole field of the log: either a quoted name with its quotes taken off, or a
// field kept as it is because it is no quoted name.
void CheckModels(const std::string& reply)
{
    const std::vector<std::string> models = NovatelCommon::ParseValidModelsReply(reply);
    std::size_t commas = 0;
    for (const char c : reply) {
        commas += c == ',' ? 1 : 0;
    }
    RequireProperty(models.size() * kFieldsPerModel <= commas,
                    "every model name is followed by three fields");
    for (const std::string& model : models) {
        RequireProperty(model.find_first_of(",;*") == std::string::npos,
                        "a model name lies within one field", model);
        // A quoted name has at least one character between its quotes.
        const bool unquoted =
            !model.empty() && reply.find(",\"" + model + "\",") != std::string::npos;
        const bool keptAsItIs =
            !IsQuotedName(model) && reply.find("," + model + ",") != std::string::npos;
        RequireProperty(unquoted || keptAsItIs,
                        "a model name is a quoted field without its quotes, or a field that is "
                        "no quoted name",
                        model);
    }
}

void CheckExchangeReplies(const std::string& line)
{
    for (const char* expected : kExpectedReplies) {
        const std::string reply = NovatelCommon::MatchingReply(line, expected);
        if (reply.empty()) {
            continue;
        }
        RequireProperty(reply.rfind(expected, 0) == 0,
                        "an exchange's reply begins with what it waited for", reply);
        const bool whole = reply == line;
        const bool afterPrompt =
            line.size() == reply.size() + kPromptLength && line.compare(kPromptLength, reply.size(), reply) == 0;
        RequireProperty(whole || afterPrompt,
                        "an exchange's reply is the line, or the line after its port prompt", reply);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string reply(reinterpret_cast<const char*>(data), size);
    CheckChannelConfig(reply);
    CheckModels(reply);
    CheckExchangeReplies(reply);
    return 0;
}
