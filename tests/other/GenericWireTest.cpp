#include "receivers/other/CAutonomousGeneric.h"
#include "tests/other/SimulatedReceiverTest.h"

using GenericOnSimulator = SimulatedReceiverTest;

TEST_F(GenericOnSimulator, AcceptsEverythingAndSendsNothing)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("silent"));
    CAutonomousGeneric generic(port.get());
    CGPSConfigurer& configurer = generic;
    EXPECT_FALSE(configurer.SupportsFeature2() || configurer.SupportsGlonass() ||
                 configurer.SupportsSbas() || configurer.SupportsNovatelExtras() ||
                 configurer.CanReset());
    EXPECT_EQ("", configurer.GetFirmwareVersion());
    EXPECT_EQ("", configurer.GetExtendedVersion());
    EXPECT_EQ("", configurer.GetRawVersionInfo());
    EXPECT_EQ("", configurer.GetModel());
    EXPECT_EQ(0, configurer.SetBaudRate(19200));
    configurer.ApplyBaseConfiguration();
    for (bool on : {false, true}) {
        configurer.SetGGAFrequency(0.1f);
        configurer.OutputGGA(on);
        configurer.SetGSAFrequency(0.1f);
        configurer.OutputGSA(on);
        configurer.SetGSVFrequency(0.1f);
        configurer.OutputGSV(on);
        configurer.SetVTGFrequency(0.1f);
        configurer.OutputVTG(on);
        configurer.SetZDAFrequency(0.1f);
        configurer.OutputZDA(on);
    }
    SbasPrnFlags all;
    all.fill(true);
    EXPECT_FALSE(configurer.ConfigureSbas(all, true, true));
    EXPECT_FALSE(configurer.SaveConfiguration());
    ASSERT_TRUE(sim->WaitForQuiet(kQuietWaitMs));
    EXPECT_TRUE(sim->Heard().empty()) << sim->HeardTranscript();
}
