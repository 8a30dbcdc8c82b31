#include "receivers/novatel/LogReplies.h"

#include "util/Strings.h"

#include <stdexcept>

namespace NovatelCommon {

namespace {

const char* const kChannelConfigLog = "#CHANCONFIGLIST";

// Each model in the list takes a name and three more fields (not used here).
constexpr size_t kFieldsPerModel = 4;
// Shortest field that can be a quoted name: two quotes and a character.
constexpr size_t kShortestQuotedName = 3;

std::string WithoutQuotes(const std::string& field)
{
    if (field.size() >= kShortestQuotedName && field.front() == '"' && field.back() == '"') {
        return field.substr(1, field.size() - 2);
    }
    return field;
}

// The count followed by four fields per model, checksum cut off; empty when the shape is wrong.
std::vector<std::string> ModelListFields(const std::string& reply)
{
    const std::vector<std::string> parts = SplitFields(reply, ";");
    if (parts.size() != 2) {
        return {};
    }
    const std::vector<std::string> beforeChecksum = SplitFields(parts[1], "*");
    if (beforeChecksum.empty()) {
        return {};
    }
    std::vector<std::string> fields = SplitFields(beforeChecksum[0], ",");
    if (fields.empty() || (fields.size() - 1) % kFieldsPerModel != 0) {
        return {};
    }
    return fields;
}

}  // namespace

int ParseChannelConfigReply(const std::string& reply)
{
    const std::vector<std::string> parts = SplitFields(reply, ";");
    if (parts.size() < 2) {
        return -1;
    }
    const std::vector<std::string> fields = SplitFields(parts[1], ",");
    if (fields.empty()) {
        return -1;
    }
    try {
        const int config = StringToInt(fields[0]);
        return StartsWith(reply, kChannelConfigLog) ? config : -1;
    } catch (const std::domain_error&) {
        return -1;
    }
}

std::vector<std::string> ParseValidModelsReply(const std::string& reply)
{
    const std::vector<std::string> fields = ModelListFields(reply);
    std::vector<std::string> models;
    if (fields.empty()) {
        return models;
    }
    try {
        // The receiver's count is trusted only up to the fields that are actually there.
        const long long nameLimit =
            static_cast<long long>(kFieldsPerModel) * StringToInt(fields[0]);
        for (size_t name = 1; name < fields.size() && static_cast<long long>(name) < nameLimit;
             name += kFieldsPerModel) {
            models.push_back(WithoutQuotes(fields[name]));
        }
    } catch (const std::exception&) {
        // A count that is not a number: keep what was collected, which is nothing yet.
    }
    return models;
}

}  // namespace NovatelCommon
