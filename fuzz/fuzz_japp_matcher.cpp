// The CSI probe's answer "$>JAPP" arrives in pieces, among other output. Fed piece by piece, the
// matcher must report the answer exactly when it occurs in the bytes received so far, and in the
// piece where it ends, as a plain search of all the bytes finds it.
//
// Input: the first byte is the cut mark; the rest are the bytes the receiver sent, cut into pieces
// at every cut mark (which is not itself sent). So "|$>J|APP\r\n" is "$>J" then "APP\r\n", and
// adjacent marks make an empty piece, as a read that brought nothing.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/FuzzProperty.h"
#include "receivers/other/StreamMatcher.h"

namespace {

constexpr char kAnswer[] = "$>JAPP";

std::vector<std::string> Pieces(const std::string& input)
{
    std::vector<std::string> pieces(1);
    for (std::size_t i = 1; i < input.size(); ++i) {
        if (input[i] == input[0]) {
            pieces.emplace_back();
        } else {
            pieces.back() += input[i];
        }
    }
    return pieces;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const std::vector<std::string> pieces =
        Pieces(std::string(reinterpret_cast<const char*>(data), size));
    StreamMatcher matcher(kAnswer);
    std::string received;
    for (const std::string& piece : pieces) {
        received += piece;
        const bool found = matcher.Feed(piece.data(), static_cast<int>(piece.size()));
        const bool occurs = received.find(kAnswer) != std::string::npos;
        RequireProperty(found == occurs, "the answer is found exactly when the bytes so far hold it",
                        received);
        if (found) {
            // The probe stops at the first match.
            break;
        }
    }
    return 0;
}
