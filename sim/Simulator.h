#ifndef GNSS_SIM_SIMULATOR_H
#define GNSS_SIM_SIMULATOR_H

#include "sim/SimOptions.h"
#include "sim/line/HeardRecord.h"
#include "sim/line/NoiseMaker.h"
#include "sim/line/Pty.h"
#include "sim/line/Transmitter.h"
#include "sim/line/WireLog.h"
#include "sim/model/ReceiverModel.h"

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace GnssSim {

// A simulated GNSS receiver on a pseudo-terminal, served on a thread of its own. The tool opens
// SlavePath() (or the link) as its serial port; the test inspects what the receiver heard.
//
//   Simulator sim(options);
//   std::string error;
//   ASSERT_TRUE(sim.Start(error)) << error;
//   ... run the tool's operation on sim.SlavePath() ...
//   ASSERT_TRUE(sim.WaitForQuiet());
//   EXPECT_EQ(sim.HeardLines(), expected);
//
// Every method may be called from any thread; all of them take the simulator's lock, which the
// serving thread holds only while it handles what it read or what fell due, never while it waits.
//
// Timing: the serving thread wakes as soon as the tool has written and samples the line's speed
// right after each read. The tool's speed change is seen late when the thread is not scheduled
// between the tool's write and its next change of speed (the tool waits about 10 ms after a
// speed-switch command); bytes are then judged at the tool's next speed. Tests that switch
// speeds should allow for a rare such misjudgement on a loaded machine rather than assert on
// sub-10 ms timing.
class Simulator {
public:
    explicit Simulator(const SimOptions& options);
    ~Simulator();
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    // Opens the line, makes the link and starts serving; false with a reason on failure.
    bool Start(std::string& error);

    // Stops serving, closes the line and removes the link; also done by the destructor.
    void Stop();

    bool IsRunning() const;
    std::string SlavePath() const;
    std::string LinkPath() const;

    // Waits until the receiver has taken in everything the tool wrote so far and has sent every
    // answer it queued (delayed answers included); streamed logs and restarts are not waited for.
    // false when that did not happen within the time-out.
    bool WaitForQuiet(long timeoutMs = kDefaultWaitMs);
    bool WaitForRestartToEnd(long timeoutMs = kDefaultWaitMs);
    // Until the record holds count lines (empty lines not counted).
    bool WaitForHeardLines(std::size_t count, long timeoutMs = kDefaultWaitMs);

    std::vector<HeardEntry> Heard() const;
    // The lines heard while the speeds matched, exactly as received; empty lines only on request.
    std::vector<std::string> HeardLines(bool includeEmpty = false) const;
    std::vector<HeardEntry> HeardPackets() const;
    std::string HeardTranscript() const;
    void ClearHeard();

    std::vector<std::string> WireLogLines() const;
    // Writes an event of the caller's into the wire log now, with the speeds of the moment (the
    // end of the command run against the line, which readers of the log take as the session's).
    void NoteEvent(const std::string& meaning);

    ReceiverState State() const;
    void SetState(const ReceiverState& state);
    std::optional<ReceiverState> SavedState() const;
    void SetSavedState(const std::optional<ReceiverState>& saved);

    int ReceiverBaud() const;
    void SetReceiverBaud(int baud);
    int ChannelConfig() const;
    void SetChannelConfig(int number);
    std::map<std::string, double> ActiveLogs() const;
    std::vector<ValidModel> ValidModels() const;
    void SetValidModels(const std::vector<ValidModel>& models);
    bool IsRestarting() const;
    ReceiverKind Kind() const;
    ReceiverIdentity Identity() const;

    // The speed the tool set on the line, 0 when it has none.
    int LineBaud() const;

    // Bytes the receiver has sent so far.
    long BytesSent() const;

    std::vector<Fault> Faults() const;
    void SetFaults(const std::vector<Fault>& faults);

    // Long enough for a delayed answer or a restart in a test, short enough to fail a test quickly.
    static const long kDefaultWaitMs = 10000;

private:
    void Serve();
    bool WaitForWork(int master, TimePoint wake);
    void ReadInput(TimePoint now);
    void DrainWakePipe();
    void WakeServer();
    void ApplyLineFaults();
    bool IsQuiet() const;
    bool WaitUntil(long timeoutMs, const std::function<bool()>& condition);

    const SimOptions m_options;
    std::string m_setupError;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Pty m_pty;
    WireLog m_wireLog;
    NoiseMaker m_noise;
    Transmitter m_transmitter;
    HeardRecord m_heard;
    std::vector<Fault> m_faults;
    ReceiverLine m_line;
    std::unique_ptr<ReceiverModel> m_model;
    std::thread m_server;
    int m_wakePipe[2] = {-1, -1};
    bool m_running = false;
    bool m_stopping = false;
};

}

#endif
