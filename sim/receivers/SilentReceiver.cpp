#include "sim/receivers/SilentReceiver.h"

#include "sim/text/ByteText.h"

namespace GnssSim {

SilentReceiver::SilentReceiver(const ReceiverSetup& setup, ReceiverLine& line) : ReceiverModel(setup, line)
{
}

std::size_t SilentReceiver::ConsumeUnit(const std::string& bytes, std::size_t pos)
{
    const std::size_t end = m_input.Take(bytes, pos);
    if (m_input.HasLine()) {
        bool garbled = false;
        const std::string line = m_input.PopLine(garbled);
        RecordLine(line, garbled, WithoutLineEnd(line).empty() ? "empty" : "silent");
    }
    return end;
}

}
