// Measures whole runs of the built gnss-setup against gnss-sim, mode by mode and receiver family by
// receiver family, and writes the results as Markdown: wall time beside the sum of the waits each
// run is meant to make (bench/FigureCells.cpp derives the sums), CPU time, system calls per byte
// received and peak resident set. scripts/figures builds what it needs, runs it and puts the
// results into docs/performance.md.
//
//   gnss_figures --build DIR --source DIR --markdown FILE --verdicts FILE [--runs DIR] [--jobs N]
//                [--repeat N] [--only TEXT]
//
// FILE of --markdown gets the table of runs, the terms of the waits and how long the runs took;
// FILE of --verdicts a list of the goals with whether the runs met them.
//
// Every run is its own process tree: scripts/private-dev (a private /dev, so runs can go in
// parallel, each with its own /dev/ttyO1), gnss-sim playing the family's receiver on a
// pseudo-terminal linked there, and as its command run_meter, which starts gnss-setup with the
// control-device double preloaded and reports wall time, CPU time and ru_maxrss. Runs whose waits
// are short are repeated (--repeat, 3 by default) and their median is reported. A separate run per
// cell goes under strace -c (the tool alone, double preloaded) for the system-call count, and its
// wire log gives the bytes the receiver sent in that same run.

#include "bench/FigureCells.h"
#include "bench/JobPool.h"
#include "bench/RunRecord.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace {

// The aims, as for the single NovAtel operations in novatel_bench: no more than 30 ms and 2 % over
// the waits; asleep nearly all the time while waiting; small enough for the console.
constexpr double kAllowedOverrunMs = 30.0;
constexpr double kAllowedOverrunShare = 0.02;
constexpr double kAllowedCpuShare = 0.01;
constexpr long kAllowedRssKb = 3L * 1024;
// A run with less waiting than this is mostly process start-up; its CPU share says nothing about
// sleeping and is shown but not judged.
constexpr long kCpuJudgedFromWaitsMs = 1000;
// Runs with less waiting than this are quick enough to repeat.
constexpr long kRepeatBelowWaitsMs = 3000;
// A restarted simulated receiver is back after this: the receiver's own boot time is not a wait
// of the tool's.
const char* const kRestartMs = "1";
constexpr int kSigfpe = 8;

struct FiguresOptions {
    std::string buildDir;
    std::string sourceDir;
    std::string runsDir;
    std::string markdownPath;
    std::string verdictsPath;
    int jobs = 3;
    int repeat = 3;
    std::string only;
};

bool ParseOptions(int argc, char** argv, FiguresOptions& options)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string name = argv[i];
        const std::string value = argv[i + 1];
        if (name == "--build") {
            options.buildDir = value;
        } else if (name == "--source") {
            options.sourceDir = value;
        } else if (name == "--runs") {
            options.runsDir = value;
        } else if (name == "--markdown") {
            options.markdownPath = value;
        } else if (name == "--verdicts") {
            options.verdictsPath = value;
        } else if (name == "--jobs") {
            options.jobs = std::stoi(value);
        } else if (name == "--repeat") {
            options.repeat = std::stoi(value);
        } else if (name == "--only") {
            options.only = value;
        } else {
            return false;
        }
    }
    if (options.runsDir.empty()) {
        options.runsDir = options.buildDir + "/figure-runs";
    }
    return argc % 2 == 1 && !options.buildDir.empty() && !options.sourceDir.empty() &&
           !options.markdownPath.empty() && !options.verdictsPath.empty();
}

void MakeFolder(const std::string& path)
{
    for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        mkdir(path.substr(0, slash).c_str(), 0755);
        if (slash == std::string::npos) {
            return;
        }
    }
}

struct Programs {
    std::string privateDev;
    std::string sim;
    std::string meter;
    std::string tool;
    std::string ctlDouble;
};

Programs FindPrograms(const FiguresOptions& options)
{
    return {options.sourceDir + "/scripts/private-dev", options.buildDir + "/tools/gnss-sim",
            options.buildDir + "/bench/run_meter", options.buildDir + "/app/gnss-setup",
            options.buildDir + "/tests/driver/libzrgps_ctl_double.so"};
}

// One run of a cell: measured by run_meter, or counted by strace.
struct CellRun {
    std::size_t cell;
    bool traced;
    std::string folder;
};

std::vector<std::string> SimulatorPart(const Programs& programs, const FigureCell& cell,
                                       const std::string& folder)
{
    return {programs.privateDev, programs.sim, "--quiet", "--receiver", cell.receiver,
            "--restart-ms", kRestartMs, "--link", kFigurePort, "--log", folder + "/wire.log", "--"};
}

Job MakeJob(const Programs& programs, const FigureCell& cell, const CellRun& run)
{
    Job job{SimulatorPart(programs, cell, run.folder), run.folder + "/stdout.txt",
            run.folder + "/stderr.txt"};
    const std::string preload = "LD_PRELOAD=" + programs.ctlDouble;
    const std::string record = "ZRGPS_CTL_RECORD=" + run.folder + "/driver.txt";
    const std::vector<std::string> wrapper =
        run.traced ? std::vector<std::string>{"/usr/bin/strace", "-c", "-o", run.folder + "/strace.txt",
                                              "-E", preload, "-E", record}
                   : std::vector<std::string>{programs.meter, "--report", run.folder + "/meter.txt",
                                              "--env", preload, "--env", record, "--"};
    job.argv.insert(job.argv.end(), wrapper.begin(), wrapper.end());
    job.argv.push_back(programs.tool);
    job.argv.insert(job.argv.end(), cell.arguments.begin(), cell.arguments.end());
    return job;
}

std::vector<CellRun> PlanRuns(const std::vector<FigureCell>& cells, const FiguresOptions& options)
{
    std::vector<CellRun> runs;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string folder = options.runsDir + "/" + cells[i].Id();
        const int repeat = cells[i].WaitsMs() < kRepeatBelowWaitsMs ? options.repeat : 1;
        for (int n = 1; n <= repeat; ++n) {
            runs.push_back({i, false, folder + "/run" + std::to_string(n)});
        }
        runs.push_back({i, true, folder + "/strace"});
    }
    // The longest first, so that the short ones fill the gaps at the end.
    std::stable_sort(runs.begin(), runs.end(), [&](const CellRun& a, const CellRun& b) {
        return cells[a.cell].WaitsMs() > cells[b.cell].WaitsMs();
    });
    return runs;
}

double Median(std::vector<double> values)
{
    if (values.empty()) {
        return 0.0;
    }
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2.0;
}

struct CellFigures {
    int runs = 0;
    bool complete = false;
    double wallMs = 0.0;
    double cpuMs = 0.0;
    long maxRssKb = 0;
    std::string result;
    long calls = -1;
    long bytes = -1;
};

// "0", "SIGFPE", or the status with the tool's first message.
std::string ResultText(const RunRecord& record, const std::string& folder)
{
    if (record.signal == kSigfpe) {
        return "SIGFPE";
    }
    if (record.signal != 0) {
        return "signal " + std::to_string(record.signal);
    }
    std::string text = std::to_string(record.exitStatus);
    if (record.exitStatus != 0) {
        std::string message = FirstLine(folder + "/stderr.txt");
        message = message.empty() ? FirstLine(folder + "/stdout.txt") : message;
        text += message.empty() ? "" : ": \"" + message + "\"";
    }
    return text;
}

CellFigures Summarise(const std::vector<CellRun>& runs, std::size_t cell)
{
    CellFigures figures;
    std::vector<double> walls;
    std::vector<double> cpus;
    std::set<std::string> results;
    for (const CellRun& run : runs) {
        if (run.cell != cell) {
            continue;
        }
        if (run.traced) {
            figures.calls = StraceCallCount(run.folder + "/strace.txt");
            figures.bytes = ReceivedBytes(run.folder + "/wire.log");
            continue;
        }
        const RunRecord record = RunRecord::FromMeterReport(run.folder + "/meter.txt");
        ++figures.runs;
        if (!record.measured) {
            continue;
        }
        walls.push_back(record.wallMs);
        cpus.push_back(record.cpuMs);
        figures.maxRssKb = std::max(figures.maxRssKb, record.maxRssKb);
        results.insert(ResultText(record, run.folder));
    }
    figures.complete = !walls.empty() && static_cast<int>(walls.size()) == figures.runs;
    figures.wallMs = Median(walls);
    figures.cpuMs = Median(cpus);
    for (const std::string& result : results) {
        figures.result += (figures.result.empty() ? "" : " / ") + result;
    }
    return figures;
}

std::string Fixed(double value, int decimals)
{
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

bool OnTime(const FigureCell& cell, const CellFigures& figures)
{
    const double waits = static_cast<double>(cell.WaitsMs());
    return figures.wallMs - waits <= kAllowedOverrunMs + kAllowedOverrunShare * waits;
}

double CpuShare(const CellFigures& figures)
{
    return figures.wallMs > 0.0 ? figures.cpuMs / figures.wallMs : 0.0;
}

bool CpuJudged(const FigureCell& cell)
{
    return cell.WaitsMs() >= kCpuJudgedFromWaitsMs;
}

std::string YesNo(bool met)
{
    return met ? "yes" : "**no**";
}

std::string CallsPerByte(const CellFigures& figures)
{
    if (figures.calls < 0) {
        return "?";
    }
    return figures.bytes > 0 ? Fixed(static_cast<double>(figures.calls) / static_cast<double>(figures.bytes), 2)
                             : "–";
}

void WriteTable(std::ostream& out, const std::vector<FigureCell>& cells,
                const std::vector<CellFigures>& figures)
{
    out << "| mode | receiver | result | intended waits (ms) | wall (ms) | over (ms) | on time | "
           "CPU (ms) | CPU % | system calls | bytes received | calls per byte | peak RSS (KB) |\n"
        << "|---|---|---|---|---:|---:|---|---:|---:|---:|---:|---:|---:|\n";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const FigureCell& cell = cells[i];
        const CellFigures& f = figures[i];
        if (!f.complete) {
            out << "| " << cell.mode << " | " << cell.family << " | not measured (see " << cell.Id()
                << ") | | | | | | | | | | |\n";
            continue;
        }
        const std::string waits =
            cell.waits.size() > 1 ? cell.WaitsFormula() + " = " + std::to_string(cell.WaitsMs())
                                  : cell.WaitsFormula();
        const std::string runs = f.runs > 1 ? " (median of " + std::to_string(f.runs) + ")" : "";
        const std::string cpuShare = Fixed(100.0 * CpuShare(f), 2) + (CpuJudged(cell) ? "" : " (not judged)");
        out << "| " << cell.mode << " | " << cell.family << " | " << f.result << " | " << waits
            << " | " << Fixed(f.wallMs, 1) << runs << " | "
            << Fixed(f.wallMs - static_cast<double>(cell.WaitsMs()), 1) << " | "
            << YesNo(OnTime(cell, f)) << " | " << Fixed(f.cpuMs, 1) << " | " << cpuShare << " | "
            << (f.calls < 0 ? "?" : std::to_string(f.calls)) << " | "
            << (f.bytes < 0 ? "?" : std::to_string(f.bytes)) << " | " << CallsPerByte(f) << " | "
            << f.maxRssKb << " |\n";
    }
}

void WriteLegend(std::ostream& out, const std::vector<FigureCell>& cells)
{
    std::vector<std::string> seen;
    out << "The terms of the intended waits:\n\n";
    for (const FigureCell& cell : cells) {
        for (const WaitTerm& term : cell.waits) {
            if (std::find(seen.begin(), seen.end(), term.name) == seen.end()) {
                seen.emplace_back(term.name);
                out << "- " << term.name << " (" << term.ms << " ms): " << term.reason << ".\n";
            }
        }
    }
    out << "\n";
}

struct Verdicts {
    int rows = 0;
    int onTime = 0;
    std::vector<std::string> late;
    int cpuJudged = 0;
    int cpuQuiet = 0;
    std::vector<std::string> busy;
    double maxJudgedCpuShare = 0.0;
    long maxRssKb = 0;
    std::string maxRssRow;
    std::vector<double> callsPerByte;
};

std::string RowName(const FigureCell& cell)
{
    return cell.mode + " / " + cell.family;
}

Verdicts Judge(const std::vector<FigureCell>& cells, const std::vector<CellFigures>& figures)
{
    Verdicts verdicts;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const CellFigures& f = figures[i];
        if (!f.complete) {
            continue;
        }
        ++verdicts.rows;
        if (OnTime(cells[i], f)) {
            ++verdicts.onTime;
        } else {
            verdicts.late.push_back(RowName(cells[i]) + " (" +
                                    Fixed(f.wallMs - static_cast<double>(cells[i].WaitsMs()), 1) + " ms over)");
        }
        if (CpuJudged(cells[i])) {
            ++verdicts.cpuJudged;
            verdicts.maxJudgedCpuShare = std::max(verdicts.maxJudgedCpuShare, CpuShare(f));
            if (CpuShare(f) < kAllowedCpuShare) {
                ++verdicts.cpuQuiet;
            } else {
                verdicts.busy.push_back(RowName(cells[i]));
            }
        }
        if (f.maxRssKb > verdicts.maxRssKb) {
            verdicts.maxRssKb = f.maxRssKb;
            verdicts.maxRssRow = RowName(cells[i]);
        }
        if (f.calls >= 0 && f.bytes > 0) {
            verdicts.callsPerByte.push_back(static_cast<double>(f.calls) / static_cast<double>(f.bytes));
        }
    }
    return verdicts;
}

std::string List(const std::vector<std::string>& items)
{
    std::string text;
    for (const std::string& item : items) {
        text += (text.empty() ? "" : "; ") + item;
    }
    return text;
}

std::string Met(bool met)
{
    return met ? "met" : "**not met**";
}

void WriteVerdicts(std::ostream& out, const Verdicts& v)
{
    out << "- Wall time within 2 % and 30 ms of the intended waits: " << Met(v.late.empty()) << " in "
        << v.onTime << " of " << v.rows << " rows"
        << (v.late.empty() ? "." : "; over: " + List(v.late) + ".") << "\n";
    out << "- CPU time under 1 % of wall time while waiting (rows with at least " << kCpuJudgedFromWaitsMs
        << " ms of intended waits): " << Met(v.busy.empty()) << " in " << v.cpuQuiet << " of "
        << v.cpuJudged << " rows, the highest " << Fixed(100.0 * v.maxJudgedCpuShare, 2) << " %"
        << (v.busy.empty() ? "." : "; over: " + List(v.busy) + ".") << "\n";
    if (!v.callsPerByte.empty()) {
        out << "- System calls per received byte (no goal): from "
            << Fixed(*std::min_element(v.callsPerByte.begin(), v.callsPerByte.end()), 2) << " to "
            << Fixed(*std::max_element(v.callsPerByte.begin(), v.callsPerByte.end()), 2)
            << ", median " << Fixed(Median(v.callsPerByte), 2) << ".\n";
    }
    out << "- Peak RSS under 3 MB (3072 KB): " << Met(v.maxRssKb < kAllowedRssKb) << "; the largest is "
        << v.maxRssKb << " KB (" << v.maxRssRow << ").\n";
}

double MonotonicSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

std::vector<FigureCell> SelectedCells(const std::string& only)
{
    std::vector<FigureCell> cells;
    for (const FigureCell& cell : FigureCells()) {
        if (cell.Id().find(only) != std::string::npos) {
            cells.push_back(cell);
        }
    }
    return cells;
}

}  // namespace

int main(int argc, char** argv)
{
    FiguresOptions options;
    if (!ParseOptions(argc, argv, options)) {
        (void)std::fprintf(stderr, "usage: gnss_figures --build DIR --source DIR --markdown FILE --verdicts FILE "
                             "[--runs DIR] [--jobs N] [--repeat N] [--only TEXT]\n");
        return 2;
    }
    const Programs programs = FindPrograms(options);
    const std::vector<FigureCell> cells = SelectedCells(options.only);
    const std::vector<CellRun> runs = PlanRuns(cells, options);
    std::vector<Job> jobs;
    for (const CellRun& run : runs) {
        MakeFolder(run.folder);
        jobs.push_back(MakeJob(programs, cells[run.cell], run));
    }
    (void)std::fprintf(stderr, "figures: %zu cells, %zu runs, %d at once\n", cells.size(), runs.size(),
                 options.jobs);
    const double start = MonotonicSeconds();
    JobPool(options.jobs).RunAll(jobs);
    const double seconds = MonotonicSeconds() - start;

    std::vector<CellFigures> figures;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        figures.push_back(Summarise(runs, i));
    }
    std::ofstream verdicts(options.verdictsPath);
    WriteVerdicts(verdicts, Judge(cells, figures));
    std::ofstream out(options.markdownPath);
    WriteTable(out, cells, figures);
    out << "\n";
    WriteLegend(out, cells);
    out << "These " << runs.size() << " runs (" << cells.size() << " cells; runs with less than "
        << kRepeatBelowWaitsMs << " ms of intended waits " << options.repeat
        << " times, the others once; one more run per cell under strace) took " << Fixed(seconds, 0)
        << " s, " << options.jobs << " at once.\n";
    (void)std::fprintf(stderr, "figures: runs took %.0f s\n", seconds);
    return out && verdicts ? 0 : 1;
}
