#ifndef GNSS_TESTS_SERIAL_STALLEDUART_H
#define GNSS_TESTS_SERIAL_STALLEDUART_H

// A UART whose output does not leave: hardware flow control with CTS held low, a wedged USB
// adapter. A pseudo-terminal cannot play one (its output queue always reads empty and tcdrain()
// returns at once), so the test program that links this file has its own tcdrain(), tcflush(),
// close() and ioctl(), which play the stalled line for one descriptor and hand every other call to
// the C library:
// - TIOCOUTQ reports the bytes stuck in the output queue;
// - tcdrain() and close() wait for them as the kernel does, for ever, here for kHeldMs;
// - tcflush() of the output discards them, after which nothing waits.
namespace StalledUart {

// What "for ever" lasts here: far beyond any wait of the port, short enough that a port that
// waits for the line fails its test rather than hangs it.
constexpr int kHeldMs = 5000;

// From now on fd's output queue holds queuedBytes that never leave.
void Stall(int fd, int queuedBytes);

// Whether the stuck output was discarded (tcflush of the output queue).
bool OutputDiscarded();

// How often the output queue was looked at (TIOCOUTQ) since Stall.
int QueueLooks();

}  // namespace StalledUart

#endif
