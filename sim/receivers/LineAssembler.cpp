#include "sim/receivers/LineAssembler.h"

namespace GnssSim {

std::size_t LineAssembler::Take(const std::string& data, std::size_t pos)
{
    while (pos < data.size() && !m_complete) {
        const char byte = data[pos++];
        m_partial += byte;
        if (byte == '\n') {
            m_complete = true;
        } else if (m_partial.size() >= kMaxLine) {
            m_garbled = true;
            m_complete = true;
        }
    }
    return pos;
}

std::string LineAssembler::PopLine(bool& garbled)
{
    garbled = m_garbled;
    std::string line;
    line.swap(m_partial);
    m_garbled = false;
    m_complete = false;
    return line;
}

void LineAssembler::Clear()
{
    m_partial.clear();
    m_garbled = false;
    m_complete = false;
}

}
