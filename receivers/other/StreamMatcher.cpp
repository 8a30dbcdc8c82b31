#include "receivers/other/StreamMatcher.h"

#include <utility>

StreamMatcher::StreamMatcher(std::string wanted) : m_wanted(std::move(wanted)) {}

bool StreamMatcher::Feed(const char* bytes, int count)
{
    for (int i = 0; i < count; ++i) {
        if (Advance(bytes[i])) {
            return true;
        }
    }
    return false;
}

bool StreamMatcher::Advance(char byte)
{
    if (byte == m_wanted[m_matched]) {
        ++m_matched;
    } else {
        m_matched = (byte == m_wanted[0]) ? 1 : 0;
    }
    if (m_matched == m_wanted.size()) {
        m_matched = 0;
        return true;
    }
    return false;
}
