#ifndef GNSS_BENCH_RUNRECORD_H
#define GNSS_BENCH_RUNRECORD_H

#include <string>

// What one measured run of gnss-setup left in its folder, read back.
struct RunRecord {
    bool measured = false;  // run_meter's report was there and complete
    double wallMs = 0.0;
    double cpuMs = 0.0;     // user + system
    long maxRssKb = 0;
    int exitStatus = -1;    // -1 when a signal ended the run
    int signal = 0;

    // From run_meter's report (see RunMeter.cpp).
    static RunRecord FromMeterReport(const std::string& path);
};

// The number of system calls in strace -c's summary ("total" line); -1 when there is none.
long StraceCallCount(const std::string& path);

// The bytes the simulated receiver sent: the "out" lines of gnss-sim's wire log; -1 without a log.
long ReceivedBytes(const std::string& wireLogPath);

// The first line of a file, "" when it is empty or missing.
std::string FirstLine(const std::string& path);

#endif
