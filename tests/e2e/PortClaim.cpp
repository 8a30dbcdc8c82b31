#include "tests/e2e/PortClaim.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <utility>

#include "util/Sleep.h"
#include "util/Stopwatch.h"

namespace {

// Another program's simulator holds a name for as long as its command runs: the README demo's dry
// run takes well under a second, a query of a slow receiver about ten.
constexpr long kForeignLinkPatienceMs = 30000;
// How often to look whether it has gone; a link has no event to wait for.
constexpr int kForeignLinkPollMs = 100;

enum class PortState { Missing, Link, DanglingLink, NotALink };

PortState StateOf(const std::string& port)
{
    struct stat entry {};
    if (lstat(port.c_str(), &entry) != 0) {
        return PortState::Missing;
    }
    if (!S_ISLNK(entry.st_mode)) {
        return PortState::NotALink;
    }
    struct stat target {};
    return stat(port.c_str(), &target) == 0 ? PortState::Link : PortState::DanglingLink;
}

std::string LinkTarget(const std::string& port)
{
    char target[PATH_MAX] = {};
    const ssize_t length = readlink(port.c_str(), target, sizeof target - 1);
    return length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string("?");
}

// A dangling link is a simulator's whose pseudo-terminal is gone: it was ended before it could
// remove its link.
void RemoveIfDangling(const std::string& port)
{
    if (StateOf(port) == PortState::DanglingLink) {
        unlink(port.c_str());
    }
}

bool WaitForForeignLinkToGo(const std::string& port)
{
    const Stopwatch waiting;
    while (StateOf(port) == PortState::Link) {
        if (waiting.ElapsedMs() >= kForeignLinkPatienceMs) {
            return false;
        }
        SleepMs(kForeignLinkPollMs);
    }
    return true;
}

}  // namespace

PortClaim::PortClaim(std::string port) : m_port(std::move(port))
{
}

PortClaim::~PortClaim()
{
    RemoveIfDangling(m_port);
}

bool PortClaim::Take(std::string& whyNot)
{
    const std::string folder = m_port.substr(0, m_port.rfind('/') + 1);
    if (access(folder.c_str(), W_OK) != 0) {
        whyNot = "cannot make links in " + folder + " (" + std::strerror(errno) +
                 "); the end-to-end scenarios run as root";
        return false;
    }
    RemoveIfDangling(m_port);
    if (StateOf(m_port) == PortState::NotALink) {
        whyNot = m_port + " exists and is not a simulator's link: a real port is not ours to use";
        return false;
    }
    if (!WaitForForeignLinkToGo(m_port)) {
        whyNot = m_port + " stayed linked to " + LinkTarget(m_port) + " by another program for " +
                 std::to_string(kForeignLinkPatienceMs / 1000) + " s";
        return false;
    }
    return true;
}
