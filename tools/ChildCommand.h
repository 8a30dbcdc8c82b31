#ifndef GNSS_TOOLS_CHILDCOMMAND_H
#define GNSS_TOOLS_CHILDCOMMAND_H

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

// The command gnss-sim runs against its line. The caller must block SIGINT, SIGTERM and SIGUSR1
// in every thread before any is started (BlockProgramSignals), so that Wait can take them with
// sigwait: an interrupt is passed on to the command, and a waiter thread reports the command's
// end with SIGUSR1.
class ChildCommand {
public:
    // Starts argv[0] (looked up in PATH) with the extra environment variables; false with the
    // reason when it could not be started.
    bool Start(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment,
               std::string& error);

    // Waits for the command to end and returns its exit status, or 128 plus the number of the
    // signal that ended it, as a shell reports it.
    int Wait();

private:
    pid_t m_pid = -1;
};

// Blocks the signals that the program takes with sigwait; returns the mask to restore in a child.
void BlockProgramSignals();

// Waits for SIGINT or SIGTERM.
void WaitForInterrupt();

#endif
