#include "tools/ChildCommand.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <pthread.h>
#include <system_error>
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

// Everything the child needs, prepared before the fork: the simulator's threads may hold the
// allocator's or the environment's lock at that moment, so the child must not allocate, nor call
// setenv, before it has run the command.
struct PreparedCommand {
    std::vector<std::string> environment;
    std::vector<char*> arguments;
    std::vector<char*> environmentPointers;
    std::string cannotRun;
};

void Prepare(const std::vector<std::string>& argv, const std::map<std::string, std::string>& extra,
             PreparedCommand& command)
{
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string entry = *variable;
        if (extra.count(entry.substr(0, entry.find('='))) == 0) {
            command.environment.push_back(entry);
        }
    }
    for (const auto& variable : extra) {
        command.environment.push_back(variable.first + "=" + variable.second);
    }
    for (std::string& entry : command.environment) {
        command.environmentPointers.push_back(entry.data());
    }
    command.environmentPointers.push_back(nullptr);
    command.arguments.reserve(argv.size() + 1);
    for (const std::string& argument : argv) {
        command.arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    command.arguments.push_back(nullptr);
    command.cannotRun = "gnss-sim: cannot run " + argv[0] + ": ";
}

void WriteToStandardError(const char* text, size_t length)
{
    if (write(STDERR_FILENO, text, length) < 0) {
        // Nothing more can be said.
    }
}

[[noreturn]] void RunChild(const PreparedCommand& command)
{
    const sigset_t signals = ProgramSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    execvpe(command.arguments[0], command.arguments.data(), command.environmentPointers.data());
    // strerrordesc_np only looks the text up: no allocation, no shared buffer.
    const char* reason = strerrordesc_np(errno);
    WriteToStandardError(command.cannotRun.data(), command.cannotRun.size());
    WriteToStandardError(reason, std::strlen(reason));
    WriteToStandardError("\n", 1);
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
    PreparedCommand command;
    Prepare(argv, environment, command);
    m_pid = fork();
    if (m_pid < 0) {
        error = "fork: " + std::generic_category().message(errno);
        return false;
    }
    if (m_pid == 0) {
        RunChild(command);
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
