#include "sim/line/NoiseMaker.h"

namespace GnssSim {

namespace {

// NUL is listed three times: a long low level is by far the most common misreading.
const unsigned char kGarbledBytes[] = {0x00, 0x00, 0x00, 0x80, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC, 0xFE, 0xFF, 0x9F};

// A fast listener splits one slow byte into at most this many frames: the byte has at most five
// level changes, and runs shorter than a frame merge.
const int kMaxFramesPerByte = 3;

// Zero would stop the xorshift generator for good.
const std::uint32_t kReplacementSeed = 0x9E3779B9u;

}

NoiseMaker::NoiseMaker(std::uint32_t seed) : m_state(seed != 0 ? seed : kReplacementSeed)
{
}

std::uint32_t NoiseMaker::NextRandom()
{
    m_state ^= m_state << 13;
    m_state ^= m_state >> 17;
    m_state ^= m_state << 5;
    return m_state;
}

char NoiseMaker::NextGarbledByte()
{
    const std::size_t index = NextRandom() % sizeof kGarbledBytes;
    return static_cast<char>(kGarbledBytes[index]);
}

std::string NoiseMaker::Garble(const std::string& bytes, int senderBaud, int listenerBaud)
{
    std::string garbled;
    if (senderBaud <= 0 || listenerBaud <= 0) {
        return garbled;
    }
    if (listenerBaud > senderBaud) {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const int frames = 1 + static_cast<int>(NextRandom() % kMaxFramesPerByte);
            for (int frame = 0; frame < frames; ++frame) {
                garbled += NextGarbledByte();
            }
        }
        return garbled;
    }
    const std::size_t bytesPerFrame = static_cast<std::size_t>((senderBaud + listenerBaud - 1) / listenerBaud);
    for (std::size_t i = bytesPerFrame - 1; i < bytes.size(); i += bytesPerFrame) {
        garbled += NextGarbledByte();
    }
    return garbled;
}

std::string NoiseMaker::Burst(std::size_t count)
{
    std::string burst;
    for (std::size_t i = 0; i < count; ++i) {
        burst += NextGarbledByte();
    }
    return burst;
}

}
