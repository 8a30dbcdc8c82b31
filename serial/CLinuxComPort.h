#ifndef GNSS_SERIAL_CLINUXCOMPORT_H
#define GNSS_SERIAL_CLINUXCOMPORT_H

#include "serial/CComPort.h"

#include <cstddef>

// CComPort on a Linux tty. The descriptor is opened non-blocking and stays so: every wait for input
// is a select(), and reads take one byte at a time so that nothing after a reply's terminator is
// taken from the kernel; the next reply stays queued for the next read. Time-outs run on the
// monotonic clock, and draining output, which a console's UART could make last for ever, has a
// limit (docs/real-console.md).
//
// Only Open and an unmappable baud rate print (on standard error); everything else reports by
// result code alone.
class CLinuxComPort : public CComPort {
public:
    explicit CLinuxComPort(int portNumber);
    // Does not close the descriptor; the process exit does.
    ~CLinuxComPort() override;

    // Opens GetDeviceName() (closing first if open) without making it the controlling terminal,
    // applies the stored baud rate, takes the framing-error mark and sets the line raw, 8N1,
    // without flow control, CLOCAL and CREAD (SetRawEightNoneOne). On failure prints "failed to
    // open <device>", "iRC = <code>" and the system error, and leaves the port closed.
    int Open() override;
    // Output that a stalled line will not send is discarded first, so that close() never waits
    // for it.
    int Close() override;
    int IsOpen() override;
    int FlushInput() override;
    int UnsupportedOperation7() override;
    int UnsupportedOperation8() override;
    int UnsupportedFlush9() override;
    // 0 on a closed port (callers drain unconditionally); on an open one tcdrain()'s own result,
    // 0 or -1, not a ComPortError code. Bounded: -1 (ETIMEDOUT) when the output has not left
    // within DrainLimitMs of what was queued.
    int Drain() override;
    int UnsupportedOperation11() override;
    int UnsupportedOperation12() override;
    // COMERR_TIMEOUT when nothing came within timeoutMs or the wait was interrupted. A read of
    // zero bytes (a hung-up line) counts as success.
    int ReadByte(unsigned char* out, int timeoutMs) override;
    int UnsupportedRead14() override;
    int Read(char* buf, int size, int* count, int timeoutMs) override;
    // COMERR_NOT_OPEN on a closed port; a size below 2 leaves no room for a byte and gives
    // COMERR_BUFFER_FULL at once.
    // The terminator is compared as a byte value, so '\xff' and 255 name the same byte.
    int ReadUntil(char* buf, int terminator, int size, int* count, int timeoutMs) override;
    int UnsupportedWrite17() override;
    int UnsupportedWrite18() override;
    int WriteString(const char* text, int* written) override;
    int ReadChar(char* out) override;
    // Not supported on this port: always COMERR_READ.
    int ReadBuffer(char* buf, int len, int* count) override;
    int WriteChar(char ch) override;
    // A negative len writes nothing.
    int WriteBuffer(const void* buf, int len, int* written) override;
    // The three line queries are not supported on this port (COMERR_UNSUPPORTED), so
    // GetLineStatus is 0.
    int LineQueryA(int* value, int argument) override;
    int UnsupportedOperation26() override;
    int LineQueryB(int* value) override;
    int LineQueryC(int* value, int argument) override;
    int UnsupportedOperation29() override;
    // 0 is refused silently (COMERR_BAUD); any other rate outside 50..230400 prints "Couldn't
    // map baud <rate>" (COMERR_BAUD). Neither is stored. A closed port only stores the rate for
    // the next Open.
    int SetBaudRate(int baud) override;
    int UnsupportedOperation32() override;
    int UnsupportedOperation33() override;
    int UnsupportedOperation34() override;
    int GetFrameErrorCount() override;
    // Returns the counter query's own result (-1 where the line has no counters).
    int MarkFrameErrorCount() override;

    // The device that Open opens.
    virtual const char* GetDeviceName() = 0;

private:
    int ApplySpeed();
    int DrainOutput();
    bool WaitForEmptyOutputQueue();
    int MakeRaw();
    int ReportOpenFailure(int result);
    int WaitForByte(int timeoutMs);
    int TakeByte(char* buf, int terminator, int size, int* count);
    int WriteBytes(const void* bytes, std::size_t length, int* written);

    unsigned int m_speedCode;  // termios speed constant of the stored rate
    int m_frameErrorMark = -1;
    int m_fd = -1;
};

#endif
