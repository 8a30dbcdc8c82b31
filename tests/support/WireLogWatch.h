#ifndef GNSS_TESTS_SUPPORT_WIRELOGWATCH_H
#define GNSS_TESTS_SUPPORT_WIRELOGWATCH_H

#include <atomic>
#include <functional>
#include <string>
#include <thread>

// Acts at a moment inside a run: once gnss-sim's wire log (--log, written as it grows) shows that
// the receiver read from the tool bytes that contain text (as the log writes them, "\r\n" for a
// line end), the action runs, once, on a thread of the watch. The log is looked at every 5 ms.
class WireLogWatch {
public:
    WireLogWatch(std::string wireLog, std::string text, std::function<void()> action);
    ~WireLogWatch();
    WireLogWatch(const WireLogWatch&) = delete;
    WireLogWatch& operator=(const WireLogWatch&) = delete;

    // Whether the action ran.
    bool Fired() const { return m_fired; }

private:
    void Watch();

    std::string m_wireLog;
    std::string m_text;
    std::function<void()> m_action;
    std::atomic<bool> m_fired{false};
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

// From a finished run's wire log: the milliseconds from the receiver's first read of bytes that
// contain text to its next read from the tool, that is how long the tool kept quiet after it
// wrote them. -1 when there is no such read or none after it.
long QuietAfterMs(const std::string& wireLog, const std::string& text);

#endif
