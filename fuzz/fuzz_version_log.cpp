// Whatever a receiver sends in place of its version log must parse without a crash, and every
// result must be one the tool can use: a known generation, a firmware version of at most six
// characters, fields without their quotes or the log's separators.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/FuzzProperty.h"
#include "receivers/ReceiverType.h"
#include "receivers/novatel/VersionLog.h"

namespace {

bool IsKnownGeneration(int type)
{
    return type == ReceiverType::Unknown || type == ReceiverType::OemStar ||
           type == ReceiverType::OemStarG || type == ReceiverType::Oem6 ||
           type == ReceiverType::Oem7500 || type == ReceiverType::Oem7700;
}

// What a line must hold for the generation to be recognised: the opening quote and the start of
// the software or hardware version that tells the generation.
const char* GenerationMark(int type)
{
    switch (type) {
    case ReceiverType::OemStar:
    case ReceiverType::OemStarG:
        return "\"L6X01";
    case ReceiverType::Oem6:
        return "\"OEM06";
    case ReceiverType::Oem7500:
        return "\"OEM7500";
    case ReceiverType::Oem7700:
        return "\"OEM7700";
    default:
        return "";
    }
}

// A text cut out of one body field: no field or component separator in it, and no quote left at
// either end.
bool IsCleanField(const std::string& text)
{
    return text.find_first_of(",;") == std::string::npos &&
           (text.empty() || (text.front() != '"' && text.back() != '"'));
}

void CheckRecord(const VersionRecord& record)
{
    for (const std::string* field : {&record.strComponentType, &record.strModel, &record.strPsn,
                                     &record.strHwVersion, &record.strSwVersion,
                                     &record.strBootVersion}) {
        RequireProperty(IsCleanField(*field), "a version record field is one unquoted field",
                        *field);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string line(reinterpret_cast<const char*>(data), size);
    const bool versionLine = NovatelCommon::IsVersionLine(line);
    RequireProperty(versionLine == (line.rfind("#VERSIONA", 0) == 0 ||
                                    line.rfind("[COM1]#VERSIONA", 0) == 0 ||
                                    line.rfind("[COM2]#VERSIONA", 0) == 0 ||
                                    line.rfind("[COM3]#VERSIONA", 0) == 0),
                    "a version line begins with #VERSIONA, after at most a COM1 to COM3 prompt");

    CheckRecord(NovatelCommon::ParseVersionRecord(line));

    const std::string firmware = NovatelCommon::FirmwareVersionFromLine(line);
    RequireProperty(firmware.size() <= 6, "the firmware version has at most six characters",
                    firmware);
    RequireProperty(versionLine || firmware.empty(), "only a version line has a firmware version");
    RequireProperty(firmware.find_first_of(",;") == std::string::npos,
                    "the firmware version lies within one field", firmware);

    const std::string package = NovatelCommon::ExtendedVersionFromLine(line);
    RequireProperty(versionLine || package.empty(), "only a version line has a package version");
    RequireProperty(IsCleanField(package), "the package version is one unquoted field", package);

    const int type = NovatelCommon::ClassifyVersionLine(line);
    RequireProperty(IsKnownGeneration(type), "the generation is Unknown or a NovAtel generation",
                    std::to_string(type));
    RequireProperty(line.find(GenerationMark(type)) != std::string::npos,
                    "a recognised generation comes from a line with its quoted version prefix",
                    GenerationMark(type));
    return 0;
}
