#ifndef GNSS_SERIAL_LINUXSERIALKERNEL_H
#define GNSS_SERIAL_LINUXSERIALKERNEL_H

// The Linux-specific corners of the serial port: the termios speed constants and the UART's
// interrupt counters. Only CLinuxComPort uses them.

#include <termios.h>

// The termios speed constant of the same rate, for 50 to 230400 baud. False for any other value,
// 0 included (B0 would hang up the line rather than set a rate).
bool MapBaudToSpeed(int baud, speed_t* speed);

// Reads the UART's framing-error counter (TIOCGICOUNT) into *frameErrors and returns the ioctl
// result. Where the driver has no counters (pseudo-terminals, qemu-user) the result is -1 and
// *frameErrors is 0.
int QueryFrameErrorCounter(int fd, int* frameErrors);

#endif
