// Whatever a receiver sends in place of its channel-configuration and models logs must parse
// without a crash.
#include <cstddef>
#include <cstdint>
#include <string>

#include "receivers/novatel/LogReplies.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string reply(reinterpret_cast<const char*>(data), size);
    NovatelCommon::ParseChannelConfigReply(reply);
    NovatelCommon::ParseValidModelsReply(reply);
    return 0;
}
