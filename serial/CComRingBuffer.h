#ifndef GNSS_SERIAL_CCOMRINGBUFFER_H
#define GNSS_SERIAL_CCOMRINGBUFFER_H

// Received bytes kept by the port. It never blocks and never grows: a push into a full buffer
// drops the oldest byte, so it holds at most capacity - 1 bytes.
class CComRingBuffer {
public:
    explicit CComRingBuffer(int capacity);
    ~CComRingBuffer();
    CComRingBuffer(const CComRingBuffer&) = delete;
    CComRingBuffer& operator=(const CComRingBuffer&) = delete;

    void Push(unsigned char byte);

    // Empties the buffer and releases its storage: it is the buffer's end of life. Bytes pushed
    // afterwards are dropped and extractions give empty lines.
    void Clear();

    // Moves the oldest bytes into out, up to and including terminator or until max - 1 bytes or
    // the buffered bytes run out, and NUL-terminates out (max 1 gives ""; max below 1 writes
    // nothing). Returns 0 when the terminator was copied, 1 otherwise.
    int ExtractLine(char* out, char terminator, int max);

private:
    int Advance(int index) const;

    unsigned char* m_data;
    int m_capacity;
    int m_write = 0;
    int m_read = 0;
};

#endif
