#ifndef GNSS_SIM_LINE_NOISEMAKER_H
#define GNSS_SIM_LINE_NOISEMAKER_H

#include <cstdint>
#include <string>

namespace GnssSim {

// What a UART makes of bytes sent at another speed, decided by a seeded generator so that a run
// can be repeated byte for byte.
//
// A listener faster than the sender sees every slow bit as several of its own: mostly long runs of
// zeros (NUL bytes, reported with framing errors) and of ones with a few low bits (0x80, 0xC0,
// 0xF0 ...). A listener slower than the sender catches about one start bit per speed ratio of bytes
// and reads the same kind of bytes, or nothing at all. Garbled bytes are never printable and never
// a line end: wrong-speed noise can neither complete nor fake a line, though its NUL bytes are
// what the tool's line reader reports as an error.
class NoiseMaker {
public:
    explicit NoiseMaker(std::uint32_t seed);

    // What a listener at listenerBaud receives when bytes are sent at senderBaud (the speeds differ).
    std::string Garble(const std::string& bytes, int senderBaud, int listenerBaud);

    // count garbled bytes, as electrical noise on the line would produce.
    std::string Burst(std::size_t count);

private:
    char NextGarbledByte();
    std::uint32_t NextRandom();

    std::uint32_t m_state;
};

}

#endif
