#include "sim/Simulator.h"

#include "sim/ReceiverFactory.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace GnssSim {

namespace {

// A pty passes at most a few kilobytes at a time; one read takes all the kernel holds.
const std::size_t kReadChunk = 4096;

}

Simulator::Simulator(const SimOptions& options)
    : m_options(options),
      m_wireLog(SimClock::now()),
      m_noise(options.noiseSeed),
      m_transmitter(m_pty, m_wireLog, m_noise, options.pace),
      m_faults(options.faults),
      m_line{m_pty, m_transmitter, m_heard, m_wireLog, m_faults}
{
    ReceiverSetup setup;
    MakeReceiverSetup(options, SimClock::now(), setup, m_setupError);
    m_model = MakeReceiverModel(setup, m_line);
    ApplyLineFaults();
}

Simulator::~Simulator()
{
    Stop();
}

bool Simulator::Start(std::string& error)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_running) {
        return true;
    }
    if (!m_setupError.empty()) {
        error = m_setupError;
        return false;
    }
    if (!m_pty.Open(error) || (!m_options.linkPath.empty() && !m_pty.MakeLink(m_options.linkPath, error)) ||
        (!m_options.wireLogPath.empty() && !m_wireLog.OpenFile(m_options.wireLogPath, error))) {
        m_pty.Close();
        return false;
    }
    if (pipe2(m_wakePipe, O_NONBLOCK | O_CLOEXEC) != 0) {
        error = "pipe2 failed";
        m_pty.Close();
        return false;
    }
    m_wireLog.Add(SimClock::now(), WireDirection::Event, m_pty.LineBaud(), m_model->State().baud, "",
                  "serving " + m_model->Setup().kind.name + " on " + m_pty.SlavePath());
    m_running = true;
    m_stopping = false;
    m_server = std::thread(&Simulator::Serve, this);
    return true;
}

void Simulator::Stop()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_running) {
            return;
        }
        m_stopping = true;
    }
    WakeServer();
    m_server.join();
    std::lock_guard<std::mutex> lock(m_mutex);
    m_pty.Close();
    close(m_wakePipe[0]);
    close(m_wakePipe[1]);
    m_wakePipe[0] = m_wakePipe[1] = -1;
    m_running = false;
    m_changed.notify_all();
}

void Simulator::Serve()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_stopping) {
        const TimePoint wake = std::min(m_model->NextTimer(), m_transmitter.NextWake());
        const int master = m_pty.MasterFd();
        lock.unlock();
        const bool readable = WaitForWork(master, wake);
        lock.lock();
        DrainWakePipe();
        if (m_stopping) {
            break;
        }
        const TimePoint now = SimClock::now();
        if (readable && m_pty.IsOpen()) {
            ReadInput(now);
        }
        m_model->OnTime(now);
        m_transmitter.Service(now);
        m_changed.notify_all();
    }
}

// Sleeps in ppoll until the tool writes, a wake-up arrives or the next timer falls due; true when
// the line has something to read.
bool Simulator::WaitForWork(int master, TimePoint wake)
{
    pollfd fds[2] = {{m_wakePipe[0], POLLIN, 0}, {master, POLLIN, 0}};
    const nfds_t count = master >= 0 ? 2 : 1;
    timespec timeout{};
    timespec* limit = nullptr;
    if (wake != Never()) {
        const auto left = std::max(SimClock::duration::zero(), wake - SimClock::now());
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        timeout.tv_sec = static_cast<time_t>(seconds.count());
        timeout.tv_nsec = static_cast<long>(std::chrono::duration_cast<std::chrono::nanoseconds>(left - seconds).count());
        limit = &timeout;
    }
    const int ready = ppoll(fds, count, limit, nullptr);
    return ready > 0 && count == 2 && (fds[1].revents & POLLIN) != 0;
}

// Reads what the tool wrote, chunk by chunk, judging each chunk at the speed the line has right
// after the read; the answers to one chunk leave before the next chunk is read.
void Simulator::ReadInput(TimePoint now)
{
    char buffer[kReadChunk];
    for (;;) {
        const ssize_t count = read(m_pty.MasterFd(), buffer, sizeof buffer);
        if (count <= 0) {
            return;
        }
        const int lineBaud = m_pty.LineBaud();
        const std::string chunk(buffer, static_cast<std::size_t>(count));
        m_wireLog.Add(now, WireDirection::In, lineBaud, m_model->State().baud, chunk, "read");
        m_model->Receive(chunk, lineBaud, now);
        m_transmitter.Service(now);
        if (!m_pty.IsOpen()) {
            return;
        }
    }
}

void Simulator::DrainWakePipe()
{
    char drained[64];
    while (read(m_wakePipe[0], drained, sizeof drained) > 0) {
    }
}

void Simulator::WakeServer()
{
    const char wake = 1;
    if (m_wakePipe[1] >= 0 && write(m_wakePipe[1], &wake, 1) < 0 && errno != EAGAIN) {
        // A full pipe already holds a wake-up; nothing else can fail here.
    }
}

void Simulator::ApplyLineFaults()
{
    m_transmitter.SetNoiseBetweenLines(LineFaultValue(m_faults, FaultKind::NoiseBetweenLines, 0));
    m_transmitter.SetHangUpAfter(LineFaultValue(m_faults, FaultKind::HangUpAfterBytes, -1));
}

bool Simulator::IsQuiet() const
{
    return m_transmitter.Idle() && !m_pty.HasUnreadInput();
}

bool Simulator::WaitUntil(long timeoutMs, const std::function<bool()>& condition)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const TimePoint deadline = MsAfter(SimClock::now(), timeoutMs);
    while (!condition()) {
        if (!m_running || m_changed.wait_until(lock, deadline) == std::cv_status::timeout) {
            return condition();
        }
    }
    return true;
}

bool Simulator::WaitForQuiet(long timeoutMs)
{
    return WaitUntil(timeoutMs, [this] { return IsQuiet(); });
}

bool Simulator::WaitForRestartToEnd(long timeoutMs)
{
    return WaitUntil(timeoutMs, [this] { return !m_model->IsRestarting(); });
}

bool Simulator::WaitForHeardLines(std::size_t count, long timeoutMs)
{
    return WaitUntil(timeoutMs, [this, count] { return GnssSim::HeardLines(m_heard.Entries(), false).size() >= count; });
}

bool Simulator::IsRunning() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_running;
}

std::string Simulator::SlavePath() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_pty.SlavePath();
}

std::string Simulator::LinkPath() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_pty.LinkPath();
}

std::vector<HeardEntry> Simulator::Heard() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_heard.Entries();
}

std::vector<std::string> Simulator::HeardLines(bool includeEmpty) const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return GnssSim::HeardLines(m_heard.Entries(), includeEmpty);
}

std::vector<HeardEntry> Simulator::HeardPackets() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<HeardEntry> packets;
    for (const HeardEntry& entry : m_heard.Entries()) {
        if (entry.kind == HeardKind::Packet) {
            packets.push_back(entry);
        }
    }
    return packets;
}

std::string Simulator::HeardTranscript() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return FormatHeardTranscript(m_heard.Entries());
}

void Simulator::ClearHeard()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_heard.Clear();
}

std::vector<std::string> Simulator::WireLogLines() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_wireLog.Lines();
}

void Simulator::NoteEvent(const std::string& meaning)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_wireLog.Add(SimClock::now(), WireDirection::Event, m_pty.LineBaud(), m_model->State().baud, "", meaning);
}

ReceiverState Simulator::State() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_model->State();
}

void Simulator::SetState(const ReceiverState& state)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_model->SetState(state, SimClock::now());
    }
    WakeServer();
}

std::optional<ReceiverState> Simulator::SavedState() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_model->SavedState();
}

void Simulator::SetSavedState(const std::optional<ReceiverState>& saved)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_model->SetSavedState(saved);
}

int Simulator::ReceiverBaud() const
{
    return State().baud;
}

void Simulator::SetReceiverBaud(int baud)
{
    ReceiverState state = State();
    state.baud = baud;
    SetState(state);
}

int Simulator::ChannelConfig() const
{
    return State().channelConfig;
}

void Simulator::SetChannelConfig(int number)
{
    ReceiverState state = State();
    state.channelConfig = number;
    SetState(state);
}

std::map<std::string, double> Simulator::ActiveLogs() const
{
    return State().logs;
}

std::vector<ValidModel> Simulator::ValidModels() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_model->Setup().validModels;
}

void Simulator::SetValidModels(const std::vector<ValidModel>& models)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_model->SetValidModels(models);
}

bool Simulator::IsRestarting() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_model->IsRestarting();
}

ReceiverKind Simulator::Kind() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_model->Setup().kind;
}

ReceiverIdentity Simulator::Identity() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_model->Setup().identity;
}

int Simulator::LineBaud() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_pty.LineBaud();
}

long Simulator::BytesSent() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_transmitter.BytesSent();
}

std::vector<Fault> Simulator::Faults() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_faults;
}

void Simulator::SetFaults(const std::vector<Fault>& faults)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_faults = faults;
    ApplyLineFaults();
}

}
