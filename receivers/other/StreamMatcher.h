#ifndef GNSS_RECEIVERS_OTHER_STREAMMATCHER_H
#define GNSS_RECEIVERS_OTHER_STREAMMATCHER_H

#include <cstddef>
#include <string>

// Looks for a text in bytes that arrive in pieces, among other bytes: the part matched so far is
// kept from one piece to the next. A mismatching byte restarts the match, and counts as its first
// character when it is one; that is exact for texts whose first character does not recur in
// them, such as "$>JAPP".
class StreamMatcher {
public:
    explicit StreamMatcher(std::string wanted);

    // True once the whole text has been seen, in this piece or across earlier ones.
    bool Feed(const char* bytes, int count);

private:
    bool Advance(char byte);

    std::string m_wanted;
    std::size_t m_matched = 0;
};

#endif
