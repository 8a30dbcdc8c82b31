#include "receivers/CGPSConfigurer.h"
#include "receivers/ReceiverType.h"
#include "receivers/SbasPrnFlags.h"

#include <gtest/gtest.h>

TEST(ReceiverTypeCatalogue, NamesEveryTypeAndCallsTheRestBogus)
{
    const char* const expected[] = {"Novatel",  "CSI",      "V1",    "OEM-Star",
                                    "OEM-StarG", "OEM6",     "OEM 7500", "OEM 7700",
                                    "Other",     "Unknown",  "Uninitialized"};
    for (int type = 0; type <= 10; ++type) {
        EXPECT_STREQ(GetReceiverTypeName(type), expected[type]);
        EXPECT_EQ(ReceiverTypeFromName(expected[type]), type);
    }
    EXPECT_STREQ(GetReceiverTypeName(11), "BogusGPSType");
    EXPECT_STREQ(GetReceiverTypeName(12345), "BogusGPSType");
}

TEST(ReceiverTypeCatalogue, NamesMatchExactlyOrGiveUnknown)
{
    EXPECT_EQ(ReceiverTypeFromName("OEM7500"), 9);
    EXPECT_EQ(ReceiverTypeFromName("oem6"), 9);
    EXPECT_EQ(ReceiverTypeFromName("OEM6 "), 9);
    EXPECT_EQ(ReceiverTypeFromName(""), 9);
}

TEST(SbasPrnFlags, EmptyMeansAllAndOtherwiseExactlyTheGivenPrns)
{
    const SbasPrnFlags all = BuildSbasPrnFlags({});
    for (bool flag : all) {
        EXPECT_TRUE(flag);
    }
    const SbasPrnFlags one = BuildSbasPrnFlags({133});
    for (int i = 0; i < kSbasPrnCount; ++i) {
        EXPECT_EQ(one[i], i == 13) << "PRN " << 120 + i;
    }
    const SbasPrnFlags ends = BuildSbasPrnFlags({120, 158});
    EXPECT_TRUE(ends.front());
    EXPECT_TRUE(ends.back());
}

namespace {

// A family that overrides only what it must, to see the shared defaults.
class MinimalConfigurer : public CGPSConfigurer {
public:
    MinimalConfigurer() : CGPSConfigurer(nullptr) {}
    bool SupportsFeature2() override { return false; }
    bool SupportsGlonass() override { return false; }
    bool SupportsSbas() override { return false; }
    bool SupportsNovatelExtras() override { return false; }
    std::string GetModel() override { return ""; }
    std::string GetFirmwareVersion() override { return "fw-1.0"; }
    int SetBaudRate(int) override { return 0; }
    void OutputGGA(bool) override {}
    void SetGGAFrequency(float) override {}
    void OutputGSA(bool) override {}
    void SetGSAFrequency(float) override {}
    void OutputGSV(bool) override {}
    void SetGSVFrequency(float) override {}
    void OutputVTG(bool) override {}
    void SetVTGFrequency(float) override {}
    void OutputZDA(bool) override {}
    void SetZDAFrequency(float) override {}
    bool ConfigureSbas(const SbasPrnFlags&, bool, bool) override { return false; }
};

}  // namespace

TEST(CGPSConfigurer, DefaultsAreFixedAnswers)
{
    MinimalConfigurer configurer;
    EXPECT_FALSE(configurer.CanReset());
    EXPECT_EQ(configurer.ResetReceiver(-1), 1);
    EXPECT_EQ(configurer.SelectChannelConfig(true, true), 0);
    EXPECT_FALSE(configurer.SaveConfiguration());
    EXPECT_EQ(configurer.GetExtendedVersion(), "fw-1.0");
    EXPECT_EQ(configurer.GetRawVersionInfo(), "fw-1.0");
}
