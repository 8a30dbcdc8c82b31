#include "serial/CComPort.h"

#include "serial/CComRingBuffer.h"

namespace {

constexpr int kRingBufferCapacity = 1024;

}  // namespace

CComPort::CComPort(int portNumber)
    : m_ringBuffer(new CComRingBuffer(kRingBufferCapacity)), m_portNumber(portNumber)
{
}

CComPort::~CComPort()
{
    delete m_ringBuffer;
}

int CComPort::IsOpenFlag()
{
    return IsOpen() != 0 ? 1 : 0;
}

int CComPort::GetLineStatus()
{
    // The value carries over from one query to the next, and query C is told whether B was set.
    int value = 0;
    LineQueryA(&value, 0);
    const int bit0 = value != 0 ? 1 : 0;
    LineQueryB(&value);
    const int bit1 = value != 0 ? 1 : 0;
    LineQueryC(&value, bit1 << 1);
    const int bit2 = value != 0 ? 1 : 0;
    return bit0 | bit1 << 1 | bit2 << 2;
}

int CComPort::GetBaudRate()
{
    return m_baudRate;
}

int CComPort::FillRingBuffer()
{
    // A zero wait: only what the kernel already holds is taken. A hung-up line reads as endless
    // zero-byte successes, so this is for a live line only; nothing in the tool calls it.
    constexpr int kNoWaitMs = 0;
    for (;;) {
        unsigned char byte = 0;
        const int result = ReadByte(&byte, kNoWaitMs);
        if (result != 0) {
            return result;
        }
        m_ringBuffer->Push(byte);
    }
}

int CComPort::GetPortNumber() const
{
    return m_portNumber;
}

void CComPort::GetLineSettings(int* baud, char* parity, int* dataBits, int* stopBits) const
{
    *baud = m_baudRate;
    *parity = m_parity;
    *dataBits = m_dataBits;
    *stopBits = m_stopBits;
}

void CComPort::StoreBaudRate(int baud)
{
    m_baudRate = baud;
}
