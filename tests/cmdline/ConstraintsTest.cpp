#include "cmdline/BaudConstraint.h"
#include "cmdline/PrnConstraint.h"
#include "cmdline/ReceiverConstraint.h"

#include <gtest/gtest.h>

using InitGpsParseCmdLine::BaudConstraint;
using InitGpsParseCmdLine::PrnConstraint;
using InitGpsParseCmdLine::ReceiverConstraint;

TEST(PrnConstraint, AcceptsTheSbasRangeInclusive)
{
    const PrnConstraint constraint;
    EXPECT_FALSE(constraint.check(119));
    EXPECT_TRUE(constraint.check(120));
    EXPECT_TRUE(constraint.check(158));
    EXPECT_FALSE(constraint.check(159));
    EXPECT_EQ(constraint.shortID(), "prn");
    EXPECT_EQ(constraint.description(), "PRN# must be between in the valid range of PRNs");
}

TEST(BaudConstraint, AcceptsOnlyTheTwoDriverSpeeds)
{
    const BaudConstraint constraint;
    EXPECT_TRUE(constraint.check(115200));
    EXPECT_TRUE(constraint.check(19200));
    for (int refused : {9600, 38400, 57600, 115201, 0, -115200}) {
        EXPECT_FALSE(constraint.check(refused)) << refused;
    }
    EXPECT_EQ(constraint.shortID(), "baudrate");
    EXPECT_EQ(constraint.description(), "Baudrate must be either 115200 or 19200");
}

TEST(ReceiverConstraint, AcceptsAKnownNameWithAFirmware)
{
    const ReceiverConstraint constraint;
    EXPECT_TRUE(constraint.check("OEM6:v1.2"));
    EXPECT_EQ(constraint.Type(), 5);
    EXPECT_EQ(constraint.Firmware(), "v1.2");
    EXPECT_EQ(constraint.ExtendedVersion(), "");
    EXPECT_TRUE(constraint.check("OEM 7500:"));
    EXPECT_EQ(constraint.Type(), 6);
    EXPECT_EQ(constraint.Firmware(), "");
}

TEST(ReceiverConstraint, RefusesWrongPieceCountsAndUnusableNames)
{
    const ReceiverConstraint constraint;
    EXPECT_FALSE(constraint.check("OEM6"));
    EXPECT_FALSE(constraint.check(""));
    // The option's own example has three pieces and is refused.
    EXPECT_FALSE(constraint.check("OEM-StarG:v1.2:OEMVPN2854LL211"));
    EXPECT_FALSE(constraint.check("Unknown:v1.2"));
    EXPECT_FALSE(constraint.check("Uninitialized:v1.2"));
    EXPECT_FALSE(constraint.check("oem6:v1.2"));
    EXPECT_EQ(constraint.Type(), 9);
    EXPECT_EQ(constraint.shortID(), "gps");
    EXPECT_EQ(constraint.description(), "Type of receiver");
}
