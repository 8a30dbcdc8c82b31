#include "tests/support/ProcessRunner.h"

#include <sys/mman.h>
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

// Everything the program wrote to fd, one of its outputs.
std::string WrittenTo(int fd)
{
    std::string text;
    char buffer[4096];
    lseek(fd, 0, SEEK_SET);
    for (ssize_t n = 0; (n = read(fd, buffer, sizeof buffer)) > 0;) {
        text.append(buffer, static_cast<std::size_t>(n));
    }
    close(fd);
    return text;
}

// Runs executable (a path, or a name looked up on the PATH) with argv, argv[0] first, and the
// variables added to its environment, and collects what it printed.
ProcessResult RunProcess(const std::string& executable, const std::vector<std::string>& argv,
                         const ProgramEnvironment& variables)
{
    std::vector<char*> pointers;
    pointers.reserve(argv.size() + 1);
    for (const std::string& part : argv) {
        pointers.push_back(const_cast<char*>(part.c_str()));
    }
    pointers.push_back(nullptr);

    // The outputs are files in memory rather than pipes, so nothing has to be read while the
    // program runs.
    const int out = memfd_create("stdout", MFD_CLOEXEC);
    const int err = memfd_create("stderr", MFD_CLOEXEC);
    const pid_t child = out < 0 || err < 0 ? -1 : fork();
    if (child == 0) {
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        for (const std::string& variable : variables) {
            putenv(const_cast<char*>(variable.c_str()));
        }
        execvp(executable.c_str(), pointers.data());
        _exit(127);
    }
    ProcessResult result;
    int waitStatus = 0;
    if (child > 0 && waitpid(child, &waitStatus, 0) == child) {
        result.status = WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
    }
    result.out = WrittenTo(out);
    result.err = WrittenTo(err);
    return result;
}

}  // namespace

ProcessResult RunBuiltProgram(const std::string& program, const std::string& name,
                              const std::vector<std::string>& arguments,
                              const ProgramEnvironment& environment)
{
    std::vector<std::string> command = EmulatorCommand(program, name, environment);
    const bool native = command.empty();
    if (native) {
        command.push_back(name);
    }
    command.insert(command.end(), arguments.begin(), arguments.end());
    // Natively the variables are the program's own; the emulator's command passes them on.
    return native ? RunProcess(program, command, environment) : RunProcess(command.front(), command, {});
}

ProcessResult RunHostProgram(const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<std::string> command = {program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return RunProcess(program, command, {});
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
