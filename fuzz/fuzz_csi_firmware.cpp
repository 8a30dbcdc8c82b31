// Whatever a CSI receiver sends in reply to "$JI" must parse without a crash, and the firmware
// version must be the reply's eighth comma-separated field exactly as it stands: taken from a
// "$>JI" reply only, from no other field, and never running into the next one.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/FuzzProperty.h"
#include "receivers/other/CAutonomousCSI.h"

namespace {

constexpr std::size_t kCommasBeforeFirmware = 7;

// The text between the seventh comma and the next one (or the end), counted directly on the line;
// "" for a line with fewer commas.
std::string TextAfterSeventhComma(const std::string& line)
{
    std::size_t start = 0;
    for (std::size_t comma = 0; comma < kCommasBeforeFirmware; ++comma) {
        start = line.find(',', start);
        if (start == std::string::npos) {
            return "";
        }
        ++start;
    }
    return line.substr(start, line.find(',', start) - start);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string line(reinterpret_cast<const char*>(data), size);
    const std::string firmware = CsiFirmwareFromReply(line);
    const bool reply = line.rfind("$>JI", 0) == 0;
    RequireProperty(reply || firmware.empty(), "only a \"$>JI\" reply gives a firmware version");
    RequireProperty(firmware.find(',') == std::string::npos,
                    "the firmware version lies within one field", firmware);
    RequireProperty(!reply || firmware == TextAfterSeventhComma(line),
                    "the firmware version is the text after the seventh comma", firmware);
    return 0;
}
