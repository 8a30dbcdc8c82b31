#include "tests/support/WireLogWatch.h"

#include "util/Sleep.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace {

constexpr int kLookEveryMs = 5;

// A log line "<seconds> in <line baud> <receiver baud> "<bytes>" read": what the receiver read.
bool IsRead(const std::string& line, double* seconds)
{
    std::istringstream fields(line);
    std::string kind;
    return static_cast<bool>(fields >> *seconds >> kind) && kind == "in";
}

}  // namespace

WireLogWatch::WireLogWatch(std::string wireLog, std::string text, std::function<void()> action)
    : m_wireLog(std::move(wireLog)), m_text(std::move(text)), m_action(std::move(action)),
      m_thread([this] { Watch(); })
{
}

WireLogWatch::~WireLogWatch()
{
    m_stop = true;
    m_thread.join();
}

void WireLogWatch::Watch()
{
    std::streamoff lookedAt = 0;
    while (!m_stop) {
        std::ifstream log(m_wireLog);
        log.seekg(lookedAt);
        std::string line;
        // Only whole lines: the rest of one being written is looked at again next time.
        while (log.peek() != EOF && std::getline(log, line) && !log.eof()) {
            lookedAt = log.tellg();
            double seconds = 0;
            if (IsRead(line, &seconds) && line.find(m_text) != std::string::npos) {
                m_action();
                m_fired = true;
                return;
            }
        }
        SleepMs(kLookEveryMs);
    }
}

long QuietAfterMs(const std::string& wireLog, const std::string& text)
{
    std::ifstream log(wireLog);
    double writtenAt = -1;
    double seconds = 0;
    for (std::string line; std::getline(log, line);) {
        if (!IsRead(line, &seconds)) {
            continue;
        }
        if (writtenAt >= 0) {
            return static_cast<long>((seconds - writtenAt) * 1000);
        }
        if (line.find(text) != std::string::npos) {
            writtenAt = seconds;
        }
    }
    return -1;
}
