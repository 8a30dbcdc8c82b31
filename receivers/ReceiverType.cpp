#include "receivers/ReceiverType.h"

namespace {

const char* const kReceiverTypeNames[] = {
    "Novatel", "CSI",      "V1",       "OEM-Star", "OEM-StarG",     "OEM6",
    "OEM 7500", "OEM 7700", "Other",    "Unknown",  "Uninitialized",
};
constexpr int kNamedTypeCount = sizeof(kReceiverTypeNames) / sizeof(kReceiverTypeNames[0]);

}  // namespace

const char* GetReceiverTypeName(int type)
{
    if (type < 0 || type >= kNamedTypeCount) {
        return "BogusGPSType";
    }
    return kReceiverTypeNames[type];
}

int ReceiverTypeFromName(const std::string& name)
{
    for (int type = 0; type < kNamedTypeCount; ++type) {
        if (name == kReceiverTypeNames[type]) {
            return type;
        }
    }
    return ReceiverType::Unknown;
}
