#include "SimTestSupport.h"
#include "SlaveLine.h"

#include "sim/ByteText.h"

#include <chrono>

using namespace GnssSim;

namespace {

long MsSince(std::chrono::steady_clock::time_point start)
{
    return static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count());
}

}

TEST(NovatelWire, ThePromptFollowsEachReplyAndPrefixesTheNextLine)
{
    auto sim = StartSimulator(TestOptions("oem6"));
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("echo off\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "<OK\r\n");
    line.Write("bogus command\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "[COM1]\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "<ERROR:Invalid Message. Field = 1\r\n");
    line.Write("LOG VERSIONA ONCE\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "[COM1]\r\n");
    EXPECT_EQ(line.ReadLine(kReplyMs), "<OK\r\n");
    const std::string log = line.ReadLine(kReplyMs);
    EXPECT_EQ(log.rfind("[COM1]#VERSIONA,", 0), 0u) << EscapeBytes(log);
    EXPECT_EQ(log.substr(log.size() - 2), "\r\n");
    EXPECT_EQ(line.ReadFor(kSilenceMs), "") << "nothing follows the log line, not even a prompt";
}

TEST(NovatelWire, OemvSwitchesAfterItsReplyAndHearsTheFollowingCommandAsNoise)
{
    auto sim = StartSimulator(TestOptions("oemv"));
    SlaveLine line(sim->SlavePath(), 115200);
    line.Write("\r\n\r\nCOM 9600\r\n\r\n\r\nserialconfig 9600\r\n");
    EXPECT_NE(line.ReadUntil("[COM1]", kReplyMs).find("<OK"), std::string::npos);
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_EQ(sim->ReceiverBaud(), 9600);
    const std::vector<HeardEntry> heard = sim->Heard();
    ASSERT_EQ(heard.size(), 4u);
    EXPECT_EQ(heard[2].bytes, "COM 9600\r\n");
    EXPECT_EQ(heard[2].verdict, "<OK");
    EXPECT_EQ(heard[3].kind, HeardKind::Noise);
    EXPECT_EQ(heard[3].bytes, "\r\n\r\nserialconfig 9600\r\n");
    line.SetBaud(9600);
    EXPECT_EQ(ReplyTo(line, "echo off"), "<OK");
}

TEST(NovatelWire, LaterGenerationsRejectComAndSwitchWithSerialconfig)
{
    auto sim = StartSimulator(TestOptions("oem7500"));
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "COM 9600"), "<ERROR:Invalid Message. Field = 1");
    EXPECT_EQ(ReplyTo(line, "SERIALCONFIG COM2 9600 N 8 1 N OFF"), "<OK");
    EXPECT_EQ(sim->ReceiverBaud(), 115200) << "another port's speed does not move this one";
    EXPECT_EQ(sim->State().settings.at("SERIALCONFIG COM2"), "9600 N 8 1 N OFF");
    EXPECT_EQ(ReplyTo(line, "SERIALCONFIG COM1 57600 N 8 1 N OFF"), "<OK");
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_EQ(sim->ReceiverBaud(), 57600);
    line.SetBaud(57600);
    EXPECT_EQ(ReplyTo(line, "serialconfig 19200"), "<OK");
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_EQ(sim->ReceiverBaud(), 19200);
}

TEST(NovatelWire, OemStarTakesTheCommaSeparatedComCommand)
{
    auto sim = StartSimulator(TestOptions("oemstar"));
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "COM COM2,38400,N,8,1,N,OFF,ON"), "<OK");
    EXPECT_EQ(ReplyTo(line, "COM COM1,38400,X,8,1,N,OFF,ON"), "<ERROR:Invalid Message. Field = 4");
    EXPECT_EQ(ReplyTo(line, "serialconfig 38400"), "<ERROR:Invalid Message. Field = 1");
    EXPECT_EQ(ReplyTo(line, "COM COM1,38400,N,8,1,N,OFF,ON"), "<OK");
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_EQ(sim->ReceiverBaud(), 38400);
    EXPECT_EQ(sim->State().settings.at("COM COM2"), "38400 N 8 1 N OFF ON");
}

TEST(NovatelWire, ResetSilencesTheReceiverForItsRestartTimeAndBringsItBackAtStartUpSpeed)
{
    auto sim = StartSimulator(TestOptions("oem7700"));
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "serialconfig 9600"), "<OK");
    line.SetBaud(9600);
    const auto resetAt = std::chrono::steady_clock::now();
    EXPECT_EQ(ReplyTo(line, "reset"), "<OK");
    EXPECT_TRUE(sim->IsRestarting());
    line.SetBaud(115200);
    EXPECT_EQ(ReplyTo(line, "echo off"), "") << "nobody answers while the receiver restarts";
    ASSERT_TRUE(sim->WaitForRestartToEnd());
    EXPECT_GE(MsSince(resetAt), kTestRestartMs);
    EXPECT_EQ(sim->ReceiverBaud(), 115200);
    EXPECT_EQ(ReplyTo(line, "echo off"), "<OK");
    const std::vector<HeardEntry> heard = sim->Heard();
    EXPECT_EQ(heard[heard.size() - 2].kind, HeardKind::Lost);
}

TEST(NovatelWire, SaveconfigKeepsSpeedAndLogsAcrossAReset)
{
    auto sim = StartSimulator(TestOptions("oem6"));
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "serialconfig 57600"), "<OK");
    line.SetBaud(57600);
    EXPECT_EQ(ReplyTo(line, "DYNAMICS LAND"), "<OK");
    EXPECT_EQ(ReplyTo(line, "LOG GPZDA ONTIME 0.1"), "<OK");
    EXPECT_EQ(ReplyTo(line, "SAVECONFIG"), "<OK");
    EXPECT_EQ(ReplyTo(line, "UNLOG GPZDA"), "<OK");
    EXPECT_EQ(ReplyTo(line, "DYNAMICS FOOT"), "<OK");
    EXPECT_EQ(ReplyTo(line, "RESET"), "<OK");
    ASSERT_TRUE(sim->WaitForRestartToEnd());
    const ReceiverState state = sim->State();
    EXPECT_EQ(state.baud, 57600);
    EXPECT_EQ(state.settings.at("DYNAMICS"), "LAND");
    EXPECT_EQ(state.logs.count("GPZDA"), 1u);
    line.Flush();
    const std::string sentence = line.ReadUntil("\r\n", kReplyMs);
    EXPECT_EQ(sentence.rfind("$GPZDA,", 0), 0u) << EscapeBytes(sentence);
    EXPECT_TRUE(HasValidNmeaChecksum(sentence)) << EscapeBytes(sentence);
}

TEST(NovatelWire, SelectchanconfigRestartsIntoTheNewConfigurationWhichOutlivesAReset)
{
    auto sim = StartSimulator(TestOptions("oemstarg"));
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "log chanconfiglista once"), "<OK");
    const std::string before = NextLogLine(line);
    EXPECT_TRUE(HasValidNovatelCrc(before)) << EscapeBytes(before);
    EXPECT_EQ(BodyField(before, 0), "1");
    EXPECT_EQ(ReplyTo(line, "selectchanconfig 9"), "<ERROR:Invalid Message. Field = 2");
    EXPECT_EQ(ReplyTo(line, "selectchanconfig 5"), "<OK");
    EXPECT_TRUE(sim->IsRestarting());
    ASSERT_TRUE(sim->WaitForRestartToEnd());
    EXPECT_EQ(ReplyTo(line, "reset"), "<OK");
    ASSERT_TRUE(sim->WaitForRestartToEnd());
    EXPECT_EQ(ReplyTo(line, "log chanconfiglista once"), "<OK");
    const std::string after = NextLogLine(line);
    EXPECT_EQ(BodyField(after, 0), "5");
    EXPECT_EQ(BodyField(after, 1), "5");
    EXPECT_TRUE(HasValidNovatelCrc(after)) << EscapeBytes(after);
}

TEST(NovatelWire, StreamsNmeaAtItsPeriodWhileTakingCommandsUntilUnlogged)
{
    auto sim = StartSimulator(TestOptions("oem7700"));
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "LOG GPGGALONG ONTIME 0.1"), "<OK");
    const std::string stream = line.ReadFor(1000);
    int sentences = 0;
    std::vector<std::string> lines = SplitKeepingEmpty(stream, '\n');
    lines.pop_back();  // the read may have ended inside a sentence
    for (const std::string& sentence : lines) {
        if (sentence.find("$GPGGA,") != std::string::npos) {
            ++sentences;
            EXPECT_TRUE(HasValidNmeaChecksum(sentence.substr(sentence.find('$')))) << EscapeBytes(sentence);
        }
    }
    // Ten a second; a loaded machine may delay or skip a few, never add any.
    EXPECT_GE(sentences, 4);
    EXPECT_LE(sentences, 11);
    EXPECT_EQ(ReplyTo(line, "unlog gpggalong"), "<OK");
    line.Flush();
    EXPECT_EQ(line.ReadFor(kSilenceMs), "");
    EXPECT_TRUE(sim->ActiveLogs().empty());
}

TEST(NovatelWire, SettingsAreCaseInsensitiveAndActionsDoNotOverwriteThem)
{
    auto sim = StartSimulator(TestOptions("oem7700"));
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "sbascontrol enable auto 0 zerototwo"), "<OK");
    EXPECT_EQ(ReplyTo(line, "PDPFILTER ENABLE"), "<OK");
    EXPECT_EQ(ReplyTo(line, "PDPFILTER RESET"), "<OK");
    EXPECT_EQ(ReplyTo(line, "LOCKOUTSYSTEM BEIDOU"), "<OK");
    EXPECT_EQ(ReplyTo(line, "LOCKOUTSYSTEM GALILEO"), "<OK");
    EXPECT_EQ(ReplyTo(line, "unlockoutsystem beidou"), "<OK");
    EXPECT_EQ(ReplyTo(line, "ASSIGN 20 133 0 500"), "<OK");
    const ReceiverState state = sim->State();
    EXPECT_EQ(state.settings.at("SBASCONTROL"), "ENABLE AUTO 0 ZEROTOTWO");
    EXPECT_EQ(state.settings.at("PDPFILTER"), "ENABLE");
    EXPECT_EQ(state.settings.count("LOCKOUTSYSTEM BEIDOU"), 0u);
    EXPECT_EQ(state.settings.count("LOCKOUTSYSTEM GALILEO"), 1u);
    EXPECT_EQ(state.settings.at("ASSIGN 20"), "133 0 500");
}

TEST(NovatelWire, EachGenerationKnowsOnlyItsOwnCommands)
{
    struct Case {
        const char* receiver;
        const char* command;
        const char* reply;
    };
    const Case cases[] = {
        {"oem7700", "LOCKOUTSYSTEM BEIDOU", "<OK"},
        {"oem6", "LOCKOUTSYSTEM BEIDOU", "<ERROR:Invalid Message. Field = 1"},
        {"oem7500", "RADARCONFIG ENABLE 36.11", "<OK"},
        {"oem6", "RADARCONFIG ENABLE 36.11", "<ERROR:Invalid Message. Field = 1"},
        {"oemstar", "SETIONOTYPE AUTO", "<OK"},
        {"oemv", "SETIONOTYPE AUTO", "<ERROR:Invalid Message. Field = 1"},
        {"oem6", "ASSIGNLBANDBEAM AUTO", "<OK"},
        {"oemstarg", "PPPDYNAMICS AUTO", "<ERROR:Invalid Message. Field = 1"},
        {"oemv", "ASSIGN 12 138 0 500", "<OK"},
        {"oemv", "ASSIGN 16 138", "<ERROR:Invalid Message. Field = 2"},
        {"oem6", "ASSIGN 16 138", "<OK"},
        {"oem6", "ASSIGN 12 138", "<ERROR:Invalid Message. Field = 3"},
        {"oem7700", "ASSIGN 23 IDLE", "<OK"},
        {"oemv", "ASSIGNALL GLONASS IDLE", "<ERROR:Invalid Message. Field = 2"},
        {"oem6", "ASSIGNALL GLONASS IDLE", "<OK"},
        {"oemv", "log chanconfiglista once", "<ERROR:Invalid Message. Field = 2"},
        {"oemstar", "selectchanconfig 3", "<ERROR:Invalid Message. Field = 2"},
        {"oemv", "GGAQUALITY 1 WAAS 2", "<OK"},
        {"oemstar", "LOG GPGSA ONTIME inf", "<ERROR:Invalid Message. Field = 4"},
        {"oem6", "DYNAMICS WATER", "<ERROR:Invalid Message. Field = 2"},
    };
    for (const Case& example : cases) {
        auto sim = StartSimulator(TestOptions(example.receiver));
        SlaveLine line(sim->SlavePath(), 115200);
        EXPECT_EQ(ReplyTo(line, example.command), example.reply) << example.receiver << ": " << example.command;
    }
}

TEST(NovatelWire, ModelsListShowsThePresetModelsWithExpiryFields)
{
    auto sim = StartSimulator(TestOptions("oem6"));
    sim->SetValidModels({ValidModel{"D2LRPGTTN", 0, 0, 0}, ValidModel{"D2L0PG0T0", 2030, 12, 31}});
    SlaveLine line(sim->SlavePath(), 115200);
    EXPECT_EQ(ReplyTo(line, "log validmodelsa once"), "<OK");
    const std::string log = NextLogLine(line);
    EXPECT_TRUE(HasValidNovatelCrc(log)) << EscapeBytes(log);
    EXPECT_EQ(log.substr(log.find(';') + 1, log.find('*') - log.find(';') - 1),
              "2,\"D2LRPGTTN\",0,0,0,\"D2L0PG0T0\",2030,12,31");
}
