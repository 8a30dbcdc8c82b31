#ifndef GNSS_TESTS_OTHER_SIMULATEDRECEIVERTEST_H
#define GNSS_TESTS_OTHER_SIMULATEDRECEIVERTEST_H

#include "sim/Simulator.h"
#include "tests/support/PathComPort.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// The simulator answers at once; this only bounds how long a wrong test waits.
constexpr long kQuietWaitMs = 5000;

// How late a loaded two-core machine, a sanitizer build or qemu-arm may hand control back after
// a wait; added to a budget's upper bound only.
constexpr long kSchedulingSlackMs = 400;

// A simulated receiver on a pseudo-terminal with the tool's real port open on it at the
// console's 115200 baud, the rate the receivers start at.
class SimulatedReceiverTest : public testing::Test {
protected:
    void TearDown() override;

    // Use with ASSERT_NO_FATAL_FAILURE.
    void StartReceiver(const std::string& receiver, const std::vector<GnssSim::Fault>& faults = {});

    // The lines the receiver heard (without empty lines), once it has taken in everything.
    std::vector<std::string> HeardLines();

    std::unique_ptr<GnssSim::Simulator> sim;
    std::unique_ptr<PathComPort> port;
};

#endif
