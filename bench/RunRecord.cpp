#include "bench/RunRecord.h"

#include "sim/line/WireLog.h"

#include <fstream>
#include <map>
#include <sstream>
#include <vector>

RunRecord RunRecord::FromMeterReport(const std::string& path)
{
    std::ifstream report(path);
    std::map<std::string, double> values;
    std::string name;
    double value = 0.0;
    while (report >> name >> value) {
        values[name] = value;
    }
    RunRecord record;
    const bool ended = values.count("exit") != 0 || values.count("signal") != 0;
    record.measured = ended && values.count("wall_ms") != 0 && values.count("maxrss_kb") != 0;
    record.wallMs = values["wall_ms"];
    record.cpuMs = values["user_ms"] + values["system_ms"];
    record.maxRssKb = static_cast<long>(values["maxrss_kb"]);
    record.signal = static_cast<int>(values["signal"]);
    record.exitStatus = record.signal != 0 ? -1 : static_cast<int>(values["exit"]);
    return record;
}

long StraceCallCount(const std::string& path)
{
    // % time, seconds, usecs/call, calls, [errors,] syscall: the calls are the fourth column.
    std::ifstream summary(path);
    std::string line;
    while (std::getline(summary, line)) {
        std::istringstream words(line);
        std::vector<std::string> columns;
        for (std::string word; words >> word;) {
            columns.push_back(word);
        }
        if (columns.size() >= 5 && columns.back() == "total") {
            return std::stol(columns[3]);
        }
    }
    return -1;
}

long ReceivedBytes(const std::string& wireLogPath)
{
    std::ifstream log(wireLogPath);
    if (!log) {
        return -1;
    }
    long bytes = 0;
    std::string line;
    GnssSim::WireLogEntry entry;
    while (std::getline(log, line)) {
        if (GnssSim::ParseWireLogLine(line, entry) && entry.direction == GnssSim::WireDirection::Out) {
            bytes += static_cast<long>(entry.bytes.size());
        }
    }
    return bytes;
}

std::string FirstLine(const std::string& path)
{
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}
