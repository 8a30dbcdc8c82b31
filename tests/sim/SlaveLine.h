#ifndef GNSS_TESTS_SIM_SLAVELINE_H
#define GNSS_TESTS_SIM_SLAVELINE_H

#include <string>

// The tool's end of the simulated line, driven with plain POSIX calls: raw mode, a speed, writes,
// and reads with a deadline. Test code only.
class SlaveLine {
public:
    SlaveLine(const std::string& path, int baud);
    ~SlaveLine();
    SlaveLine(const SlaveLine&) = delete;
    SlaveLine& operator=(const SlaveLine&) = delete;

    bool IsOpen() const { return m_fd >= 0; }
    void SetBaud(int baud);
    void Write(const std::string& bytes);

    // Bytes up to and including the next LF, or what arrived before the time ran out.
    std::string ReadLine(int timeoutMs);

    // Everything that arrives within ms.
    std::string ReadFor(int ms);

    // Reads until what arrived contains needle or the time runs out; returns all that arrived.
    std::string ReadUntil(const std::string& needle, int timeoutMs);

    // Whether a read failed (the line was hung up) since the line was opened.
    bool ReadFailed() const { return m_readFailed; }

    // Discards what arrived and was not read yet.
    void Flush();

private:
    // One byte, waiting at most until the deadline; false when none came.
    bool ReadByte(char& byte, long deadlineMs);

    int m_fd = -1;
    bool m_readFailed = false;
};

#endif
