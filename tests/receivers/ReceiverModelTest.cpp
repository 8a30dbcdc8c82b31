#include "receivers/ReceiverType.h"

#include <gtest/gtest.h>

// The names are printed, and read back from the command line's receiver override.
TEST(ReceiverTypeCatalogue, NamesEveryTypeFindsByExactName)
{
    const char* const names[] = {"Novatel", "CSI", "V1", "OEM-Star", "OEM-StarG", "OEM6",
                                 "OEM 7500", "OEM 7700", "Other", "Unknown", "Uninitialized"};
    for (int type = 0; type <= 10; ++type) {
        EXPECT_STREQ(GetReceiverTypeName(type), names[type]);
        EXPECT_EQ(ReceiverTypeFromName(names[type]), type);
    }
    EXPECT_STREQ(GetReceiverTypeName(11), "BogusGPSType");
    EXPECT_STREQ(GetReceiverTypeName(12345), "BogusGPSType");
    for (const char* name : {"OEM7500", "oem6", "OEM6 ", ""}) {
        EXPECT_EQ(ReceiverTypeFromName(name), ReceiverType::Unknown) << '"' << name << '"';
    }
}
