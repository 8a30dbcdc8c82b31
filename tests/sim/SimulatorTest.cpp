#include "SimTestSupport.h"
#include "SlaveLine.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace GnssSim;

namespace {

std::string TemporaryDirectory()
{
    char pattern[] = "/tmp/gnss-sim-test-XXXXXX";
    const char* made = mkdtemp(pattern);
    return made != nullptr ? made : "/tmp";
}

bool Exists(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

}

TEST(Simulator, LinkPointsAtTheLineWhileServingAndIsRemovedOnStop)
{
    const std::string directory = TemporaryDirectory();
    SimOptions options = TestOptions("oem6");
    options.linkPath = directory + "/ttyO1";
    {
        auto sim = StartSimulator(options);
        SlaveLine line(options.linkPath, 115200);
        EXPECT_EQ(ReplyTo(line, "echo off"), "<OK");
        sim->Stop();
        EXPECT_FALSE(Exists(options.linkPath));
    }
    rmdir(directory.c_str());
}

TEST(Simulator, RefusesToStartWithAnUnknownReceiverOrToReplaceAFile)
{
    Simulator unknown(TestOptions("oem8"));
    std::string error;
    EXPECT_FALSE(unknown.Start(error));
    EXPECT_NE(error.find("unknown receiver \"oem8\""), std::string::npos) << error;

    const std::string directory = TemporaryDirectory();
    const std::string file = directory + "/ttyO1";
    close(creat(file.c_str(), 0600));
    SimOptions options = TestOptions("oem6");
    options.linkPath = file;
    Simulator blocked(options);
    EXPECT_FALSE(blocked.Start(error));
    EXPECT_TRUE(Exists(file));
    unlink(file.c_str());
    rmdir(directory.c_str());
}

// The record must be complete the moment WaitForQuiet returns, however the kernel and the
// scheduler interleave the two sides.
TEST(Simulator, WaitForQuietReturnsOnlyOnceEverythingWrittenIsHeardAndAnswered)
{
    auto sim = StartSimulator(TestOptions("oem7700"));
    SlaveLine line(sim->SlavePath(), 115200);
    const std::size_t rounds = 200;
    for (std::size_t round = 1; round <= rounds; ++round) {
        line.Write("echo off\r\n");
        ASSERT_TRUE(sim->WaitForQuiet());
        ASSERT_EQ(sim->HeardLines().size(), round);
    }
    EXPECT_EQ(line.ReadFor(kSilenceMs).size(), rounds * std::string("\r\n<OK\r\n[COM1]").size());
}

TEST(Simulator, PresetStateAndSavedStateShapeWhatTheReceiverDoes)
{
    auto sim = StartSimulator(TestOptions("oem6"));
    ReceiverState state = sim->State();
    state.baud = 38400;
    state.logs["GPVTG"] = 0.05;
    sim->SetState(state);
    ReceiverState saved;
    saved.baud = 19200;
    saved.settings["DYNAMICS"] = "FOOT";
    sim->SetSavedState(saved);
    SlaveLine line(sim->SlavePath(), 38400);
    EXPECT_EQ(line.ReadLine(kReplyMs).rfind("$GPVTG,", 0), 0u);
    EXPECT_EQ(ReplyTo(line, "reset"), "<OK");
    ASSERT_TRUE(sim->WaitForRestartToEnd());
    EXPECT_EQ(sim->State().baud, 19200);
    EXPECT_EQ(sim->State().settings.at("DYNAMICS"), "FOOT");
    EXPECT_TRUE(sim->ActiveLogs().empty());
}

TEST(Simulator, TranscriptIsStableAndClearingStartsANewRecord)
{
    auto sim = StartSimulator(TestOptions("oem6"));
    SlaveLine line(sim->SlavePath(), 9600);
    line.Write("\r\n\r\nserialconfig 115200\r\n");
    ASSERT_TRUE(sim->WaitForQuiet());
    line.SetBaud(115200);
    line.Write("\r\n\r\nserialconfig 115200\r\nbogus\r\n");
    ASSERT_TRUE(sim->WaitForQuiet());
    EXPECT_EQ(sim->HeardTranscript(), "noise at 9600 baud, receiver at 115200\n"
                                      "line \"\\r\\n\" -> empty\n"
                                      "line \"\\r\\n\" -> empty\n"
                                      "line \"serialconfig 115200\\r\\n\" -> <OK\n"
                                      "line \"bogus\\r\\n\" -> <ERROR:Invalid Message. Field = 1\n");
    sim->ClearHeard();
    EXPECT_TRUE(sim->Heard().empty());
}

TEST(Simulator, PacedOutputLeavesAtTheLinesByteRate)
{
    SimOptions options = TestOptions("oem6");
    options.startupBaud = 9600;
    options.pace = true;
    auto sim = StartSimulator(options);
    SlaveLine line(sim->SlavePath(), 9600);
    const auto sent = std::chrono::steady_clock::now();
    line.Write("log versiona once\r\n");
    std::string received = line.ReadUntil("<OK", kReplyMs);
    const auto firstReply = std::chrono::steady_clock::now();
    received += line.ReadUntil("\r\n", kReplyMs) + line.ReadUntil("\r\n", kReplyMs);
    const auto done = std::chrono::steady_clock::now();
    ASSERT_TRUE(HasValidNovatelCrc(received));
    const long lineTimeMs = static_cast<long>(received.size()) * 10 * 1000 / 9600;
    EXPECT_GE(std::chrono::duration_cast<std::chrono::milliseconds>(done - sent).count(), lineTimeMs - 5);
    EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(firstReply - sent).count(), lineTimeMs / 2)
        << "the reply comes first and does not wait for the log";
}
