#ifndef GNSS_BENCH_JOBPOOL_H
#define GNSS_BENCH_JOBPOOL_H

#include <string>
#include <vector>

// One program run: its argument vector (the program's path first) and the files its standard
// output and error go to.
struct Job {
    std::vector<std::string> argv;
    std::string stdoutPath;
    std::string stderrPath;
};

// Runs jobs as child processes, a few at a time, and waits for them (in waitpid: the figures are
// of programs that sleep most of the time, and so does this).
class JobPool {
public:
    explicit JobPool(int parallel);

    // Starts the jobs in the order given, never more than `parallel` at once, and returns when all
    // have ended, with each job's exit status (128 plus the signal number when a signal ended it,
    // 127 when it could not be started).
    std::vector<int> RunAll(const std::vector<Job>& jobs) const;

private:
    int m_parallel;
};

#endif
