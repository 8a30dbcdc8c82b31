#include "serial/CComRingBuffer.h"

namespace {

// Two spare bytes past the capacity, zero-filled and never written: whatever reads the storage as
// text finds it NUL-terminated.
constexpr int kSpareBytes = 2;

}  // namespace

CComRingBuffer::CComRingBuffer(int capacity)
    : m_data(new unsigned char[capacity + kSpareBytes]()), m_capacity(capacity)
{
}

CComRingBuffer::~CComRingBuffer()
{
    Clear();
}

int CComRingBuffer::Advance(int index) const
{
    return index + 1 >= m_capacity ? 0 : index + 1;
}

void CComRingBuffer::Push(unsigned char byte)
{
    if (m_data == nullptr) {
        return;
    }
    m_data[m_write] = byte;
    m_write = Advance(m_write);
    if (m_write == m_read) {
        m_read = Advance(m_read);
    }
}

void CComRingBuffer::Clear()
{
    m_write = 0;
    m_read = 0;
    if (m_data != nullptr) {
        m_data[0] = 0;
    }
    delete[] m_data;
    m_data = nullptr;
}

int CComRingBuffer::ExtractLine(char* out, char terminator, int max)
{
    if (max < 1) {
        return 1;
    }
    int length = 0;
    bool found = false;
    while (!found && length < max - 1 && m_data != nullptr && m_read != m_write) {
        const char byte = static_cast<char>(m_data[m_read]);
        m_read = Advance(m_read);
        out[length++] = byte;
        found = byte == terminator;
    }
    out[length] = '\0';
    return found ? 0 : 1;
}
