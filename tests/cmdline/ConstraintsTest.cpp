// The parser quotes a refused value's constraint description; the baud rate's is checked on a
// whole run, the short names in the help text.
#include "cmdline/BaudConstraint.h"
#include "cmdline/PrnConstraint.h"
#include "cmdline/ReceiverConstraint.h"

#include <gtest/gtest.h>

using InitGpsParseCmdLine::BaudConstraint;
using InitGpsParseCmdLine::PrnConstraint;
using InitGpsParseCmdLine::ReceiverConstraint;

TEST(NumberConstraints, AcceptSbasPrnsAndTheTwoDriverSpeeds)
{
    const PrnConstraint prn;
    for (const auto& [value, accepted] :
         {std::pair{119, false}, {120, true}, {158, true}, {159, false}}) {
        EXPECT_EQ(prn.check(value), accepted) << value;
    }
    EXPECT_EQ(prn.description(), "PRN# must be between in the valid range of PRNs");
    const BaudConstraint baud;
    EXPECT_TRUE(baud.check(115200) && baud.check(19200));
    for (int refused : {9600, 38400, 57600, 115201, 0, -115200}) {
        EXPECT_FALSE(baud.check(refused)) << refused;
    }
}

// What an accepted override fills is checked through the command line.
TEST(ReceiverConstraint, AcceptsAKnownNameWithAFirmwareOnly)
{
    const ReceiverConstraint constraint;
    EXPECT_TRUE(constraint.check("OEM 7500:"));
    EXPECT_EQ(constraint.Type(), 6);
    EXPECT_EQ(constraint.Firmware(), "");
    // The option's own example has three pieces and is refused.
    for (const char* refused : {"OEM6", "", "OEM-StarG:v1.2:OEMVPN2854LL211", "Unknown:v1.2",
                                "Uninitialized:v1.2", "oem6:v1.2"}) {
        EXPECT_FALSE(constraint.check(refused)) << refused;
    }
    EXPECT_EQ(constraint.description(), "Type of receiver");
}
