#ifndef GNSS_TESTS_SIM_SIMTESTSUPPORT_H
#define GNSS_TESTS_SIM_SIMTESTSUPPORT_H

#include "sim/Simulator.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

// Restarts in tests last this long: long enough to be measured apart from scheduling noise on a
// loaded machine, short enough to keep the cases fast.
const long kTestRestartMs = 400;

// Waits for a reply that the simulator sends at once; generous because the suite runs in
// parallel, under sanitizers and under qemu.
const int kReplyMs = 2000;

// How long a silence must last before a test believes it.
const int kSilenceMs = 300;

// Options for a receiver with short restarts.
GnssSim::SimOptions TestOptions(const std::string& receiver);

// A started simulator; the test fails at once when it cannot start.
std::unique_ptr<GnssSim::Simulator> StartSimulator(const GnssSim::SimOptions& options);

// Whether a NovAtel log line ("#NAME,...;body*crc" with or without a port prompt before it and a
// line end after it) carries the right CRC, checked with an independent bitwise CRC.
bool HasValidNovatelCrc(const std::string& line);

// Whether an NMEA sentence carries the right checksum.
bool HasValidNmeaChecksum(const std::string& sentence);


class SlaveLine;

// Sends a NovAtel command with its line end and returns the reply line ("<OK", or the error line)
// without line ends; "" when no reply came.
std::string ReplyTo(SlaveLine& line, const std::string& command);

// The next NovAtel log line, port prompt and line end included; "" when none came.
std::string NextLogLine(SlaveLine& line);

// Field `index` of the body of a NovAtel log line (the part between ';' and '*').
std::string BodyField(const std::string& logLine, std::size_t index);

#endif
