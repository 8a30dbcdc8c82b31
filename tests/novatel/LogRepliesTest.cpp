#include "receivers/novatel/LogCommand.h"
#include "receivers/novatel/LogReplies.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace NovatelCommon;
using Models = std::vector<std::string>;

namespace {

const std::string kModelsHeader =
    "#VALIDMODELSA,COM1,0,55.0,FINESTEERING,1800,302400.000,02000020,3681,14970;";

TEST(ChannelConfigReply, IsTheFirstBodyField)
{
    EXPECT_EQ(3, ParseChannelConfigReply(
                     "#CHANCONFIGLISTA,COM1,0,55.0,FINESTEERING,1800,302400.000,02000020,3681,14970;"
                     "3,5,2,16,GPSL1,4,SBASL1*8f1a2b3c\r\n"));
    EXPECT_EQ(1, ParseChannelConfigReply("#CHANCONFIGLISTA;1\r\n"));
}

TEST(ChannelConfigReply, AnythingElseIsMinusOne)
{
    EXPECT_EQ(-1, ParseChannelConfigReply("#CHANCONFIGLISTA,COM1;x,5,2*00\r\n"));
    EXPECT_EQ(-1, ParseChannelConfigReply("#CHANCONFIGLISTA,COM1;,5,2*00\r\n"));
    EXPECT_EQ(-1, ParseChannelConfigReply("#CHANCONFIGLISTA,COM1;"));
    EXPECT_EQ(-1, ParseChannelConfigReply("#CHANCONFIGLISTA,COM1,3,5\r\n"));
    EXPECT_EQ(-1, ParseChannelConfigReply("<OK;3\r\n"));
    EXPECT_EQ(-1, ParseChannelConfigReply(""));
}

TEST(ValidModelsReply, ListsTheModelsInTheReceiversOrder)
{
    EXPECT_EQ((Models{"D2LRPGTTN", "D2L0PG0T0"}),
              ParseValidModelsReply(kModelsHeader + "2,\"D2LRPGTTN\",0,0,0,\"D2L0PG0T0\",2025,12,31"
                                                    "*12ab34cd\r\n"));
    EXPECT_EQ(Models{}, ParseValidModelsReply(kModelsHeader + "0*12ab34cd\r\n"));
}

TEST(ValidModelsReply, FieldsTooShortToBeQuotedNamesAreKeptAsTheyAre)
{
    EXPECT_EQ((Models{"\"", "\"\"", "A", "BARE"}),
              ParseValidModelsReply(kModelsHeader +
                                    "4,\",0,0,0,\"\",0,0,0,\"A\",0,0,0,BARE,0,0,0*00\r\n"));
}

TEST(ValidModelsReply, TrustsTheCountOnlyAsFarAsTheFieldsGo)
{
    EXPECT_EQ((Models{"A", "B"}),
              ParseValidModelsReply(kModelsHeader + "7,\"A\",0,0,0,\"B\",0,0,0*00\r\n"));
    EXPECT_EQ(Models{"A"}, ParseValidModelsReply(kModelsHeader + "1,\"A\",0,0,0,\"B\",0,0,0*00\r\n"));
}

TEST(ValidModelsReply, RepliesOfTheWrongShapeGiveNoModels)
{
    EXPECT_EQ(Models{}, ParseValidModelsReply(kModelsHeader + "x,\"A\",0,0,0*00\r\n"));
    EXPECT_EQ(Models{}, ParseValidModelsReply(kModelsHeader + "1,\"A\",0,0*00\r\n"));
    EXPECT_EQ(Models{}, ParseValidModelsReply(kModelsHeader + "1,\"A\",0,0,0;extra*00\r\n"));
    EXPECT_EQ(Models{}, ParseValidModelsReply("#VALIDMODELSA,COM1,1,\"A\",0,0,0\r\n"));
    EXPECT_EQ(Models{}, ParseValidModelsReply(""));
}

TEST(LogPeriod, OneDecimalUnlessAskedForTwo)
{
    EXPECT_EQ("0.2", FormatLogPeriod(5.0f, false));
    EXPECT_EQ("5.0", FormatLogPeriod(0.2f, false));
    EXPECT_EQ("0.1", FormatLogPeriod(20.0f, false));
    EXPECT_EQ("0.05", FormatLogPeriod(20.0f, true));
    EXPECT_EQ("inf", FormatLogPeriod(0.0f, false));
}

}  // namespace
