#include "bench/JobPool.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <map>

namespace {

constexpr int kCannotRunStatus = 127;
constexpr int kSignalStatusBase = 128;

int ShellStatus(int status)
{
    return WIFSIGNALED(status) ? kSignalStatusBase + WTERMSIG(status) : WEXITSTATUS(status);
}

// Everything the child needs is made before the fork.
struct PreparedJob {
    std::vector<char*> arguments;
    int out = -1;
    int err = -1;
};

PreparedJob Prepare(const Job& job)
{
    PreparedJob prepared;
    for (const std::string& argument : job.argv) {
        prepared.arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    prepared.arguments.push_back(nullptr);
    prepared.out = open(job.stdoutPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    prepared.err = open(job.stderrPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    return prepared;
}

pid_t Start(const Job& job)
{
    PreparedJob prepared = Prepare(job);
    const pid_t child = fork();
    if (child == 0) {
        if (prepared.out < 0 || prepared.err < 0 || dup2(prepared.out, STDOUT_FILENO) < 0 ||
            dup2(prepared.err, STDERR_FILENO) < 0) {
            _exit(kCannotRunStatus);
        }
        const int input = open("/dev/null", O_RDONLY);
        if (input >= 0) {
            dup2(input, STDIN_FILENO);
        }
        execv(prepared.arguments[0], prepared.arguments.data());
        _exit(kCannotRunStatus);
    }
    for (const int descriptor : {prepared.out, prepared.err}) {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
    if (child < 0) {
        std::perror("figures: fork");
    }
    return child;
}

}  // namespace

JobPool::JobPool(int parallel) : m_parallel(parallel < 1 ? 1 : parallel) {}

std::vector<int> JobPool::RunAll(const std::vector<Job>& jobs) const
{
    std::vector<int> statuses(jobs.size(), kCannotRunStatus);
    std::map<pid_t, std::size_t> running;
    std::size_t next = 0;
    while (next < jobs.size() || !running.empty()) {
        while (next < jobs.size() && static_cast<int>(running.size()) < m_parallel) {
            const pid_t child = Start(jobs[next]);
            if (child > 0) {
                running[child] = next;
            }
            ++next;
        }
        if (running.empty()) {
            continue;
        }
        int status = 0;
        const pid_t ended = waitpid(-1, &status, 0);
        if (ended < 0) {
            if (errno == ECHILD) {
                running.clear();
            }
            continue;
        }
        const auto job = running.find(ended);
        if (job != running.end()) {
            statuses[job->second] = ShellStatus(status);
            running.erase(job);
        }
    }
    return statuses;
}
