#ifndef GNSS_SERIAL_LINUXSERIALKERNEL_H
#define GNSS_SERIAL_LINUXSERIALKERNEL_H

// The Linux-specific corners of the serial port: the termios speed constants and the UART's
// interrupt counters. Only CLinuxComPort uses them.

#include <termios.h>

// The termios speed constant of the same rate, for 50 to 230400 baud. False for any other value,
// 0 included (B0 would hang up the line rather than set a rate).
bool MapBaudToSpeed(int baud, speed_t* speed);

// Makes attributes raw (cfmakeraw), then sets every line flag that another program may have left
// on the port and that cfmakeraw keeps: 8 data bits, no parity, one stop bit (the framing the tool
// commands NovAtel receivers to, "N 8 1"), no hardware flow control (with CRTSCTS and CTS not
// wired, output stalls for good), no software flow control (IXOFF makes the kernel put XOFF bytes
// among the commands, IXON lets a stray XOFF from the receiver stop the output, IXANY lets any
// byte restart it), the modem lines ignored (CLOCAL: no wait for a carrier, no hang-up on its loss)
// and the receiver on (CREAD).
void SetRawEightNoneOne(termios* attributes);

// Reads how many bytes wait in the kernel's output queue of the tty (TIOCOUTQ) into *queued and
// returns the ioctl result. The count leaves out the few bytes already in the UART's own FIFO.
int QueuedOutputBytes(int fd, int* queued);

// How long bytes take on the wire at baud with 10 bits each (start bit, 8 data bits, stop bit),
// in whole milliseconds, rounded up.
long TransmitMs(long bytes, int baud);

// The longest a line that sends at all takes to empty an output queue of queuedBytes at baud:
// twice their time on the wire, plus 100 ms for serial drivers and USB adapters that hand on what
// they hold in chunks (an FTDI adapter holds a part-filled buffer up to 16 ms). Output that has
// not left by then is held back by the line itself (CTS low under hardware flow control, a wedged
// adapter) and would keep tcdrain(), and close(), waiting without end.
long DrainLimitMs(int queuedBytes, int baud);

// Reads the UART's framing-error counter (TIOCGICOUNT) into *frameErrors and returns the ioctl
// result. Where the driver has no counters (pseudo-terminals, qemu-user) the result is -1 and
// *frameErrors is 0.
int QueryFrameErrorCounter(int fd, int* frameErrors);

#endif
