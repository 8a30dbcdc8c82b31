#ifndef GNSS_SIM_RECEIVERS_LINEASSEMBLER_H
#define GNSS_SIM_RECEIVERS_LINEASSEMBLER_H

#include <string>

namespace GnssSim {

// A receiver's command input: collects bytes up to and including LF.
//
// Bytes sent at the wrong speed reach the receiver's UART as framing errors, which it drops, so
// noise between commands leaves nothing behind. Noise in the middle of a command means the
// command lost characters: the line is unreadable, which the receiver finds out when it ends.
class LineAssembler {
public:
    // Takes bytes from data, starting at pos, up to and including the next LF (or to the end of
    // data); returns the position after the bytes taken. When an LF was taken, or the line grew
    // longer than the receiver's input buffer, a complete line is ready.
    std::size_t Take(const std::string& data, std::size_t pos);

    bool HasLine() const { return m_complete; }

    // The complete line; garbled tells whether noise came before it on the same line.
    std::string PopLine(bool& garbled);

    // Noise arrived: a line under way has lost characters.
    void OnNoise() { m_garbled = m_garbled || !m_partial.empty(); }
    void Clear();

private:
    // Command lines are short; a line that never ends is cut here and treated as unreadable.
    static const std::size_t kMaxLine = 1024;

    std::string m_partial;
    bool m_garbled = false;
    bool m_complete = false;
};

}

#endif
