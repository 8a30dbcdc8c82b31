// Runs one program and measures it from outside: wall time on the monotonic clock from just before
// the fork to the return of wait4, the program's user and system CPU time and its peak resident set
// (ru_maxrss) as wait4 reports them for that one child. gnss-sim starts it as its command, so the
// variables given with --env (the control-device double's LD_PRELOAD) reach the measured program
// alone, not gnss-sim nor this wrapper.
//
//   run_meter --report FILE [--env NAME=VALUE]... -- PROGRAM [ARGUMENT...]
//
// The report file gets one "name value" pair a line:
//   wall_ms 1234.567 / user_ms 1.200 / system_ms 0.800 / maxrss_kb 2890 / exit 0 or signal 8
// The exit status is the program's (128 plus the signal number when a signal ended it), as a shell
// gives it, so that gnss-sim passes it on.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr int kUsageStatus = 2;
constexpr int kCannotRunStatus = 127;
constexpr int kSignalStatusBase = 128;

struct MeterOptions {
    std::string reportPath;
    std::vector<std::string> extraEnvironment;
    std::vector<std::string> command;
};

bool ParseOptions(int argc, char** argv, MeterOptions& options)
{
    int i = 1;
    for (; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        const std::string option = argv[i];
        if (i + 1 >= argc) {
            return false;
        }
        if (option == "--report") {
            options.reportPath = argv[++i];
        } else if (option == "--env") {
            options.extraEnvironment.emplace_back(argv[++i]);
        } else {
            return false;
        }
    }
    for (++i; i < argc; ++i) {
        options.command.emplace_back(argv[i]);
    }
    return !options.reportPath.empty() && !options.command.empty();
}

// Whatever the measured program needs is built before the fork, so that the time between the
// fork and the exec is the system's alone.
struct PreparedCommand {
    std::vector<std::string> environment;
    std::vector<char*> environmentPointers;
    std::vector<char*> arguments;
};

std::string VariableName(const std::string& entry)
{
    return entry.substr(0, entry.find('='));
}

void Prepare(const MeterOptions& options, PreparedCommand& prepared)
{
    for (char** variable = environ; *variable != nullptr; ++variable) {
        bool replaced = false;
        for (const std::string& extra : options.extraEnvironment) {
            replaced = replaced || VariableName(extra) == VariableName(*variable);
        }
        if (!replaced) {
            prepared.environment.emplace_back(*variable);
        }
    }
    prepared.environment.insert(prepared.environment.end(), options.extraEnvironment.begin(),
                                options.extraEnvironment.end());
    for (std::string& entry : prepared.environment) {
        prepared.environmentPointers.push_back(entry.data());
    }
    prepared.environmentPointers.push_back(nullptr);
    for (const std::string& argument : options.command) {
        prepared.arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    prepared.arguments.push_back(nullptr);
}

double MonotonicMs()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6;
}

double Ms(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1000.0 + static_cast<double>(time.tv_usec) / 1000.0;
}

bool WriteReport(const std::string& path, double wallMs, const rusage& usage, int status)
{
    std::FILE* report = std::fopen(path.c_str(), "w");
    if (report == nullptr) {
        return false;
    }
    (void)std::fprintf(report, "wall_ms %.3f\nuser_ms %.3f\nsystem_ms %.3f\nmaxrss_kb %ld\n", wallMs,
                 Ms(usage.ru_utime), Ms(usage.ru_stime), usage.ru_maxrss);
    if (WIFSIGNALED(status)) {
        (void)std::fprintf(report, "signal %d\n", WTERMSIG(status));
    } else {
        (void)std::fprintf(report, "exit %d\n", WEXITSTATUS(status));
    }
    return std::fclose(report) == 0;
}

}  // namespace

int main(int argc, char** argv)
{
    MeterOptions options;
    if (!ParseOptions(argc, argv, options)) {
        (void)std::fprintf(stderr,
                     "usage: run_meter --report FILE [--env NAME=VALUE]... -- PROGRAM [ARGUMENT...]\n");
        return kUsageStatus;
    }
    PreparedCommand prepared;
    Prepare(options, prepared);

    const double start = MonotonicMs();
    const pid_t child = fork();
    if (child == 0) {
        execvpe(prepared.arguments[0], prepared.arguments.data(),
                prepared.environmentPointers.data());
        (void)std::fprintf(stderr, "run_meter: cannot run ");
        std::perror(prepared.arguments[0]);
        _exit(kCannotRunStatus);
    }
    if (child < 0) {
        std::perror("run_meter: fork");
        return kCannotRunStatus;
    }
    int status = 0;
    rusage usage{};
    while (wait4(child, &status, 0, &usage) < 0 && errno == EINTR) {
    }
    const double wallMs = MonotonicMs() - start;
    if (!WriteReport(options.reportPath, wallMs, usage, status)) {
        (void)std::fprintf(stderr, "run_meter: cannot write %s\n", options.reportPath.c_str());
    }
    return WIFSIGNALED(status) ? kSignalStatusBase + WTERMSIG(status) : WEXITSTATUS(status);
}
