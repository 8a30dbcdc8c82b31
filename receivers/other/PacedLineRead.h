#ifndef GNSS_RECEIVERS_OTHER_PACEDLINEREAD_H
#define GNSS_RECEIVERS_OTHER_PACEDLINEREAD_H

class CComPort;

// The port's ReadUntil with LF as terminator, for loops that keep reading until a budget is
// spent. A port that fails at once (a hung-up or closed line) would turn such a loop into a spin,
// so after a failure the rest of the read's time-out is slept away: the loop keeps the pace, and
// the time-out, that a quiet line gives it. Returns ReadUntil's code and count unchanged.
int PacedLineRead(CComPort& port, char* buf, int size, int* count, int timeoutMs);

#endif
