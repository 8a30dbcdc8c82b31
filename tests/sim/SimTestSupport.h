#ifndef GNSS_TESTS_SIM_SIMTESTSUPPORT_H
#define GNSS_TESTS_SIM_SIMTESTSUPPORT_H

#include "serial/CComPort.h"
#include "tests/support/SimulatedReceiver.h"
#include "tests/support/TestTiming.h"

#include <gtest/gtest.h>

#include <string>

// Bounds a wait for bytes that the simulator sends at once; it only runs out when a test fails.
constexpr int kReplyMs = 2000;

// How long a silence must last before a test believes it.
constexpr int kSilenceMs = 300;

// Everything that arrives on the tool's side within timeoutMs, NUL bytes included; with until,
// only up to its first appearance. A hung-up line ends the read at once.
std::string ReadFor(CComPort& port, int timeoutMs, const std::string& until = "");

// Sends bytes exactly as given, NUL bytes included.
void Send(CComPort& port, const std::string& bytes);

// Sends a NovAtel command with its line end and returns the reply line ("<OK" or the error line)
// without its line end; "" when no reply came.
std::string ReplyTo(CComPort& port, const std::string& command);

// Whether a NovAtel log line carries the CRC of the bytes between '#' and '*', or an NMEA sentence
// the checksum of the bytes between '$' and '*'.
bool HasRightCheck(const std::string& line);

// Whether bytes could be wrong-speed noise: NUL bytes and bytes with the high bit set, never
// text or a line end.
bool IsNoise(const std::string& bytes);

#endif
