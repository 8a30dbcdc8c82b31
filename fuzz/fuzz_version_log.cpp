// Whatever a receiver sends in place of its version log must parse without a crash.
#include <cstddef>
#include <cstdint>
#include <string>

#include "receivers/novatel/VersionLog.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string line(reinterpret_cast<const char*>(data), size);
    NovatelCommon::IsVersionLine(line);
    NovatelCommon::ParseVersionRecord(line);
    NovatelCommon::FirmwareVersionFromLine(line);
    NovatelCommon::ExtendedVersionFromLine(line);
    NovatelCommon::ClassifyVersionLine(line);
    return 0;
}
