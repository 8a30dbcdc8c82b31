#include "tests/other/SimulatedReceiverTest.h"

namespace {

// The console opens the receiver's port at this rate.
constexpr int kConsoleBaud = 115200;

}  // namespace

void SimulatedReceiverTest::TearDown()
{
    if (port) {
        port->Close();
    }
}

void SimulatedReceiverTest::StartReceiver(const std::string& receiver,
                                          const std::vector<GnssSim::Fault>& faults)
{
    GnssSim::SimOptions options;
    options.receiver = receiver;
    options.faults = faults;
    sim = std::make_unique<GnssSim::Simulator>(options);
    std::string error;
    ASSERT_TRUE(sim->Start(error)) << error;
    port = std::make_unique<PathComPort>(sim->SlavePath());
    ASSERT_EQ(0, port->SetBaudRate(kConsoleBaud));
    ASSERT_EQ(0, port->Open());
}

std::vector<std::string> SimulatedReceiverTest::HeardLines()
{
    EXPECT_TRUE(sim->WaitForQuiet(kQuietWaitMs));
    return sim->HeardLines();
}
