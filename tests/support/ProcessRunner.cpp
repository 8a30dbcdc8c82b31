#include "tests/support/ProcessRunner.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

namespace {

// On a cross build, the start of the program's command line: the emulator, told the name to show
// through its -0 option and the program's own variables through -E, then the program. Empty
// natively.
std::vector<std::string> EmulatorCommand(const std::string& program, const std::string& name,
                                         const ProgramEnvironment& environment)
{
    std::vector<std::string> command;
    std::istringstream emulator(GNSS_TEST_EMULATOR);
    for (std::string word; emulator >> word;) {
        command.push_back(word);
    }
    if (!command.empty()) {
        command.insert(command.end(), {"-0", name});
        for (const std::string& variable : environment) {
            command.insert(command.end(), {"-E", variable});
        }
        command.push_back(program);
    }
    return command;
}

// Reads both pipes until the child closes them; poll sleeps until either has data.
void CollectOutput(int outFd, int errFd, ProcessResult& result)
{
    pollfd fds[2] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}};
    std::string* sinks[2] = {&result.out, &result.err};
    while (fds[0].fd >= 0 || fds[1].fd >= 0) {
        if (poll(fds, 2, -1) < 0) {
            continue;
        }
        for (int i = 0; i < 2; ++i) {
            if (fds[i].revents == 0) {
                continue;
            }
            char buffer[4096];
            const ssize_t n = read(fds[i].fd, buffer, sizeof buffer);
            if (n > 0) {
                sinks[i]->append(buffer, static_cast<size_t>(n));
            } else {
                fds[i].fd = -1;
            }
        }
    }
}

}  // namespace

ProcessResult RunBuiltProgram(const std::string& program, const std::string& name,
                              const std::vector<std::string>& arguments,
                              const ProgramEnvironment& environment)
{
    std::vector<std::string> command = EmulatorCommand(program, name, environment);
    const bool native = command.empty();
    const std::string executable = native ? program : command.front();
    if (native) {
        command.push_back(name);
    }
    command.insert(command.end(), arguments.begin(), arguments.end());

    int outPipe[2];
    int errPipe[2];
    ProcessResult result;
    if (pipe(outPipe) != 0 || pipe(errPipe) != 0) {
        return result;
    }
    const pid_t child = fork();
    if (child == 0) {
        dup2(outPipe[1], STDOUT_FILENO);
        dup2(errPipe[1], STDERR_FILENO);
        close(outPipe[0]);
        close(errPipe[0]);
        std::vector<char*> argv;
        for (const std::string& part : command) {
            argv.push_back(const_cast<char*>(part.c_str()));
        }
        argv.push_back(nullptr);
        // Natively the variables are the program's own; the emulator's command passed them on.
        for (const std::string& variable : environment) {
            if (native) {
                putenv(const_cast<char*>(variable.c_str()));
            }
        }
        execvp(executable.c_str(), argv.data());
        _exit(127);
    }
    close(outPipe[1]);
    close(errPipe[1]);
    CollectOutput(outPipe[0], errPipe[0], result);
    close(outPipe[0]);
    close(errPipe[0]);
    int waitStatus = 0;
    waitpid(child, &waitStatus, 0);
    result.status = WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
    return result;
}

std::vector<std::string> BuiltProgramCommand(const std::string& program, const std::string& name,
                                             const std::vector<std::string>& arguments,
                                             const ProgramEnvironment& environment)
{
    std::vector<std::string> command = EmulatorCommand(program, name, environment);
    if (command.empty()) {
        command.push_back("env");
        command.insert(command.end(), environment.begin(), environment.end());
        command.push_back(program);
    }
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}
