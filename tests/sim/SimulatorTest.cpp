#include "tests/sim/SimTestSupport.h"

#include "tests/support/ProcessRunner.h"
#include "util/Stopwatch.h"

#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace GnssSim;

// Others read the record the moment WaitForQuiet returns, however the kernel and the scheduler
// interleave the two sides; a delayed answer is part of it.
TEST(Simulator, WaitForQuietWaitsForAllHeardAndAnswered)
{
    SimulatedReceiver receiver(TestReceiverOptions("oem7700"));
    Simulator& sim = receiver.Sim();
    PathComPort& port = receiver.OpenPort();
    const std::size_t rounds = 200;
    for (std::size_t round = 1; round <= rounds; ++round) {
        Send(port, "echo off\r\n");
        ASSERT_TRUE(sim.WaitForQuiet());
        ASSERT_EQ(sim.HeardLines().size(), round);
    }
    const long delayMs = 300;
    sim.SetFaults({Fault::Delay(delayMs)});
    const Stopwatch clock;
    Send(port, "echo off\r\n");
    ASSERT_TRUE(sim.WaitForQuiet());
    EXPECT_GE(clock.ElapsedMs(), delayMs);
    EXPECT_EQ(ReadFor(port, kSilenceMs).size(), (rounds + 1) * std::string("\r\n<OK\r\n[COM1]").size());
}

TEST(Simulator, PacedOutputLeavesAtTheLinesByteRate)
{
    // Slow enough that the log takes about a second, far more than a loaded machine delays a reply.
    constexpr int kSlowBaud = 2400;
    SimOptions options = TestReceiverOptions("oem6");
    options.startupBaud = kSlowBaud;
    options.pace = true;
    SimulatedReceiver receiver(options);
    PathComPort& port = receiver.OpenPort(kSlowBaud);
    const Stopwatch clock;
    Send(port, "log versiona once\r\n");
    std::string received = ReadFor(port, kReplyMs, "<OK");
    const long replyMs = clock.ElapsedMs();
    received += ReadFor(port, kReplyMs, "*");
    received += ReadFor(port, kReplyMs, "\r\n");
    ASSERT_TRUE(HasRightCheck(received));
    // Ten bits a byte; the first byte leaves at once.
    const long lineMs = static_cast<long>(received.size() - 1) * 10 * 1000 / kSlowBaud;
    EXPECT_GE(clock.ElapsedMs(), lineMs);
    EXPECT_LT(replyMs, lineMs / 2) << "the reply comes first and does not wait for the log";
}

// The link is made where the console's ports are: a device there must survive a simulator.
TEST(Simulator, NeverReplacesAFileWithItsLink)
{
    char directory[] = "/tmp/gnss-sim-test-XXXXXX";
    ASSERT_NE(mkdtemp(directory), nullptr);
    SimOptions options = TestReceiverOptions("oem6");
    options.linkPath = std::string(directory) + "/ttyO1";
    close(creat(options.linkPath.c_str(), 0600));
    Simulator blocked(options);
    std::string error;
    EXPECT_FALSE(blocked.Start(error));
    struct stat status {};
    EXPECT_TRUE(lstat(options.linkPath.c_str(), &status) == 0 && S_ISREG(status.st_mode));
    unlink(options.linkPath.c_str());
    rmdir(directory);
}

// The command's standard error, which it shares with gnss-sim, is its own under --quiet: golden
// files compare it.
TEST(SimProgram, RunsTheCommandAndWritesWhatWasHeard)
{
    char heard[] = "/tmp/gnss-sim-heard-XXXXXX";
    close(mkstemp(heard));
    const std::string script =
        "stty -F \"$GNSS_SIM_PORT\" 115200 raw -echo && printf 'log versiona once\\r\\n' > \"$GNSS_SIM_PORT\""
        " && sleep 0.3; echo said >&2; exit 3";
    const ProcessResult run = RunBuiltProgram(
        GNSS_SIM_PROGRAM, "gnss-sim",
        {"--receiver", "oem7700", "--quiet", "--heard", heard, "--", "sh", "-c", script});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.err, "said\n");
    std::stringstream transcript;
    transcript << std::ifstream(heard).rdbuf();
    EXPECT_EQ(transcript.str(), "line \"log versiona once\\r\\n\" -> <OK, then VERSIONA\n");
    unlink(heard);
}
