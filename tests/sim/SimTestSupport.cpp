#include "SimTestSupport.h"

#include "SlaveLine.h"

#include <algorithm>
#include <cstdio>

GnssSim::SimOptions TestOptions(const std::string& receiver)
{
    GnssSim::SimOptions options;
    options.receiver = receiver;
    options.restartMs = kTestRestartMs;
    return options;
}

std::unique_ptr<GnssSim::Simulator> StartSimulator(const GnssSim::SimOptions& options)
{
    auto simulator = std::make_unique<GnssSim::Simulator>(options);
    std::string error;
    EXPECT_TRUE(simulator->Start(error)) << error;
    return simulator;
}

namespace {

// Bit by bit, as NovAtel documents it, rather than the simulator's byte-wise loop.
unsigned long BitwiseNovatelCrc(const std::string& bytes)
{
    unsigned long crc = 0;
    for (unsigned char byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320ul : crc >> 1;
        }
    }
    return crc & 0xFFFFFFFFul;
}

}

bool HasValidNovatelCrc(const std::string& line)
{
    const std::size_t hash = line.find('#');
    const std::size_t star = line.rfind('*');
    if (hash == std::string::npos || star == std::string::npos || star < hash || star + 9 > line.size()) {
        return false;
    }
    char expected[24];
    std::snprintf(expected, sizeof expected, "%08lx", BitwiseNovatelCrc(line.substr(hash + 1, star - hash - 1)));
    return line.substr(star + 1, 8) == expected;
}

bool HasValidNmeaChecksum(const std::string& sentence)
{
    const std::size_t star = sentence.rfind('*');
    if (sentence.empty() || sentence[0] != '$' || star == std::string::npos || star + 3 > sentence.size()) {
        return false;
    }
    unsigned checksum = 0;
    for (std::size_t i = 1; i < star; ++i) {
        checksum ^= static_cast<unsigned char>(sentence[i]);
    }
    char expected[8];
    std::snprintf(expected, sizeof expected, "%02X", checksum);
    return sentence.substr(star + 1, 2) == expected;
}

std::string ReplyTo(SlaveLine& line, const std::string& command)
{
    line.Write(command + "\r\n");
    const std::string received = line.ReadUntil("[COM1]", kReplyMs);
    const std::size_t start = received.find('<');
    if (start == std::string::npos) {
        return std::string();
    }
    return received.substr(start, received.find('\r', start) - start);
}

std::string NextLogLine(SlaveLine& line)
{
    for (int lines = 0; lines < 5; ++lines) {
        const std::string received = line.ReadLine(kReplyMs);
        if (received.find('#') != std::string::npos || received.empty()) {
            return received;
        }
    }
    return std::string();
}

std::string BodyField(const std::string& logLine, std::size_t index)
{
    const std::size_t start = logLine.find(';');
    const std::size_t end = logLine.rfind('*');
    if (start == std::string::npos || end == std::string::npos) {
        return std::string();
    }
    std::size_t fieldStart = start + 1;
    for (std::size_t field = 0; field < index; ++field) {
        fieldStart = logLine.find(',', fieldStart);
        if (fieldStart == std::string::npos || fieldStart > end) {
            return std::string();
        }
        ++fieldStart;
    }
    const std::size_t fieldEnd = std::min(logLine.find(',', fieldStart), end);
    return logLine.substr(fieldStart, fieldEnd - fieldStart);
}
