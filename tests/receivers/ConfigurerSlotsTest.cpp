#include "receivers/CGPSConfigurer.h"
#include "receivers/novatel/OemV1Descendants.h"
#include "receivers/other/CAutonomousCSI.h"
#include "receivers/other/CAutonomousGeneric.h"
#include "receivers/other/CAutonomousNovatel.h"
#include "tests/support/VirtualSlots.h"

#include <gtest/gtest.h>

namespace {

// A class that adds one virtual operation to a configurer: its slot is the first one after all the
// configurer has, so the configurer has exactly that many.
struct GenericExtended : CAutonomousGeneric {
    using CAutonomousGeneric::CAutonomousGeneric;
    virtual void Added() {}
};

TEST(ConfigurerSlots, InterfaceKeepsItsOrder)
{
    using C = CGPSConfigurer;
    ExpectSlots(2, &C::SupportsFeature2, &C::SupportsGlonass, &C::CanReset, &C::ResetReceiver,
                &C::SupportsSbas, &C::SupportsNovatelExtras, &C::SetUseGlonass,
                &C::SelectChannelConfig, &C::GetModel, &C::GetFirmwareVersion,
                &C::GetExtendedVersion, &C::GetRawVersionInfo, &C::ApplyBaseConfiguration);
    ExpectSlots(15, &C::SetBaudRate, &C::OutputGGA, &C::SetGGAFrequency, &C::OutputGSA,
                &C::SetGSAFrequency, &C::OutputGSV, &C::SetGSVFrequency, &C::OutputVTG,
                &C::SetVTGFrequency, &C::OutputZDA, &C::SetZDAFrequency, &C::ConfigureSbas,
                &C::SaveConfiguration);
}

// Each family's own operations follow the interface's 28 directly; the generic configurer adds
// none.
TEST(ConfigurerSlots, FamiliesAddTheirOperationsFromSlot28)
{
    using N = NovatelCommon::OemV1Descendants;
    ExpectSlots(28, &N::ResetPdpFilter, &N::GetVersionRecord, &N::ApplyFamilyConfiguration,
                &N::ConfigureFix, &N::RequestVersionLog, &N::ReadVersionLog);
    EXPECT_EQ(28, SlotOf(&CAutonomousCSI::SetDiffSource)) << "the CSI configurer's own";
    EXPECT_EQ(28, SlotOf(&CAutonomousNovatel::SetSbasMode)) << "the \"$PMCAG\" configurer's own";
    EXPECT_EQ(28, SlotOf(&GenericExtended::Added)) << "the generic configurer adds one";
}

}  // namespace
