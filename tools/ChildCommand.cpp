#include "tools/ChildCommand.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <pthread.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

// exec failed: the status a shell gives a command it cannot run.
const int kCannotRun = 127;
const int kSignalStatusBase = 128;

sigset_t ProgramSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGUSR1);
    return signals;
}

[[noreturn]] void RunChild(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment)
{
    const sigset_t signals = ProgramSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    for (const auto& variable : environment) {
        setenv(variable.first.c_str(), variable.second.c_str(), 1);
    }
    std::vector<char*> arguments;
    for (const std::string& argument : argv) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    const std::string message = "gnss-sim: cannot run " + argv[0] + ": " + std::strerror(errno) + "\n";
    if (write(STDERR_FILENO, message.data(), message.size()) < 0) {
        // Nothing more can be said.
    }
    _exit(kCannotRun);
}

int StatusOf(int waitStatus)
{
    if (WIFEXITED(waitStatus)) {
        return WEXITSTATUS(waitStatus);
    }
    return WIFSIGNALED(waitStatus) ? kSignalStatusBase + WTERMSIG(waitStatus) : 1;
}

}

void BlockProgramSignals()
{
    const sigset_t signals = ProgramSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void WaitForInterrupt()
{
    const sigset_t signals = ProgramSignals();
    int received = 0;
    do {
        sigwait(&signals, &received);
    } while (received == SIGUSR1);
}

bool ChildCommand::Start(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment,
                         std::string& error)
{
    m_pid = fork();
    if (m_pid < 0) {
        error = std::string("fork: ") + std::strerror(errno);
        return false;
    }
    if (m_pid == 0) {
        RunChild(argv, environment);
    }
    return true;
}

int ChildCommand::Wait()
{
    int waitStatus = 0;
    const pthread_t waiting = pthread_self();
    std::thread waiter([this, &waitStatus, waiting] {
        while (waitpid(m_pid, &waitStatus, 0) < 0 && errno == EINTR) {
        }
        pthread_kill(waiting, SIGUSR1);
    });
    const sigset_t signals = ProgramSignals();
    int received = 0;
    while (sigwait(&signals, &received) == 0 && received != SIGUSR1) {
        kill(m_pid, received);
    }
    waiter.join();
    return StatusOf(waitStatus);
}
