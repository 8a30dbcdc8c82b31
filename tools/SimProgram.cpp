#include "tools/SimProgram.h"

#include "sim/Simulator.h"
#include "sim/line/WireLog.h"
#include "sim/line/WireMeanings.h"
#include "sim/text/ByteText.h"
#include "sim/text/Checksums.h"
#include "sim/timeline/TimelineSvg.h"
#include "tools/ChildCommand.h"

#include <cstdio>
#include <fstream>

namespace {

const int kUsageStatus = 2;
const int kFailureStatus = 1;

// After the command has ended, what it wrote last is already on the line; the receiver needs a
// moment to take it in and answer before the summary is made.
const long kFinalQuietMs = 1000;

// Every NovAtel log in the bytes, with whether its CRC is right.
std::string CrcNotes(const std::string& bytes)
{
    std::string notes;
    for (std::size_t hash = bytes.find('#'); hash != std::string::npos; hash = bytes.find('#', hash + 1)) {
        const std::size_t star = bytes.find('*', hash);
        if (star == std::string::npos || star + 9 > bytes.size()) {
            break;
        }
        const std::string sent = bytes.substr(star + 1, 8);
        const bool right = sent == GnssSim::NovatelCrcText(GnssSim::NovatelCrc32(bytes.substr(hash + 1, star - hash - 1)));
        notes += std::string(" [") + bytes.substr(hash, std::min(bytes.find(',', hash), star) - hash) + " CRC " + sent +
                 (right ? " right]" : " WRONG]");
    }
    return notes;
}

bool IsStreamedLog(const GnssSim::WireLogEntry& entry)
{
    return entry.direction == GnssSim::WireDirection::Out && entry.meaning.rfind(GnssSim::kMeaningStreamedLog, 0) == 0;
}

std::string SummaryLine(const GnssSim::WireLogEntry& entry)
{
    char time[32];
    (void)std::snprintf(time, sizeof time, "%10.3f ", entry.seconds);
    std::string line = std::string(time) + GnssSim::WireDirectionName(entry.direction);
    line.resize(line.size() < 17 ? 17 : line.size(), ' ');
    if (!entry.bytes.empty()) {
        line += "\"" + GnssSim::EscapeBytes(entry.bytes) + "\"  ";
    }
    line += entry.meaning;
    if (entry.direction == GnssSim::WireDirection::Out) {
        line += CrcNotes(entry.bytes);
    }
    return line + "\n";
}

struct Counts {
    int lines = 0;
    int noise = 0;
    int answers = 0;
    int streamed = 0;
};

void Count(const GnssSim::WireLogEntry& entry, Counts& counts)
{
    if (entry.direction == GnssSim::WireDirection::Heard) {
        const bool line = entry.meaning.rfind(GnssSim::kMeaningLine, 0) == 0 ||
                          entry.meaning.rfind(GnssSim::kMeaningGarbledLine, 0) == 0;
        counts.lines += line ? 1 : 0;
        counts.noise += entry.meaning.rfind(GnssSim::kMeaningNoise, 0) == 0 ? 1 : 0;
    } else if (entry.direction == GnssSim::WireDirection::Out) {
        (IsStreamedLog(entry) ? counts.streamed : counts.answers) += 1;
    }
}

bool WriteTranscript(const std::string& path, const std::string& transcript, std::ostream& err)
{
    std::ofstream file(path, std::ios::out | std::ios::trunc);
    file << transcript;
    if (!file) {
        err << "gnss-sim: cannot write " << path << "\n";
        return false;
    }
    return true;
}

// The receiver and the command run against it, the command by its program's name.
std::string TimelineTitle(const SimProgramOptions& options)
{
    std::string title = options.sim.receiver;
    for (std::size_t i = 0; i < options.command.size(); ++i) {
        const std::string& word = options.command[i];
        title += (i == 0 ? ": " + word.substr(word.rfind('/') + 1) : " " + word);
    }
    return title;
}

bool WriteTimeline(const SimProgramOptions& options, const std::vector<std::string>& wireLog, std::ostream& err)
{
    std::vector<GnssSim::WireLogEntry> entries;
    for (const std::string& text : wireLog) {
        GnssSim::WireLogEntry entry;
        if (GnssSim::ParseWireLogLine(text, entry)) {
            entries.push_back(entry);
        }
    }
    return WriteTranscript(options.timelinePath,
                           GnssSim::TimelineSvg(GnssSim::ReadSession(entries), TimelineTitle(options)), err);
}

int RunCommand(const SimProgramOptions& options, GnssSim::Simulator& sim, std::ostream& err)
{
    const std::string port = sim.LinkPath().empty() ? sim.SlavePath() : sim.LinkPath();
    ChildCommand child;
    std::string error;
    if (!child.Start(options.command, {{"GNSS_SIM_PORT", port}, {"GNSS_SIM_PTY", sim.SlavePath()}}, error)) {
        err << "gnss-sim: " << error << "\n";
        return kFailureStatus;
    }
    const int status = child.Wait();
    sim.NoteEvent(std::string(GnssSim::kMeaningCommandEnded) + " with status " + std::to_string(status));
    return status;
}

int Serve(const SimProgramOptions& options, std::ostream& err)
{
    GnssSim::Simulator sim(options.sim);
    std::string error;
    if (!sim.Start(error)) {
        err << "gnss-sim: " << error << "\n";
        return kFailureStatus;
    }
    if (!options.quiet) {
        err << "gnss-sim: " << options.sim.receiver << " at " << sim.ReceiverBaud() << " baud on " << sim.SlavePath()
            << (sim.LinkPath().empty() ? std::string() : " (linked from " + sim.LinkPath() + ")") << "\n";
    }
    int status = 0;
    if (options.command.empty()) {
        WaitForInterrupt();
    } else {
        status = RunCommand(options, sim, err);
    }
    sim.WaitForQuiet(kFinalQuietMs);
    sim.Stop();
    if (!options.quiet) {
        err << SummariseWireLog(sim.WireLogLines());
    }
    bool written = options.heardPath.empty() || WriteTranscript(options.heardPath, sim.HeardTranscript(), err);
    written = (options.timelinePath.empty() || WriteTimeline(options, sim.WireLogLines(), err)) && written;
    return written || status != 0 ? status : kFailureStatus;
}

}

std::string SummariseWireLog(const std::vector<std::string>& wireLog)
{
    std::string summary;
    Counts counts;
    for (const std::string& text : wireLog) {
        GnssSim::WireLogEntry entry;
        if (!GnssSim::ParseWireLogLine(text, entry)) {
            continue;
        }
        Count(entry, counts);
        if (entry.direction != GnssSim::WireDirection::In && !IsStreamedLog(entry)) {
            summary += SummaryLine(entry);
        }
    }
    return summary + "gnss-sim: heard " + std::to_string(counts.lines) + " lines and " +
           std::to_string(counts.noise) + " runs of noise; sent " + std::to_string(counts.answers) + " answers and " +
           std::to_string(counts.streamed) + " streamed logs\n";
}

int RunSimProgram(const std::vector<std::string>& args, std::ostream& out, std::ostream& err)
{
    SimProgramOptions options;
    std::string error;
    if (!ParseSimCommandLine(args, options, out, error)) {
        err << "gnss-sim: " << error << "\nTry gnss-sim --help.\n";
        return kUsageStatus;
    }
    if (options.help) {
        return 0;
    }
    BlockProgramSignals();
    return Serve(options, err);
}
