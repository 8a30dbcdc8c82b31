#include "tests/support/ProcessRunner.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

namespace {

std::vector<std::string> EmulatorCommand()
{
    std::vector<std::string> command;
    std::istringstream emulator(GNSS_TEST_EMULATOR);
    std::string part;
    while (emulator >> part) {
        command.push_back(part);
    }
    return command;
}

// The program's argv: the program path under an emulator (which is told the name to show through
// its -0 option and the program's own variables through -E), the program's own name otherwise.
std::vector<std::string> CommandLineFor(const std::string& program, const std::string& name,
                                        const std::vector<std::string>& arguments,
                                        const ProgramEnvironment& environment)
{
    std::vector<std::string> command = EmulatorCommand();
    if (command.empty()) {
        command.push_back(name);
    } else {
        command.insert(command.end(), {"-0", name});
        for (const std::string& variable : environment) {
            command.insert(command.end(), {"-E", variable});
        }
        command.push_back(program);
    }
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

// Natively the variables are the program's own; under the emulator CommandLineFor passed them on.
void AddNativeEnvironment(const ProgramEnvironment& environment)
{
    if (!EmulatorCommand().empty()) {
        return;
    }
    for (const std::string& variable : environment) {
        const std::size_t equals = variable.find('=');
        setenv(variable.substr(0, equals).c_str(),
               equals == std::string::npos ? "" : variable.c_str() + equals + 1, 1);
    }
}

[[noreturn]] void ExecInChild(const std::string& executable,
                              const std::vector<std::string>& command,
                              const ProgramEnvironment& environment, int outFd, int errFd)
{
    dup2(outFd, STDOUT_FILENO);
    dup2(errFd, STDERR_FILENO);
    AddNativeEnvironment(environment);
    std::vector<char*> argv;
    for (const std::string& part : command) {
        argv.push_back(const_cast<char*>(part.c_str()));
    }
    argv.push_back(nullptr);
    execvp(executable.c_str(), argv.data());
    _exit(127);
}

// Reads both pipes until the child closes them; poll sleeps until either has data.
void CollectOutput(int outFd, int errFd, ProcessResult& result)
{
    pollfd fds[2] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}};
    std::string* sinks[2] = {&result.out, &result.err};
    int open = 2;
    while (open > 0) {
        if (poll(fds, 2, -1) < 0) {
            continue;
        }
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd < 0 || fds[i].revents == 0) {
                continue;
            }
            char buffer[4096];
            const ssize_t n = read(fds[i].fd, buffer, sizeof buffer);
            if (n > 0) {
                sinks[i]->append(buffer, static_cast<size_t>(n));
            } else {
                fds[i].fd = -1;
                --open;
            }
        }
    }
}

int StatusOf(int waitStatus)
{
    if (WIFEXITED(waitStatus)) {
        return WEXITSTATUS(waitStatus);
    }
    return 128 + WTERMSIG(waitStatus);
}

}  // namespace

ProcessResult RunBuiltProgram(const std::string& program, const std::string& name,
                              const std::vector<std::string>& arguments)
{
    return RunBuiltProgram(program, name, arguments, {});
}

ProcessResult RunBuiltProgram(const std::string& program, const std::string& name,
                              const std::vector<std::string>& arguments,
                              const ProgramEnvironment& environment)
{
    const std::vector<std::string> emulator = EmulatorCommand();
    const std::string executable = emulator.empty() ? program : emulator.front();
    const std::vector<std::string> command = CommandLineFor(program, name, arguments, environment);

    int outPipe[2];
    int errPipe[2];
    ProcessResult result;
    if (pipe(outPipe) != 0 || pipe(errPipe) != 0) {
        return result;
    }
    const pid_t child = fork();
    if (child == 0) {
        close(outPipe[0]);
        close(errPipe[0]);
        ExecInChild(executable, command, environment, outPipe[1], errPipe[1]);
    }
    close(outPipe[1]);
    close(errPipe[1]);
    CollectOutput(outPipe[0], errPipe[0], result);
    close(outPipe[0]);
    close(errPipe[0]);
    int waitStatus = 0;
    waitpid(child, &waitStatus, 0);
    result.status = StatusOf(waitStatus);
    return result;
}

std::vector<std::string> BuiltProgramCommand(const std::string& program, const std::string& name,
                                             const std::vector<std::string>& arguments,
                                             const ProgramEnvironment& environment)
{
    if (!EmulatorCommand().empty()) {
        return CommandLineFor(program, name, arguments, environment);
    }
    std::vector<std::string> command = {"env"};
    command.insert(command.end(), environment.begin(), environment.end());
    command.push_back(program);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}
