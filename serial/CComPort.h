#ifndef GNSS_SERIAL_CCOMPORT_H
#define GNSS_SERIAL_CCOMPORT_H

#include "serial/ComPortError.h"

class CComRingBuffer;

// The serial port that every receiver configurer talks through. Every operation returns 0 or a
// ComPortError code and nothing throws.
//
// The order of the virtual operations below is part of the interface: configurers are built
// against these slots, and a later port type fills the unsupported ones in place. Never reorder,
// insert or remove a virtual operation; the unsupported slots answer with fixed codes.
class CComPort {
public:
    explicit CComPort(int portNumber);
    // Frees the ring buffer only: a port that is still open stays open until the process ends.
    virtual ~CComPort();
    CComPort(const CComPort&) = delete;
    CComPort& operator=(const CComPort&) = delete;

    virtual int Open() = 0;
    virtual int Close() = 0;
    // Nonzero while the port holds an open descriptor.
    virtual int IsOpen() = 0;
    // IsOpen() as exactly 0 or 1.
    virtual int IsOpenFlag();
    // Discards received input that nobody has read; pending output is left alone.
    virtual int FlushInput() = 0;
    virtual int UnsupportedOperation7() = 0;  // COMERR_UNSUPPORTED
    virtual int UnsupportedOperation8() = 0;  // COMERR_UNSUPPORTED
    virtual int UnsupportedFlush9() = 0;  // COMERR_FLUSH
    // Waits until all written bytes have left; see CLinuxComPort for its unmapped result.
    virtual int Drain() = 0;
    virtual int UnsupportedOperation11() = 0;  // COMERR_UNSUPPORTED
    virtual int UnsupportedOperation12() = 0;  // COMERR_UNSUPPORTED
    // One byte within timeoutMs; -1 reads once without waiting.
    virtual int ReadByte(unsigned char* out, int timeoutMs) = 0;
    virtual int UnsupportedRead14() = 0;  // COMERR_READ
    // ReadUntil with a terminator that never matches: fills buf until it is full or time is up.
    virtual int Read(char* buf, int size, int* count, int timeoutMs) = 0;
    // Reads byte by byte into buf until terminator (kept and counted), size - 1 bytes
    // (COMERR_BUFFER_FULL), a NUL (COMERR_NUL_RECEIVED, not counted) or the end of timeoutMs (-1:
    // no limit). Running out of time is success: the caller gets whatever arrived, *count bytes,
    // NUL-terminated.
    virtual int ReadUntil(char* buf, int terminator, int size, int* count, int timeoutMs) = 0;
    virtual int UnsupportedWrite17() = 0;  // COMERR_WRITE
    virtual int UnsupportedWrite18() = 0;  // COMERR_WRITE
    // *written gets write()'s raw result, -1 included.
    virtual int WriteString(const char* text, int* written) = 0;
    // One byte through ReadBuffer; COMERR_READ unless exactly one byte came.
    virtual int ReadChar(char* out) = 0;
    virtual int ReadBuffer(char* buf, int len, int* count) = 0;
    // 0 only when the byte was written.
    virtual int WriteChar(char ch) = 0;
    virtual int WriteBuffer(const void* buf, int len, int* written) = 0;
    // Bits 0 to 2: whether line queries A, B and C reported a nonzero value.
    virtual int GetLineStatus();
    virtual int LineQueryA(int* value, int argument) = 0;
    virtual int UnsupportedOperation26() = 0;  // COMERR_NOT_IMPLEMENTED
    virtual int LineQueryB(int* value) = 0;
    virtual int LineQueryC(int* value, int argument) = 0;
    virtual int UnsupportedOperation29() = 0;  // COMERR_NOT_IMPLEMENTED
    virtual int GetBaudRate();
    // Stores a mappable rate; an open port also switches to it at once.
    virtual int SetBaudRate(int baud) = 0;
    virtual int UnsupportedOperation32() = 0;  // COMERR_NOT_IMPLEMENTED
    virtual int UnsupportedOperation33() = 0;  // COMERR_NOT_IMPLEMENTED
    virtual int UnsupportedOperation34() = 0;  // COMERR_NOT_IMPLEMENTED
    // Framing errors since the last mark: the way to tell a wrong baud rate from silence.
    virtual int GetFrameErrorCount() = 0;
    virtual int MarkFrameErrorCount() = 0;
    // Moves every byte already received into the ring buffer; returns the first failure code
    // (COMERR_TIMEOUT once nothing is pending).
    virtual int FillRingBuffer();

    int GetPortNumber() const;
    // The line settings callers may ask for. Only the baud rate is applied from here: the Linux
    // port always runs raw, 8 data bits, no parity, one stop bit, which these values match.
    void GetLineSettings(int* baud, char* parity, int* dataBits, int* stopBits) const;

protected:
    void StoreBaudRate(int baud);

private:
    CComRingBuffer* m_ringBuffer;
    int m_portNumber;
    int m_baudRate = 9600;
    char m_parity = 'N';
    int m_dataBits = 8;
    int m_stopBits = 1;
};

#endif
