#include "sim/receivers/PmcagReceiver.h"

#include "sim/text/ByteText.h"
#include "sim/text/NmeaSentences.h"

namespace GnssSim {

PmcagReceiver::PmcagReceiver(const ReceiverSetup& setup, ReceiverLine& line) : ReceiverModel(setup, line)
{
}

std::size_t PmcagReceiver::ConsumeUnit(const std::string& bytes, std::size_t pos)
{
    const std::size_t end = m_input.Take(bytes, pos);
    if (m_input.HasItem()) {
        OnItem(m_input.PopItem());
    }
    return end;
}

void PmcagReceiver::OnItem(const DecodedItem& item)
{
    switch (item.kind) {
    case DecodedItem::Kind::Packet:
        OnPacket(item);
        break;
    case DecodedItem::Kind::Sentence:
        OnSentence(item);
        break;
    case DecodedItem::Kind::Other:
        RecordLine(item.bytes, item.garbled,
                   item.problem == "empty line" ? "empty" : "rejected: " + item.problem);
        break;
    }
}

void PmcagReceiver::OnSentence(const DecodedItem& item)
{
    if (!item.valid) {
        RecordLine(item.bytes, item.garbled, "rejected: " + item.problem);
        return;
    }
    const std::vector<std::string> words = CommandWords(item.bytes);
    if (IsSilenced(item.bytes)) {
        RecordLine(item.bytes, false, "no answer (fault)");
        return;
    }
    if (words.size() == 3 && words[0] == "$PMCAG" && words[1] == "004" && words[2] == "908") {
        RecordLine(item.bytes, false, "$PMCAG,908");
        SendAnswer(item.bytes, "", ProbeAnswer(), "$PMCAG,908");
        return;
    }
    if (words.size() >= 2 && words[0] == "$PMCAG") {
        MutableState().settings["$PMCAG," + words[1]] = JoinWords(words, 2, ",");
    }
    RecordLine(item.bytes, false, "accepted");
}

void PmcagReceiver::OnPacket(const DecodedItem& item)
{
    if (!item.valid) {
        RecordPacket(item.bytes, item.id, item.payload, false, "rejected: " + item.problem);
        return;
    }
    MutableState().settings["PACKET " + std::to_string(item.id)] = HexBytes(item.payload);
    RecordPacket(item.bytes, item.id, item.payload, true, "sum ok");
}

std::string PmcagReceiver::ProbeAnswer() const
{
    const Component& main = Setup().identity.Main();
    return NmeaSentence("PMCAG,908," + main.model + "," + main.swVersion);
}

std::string PmcagReceiver::LogOutput(const std::string& logName)
{
    const double elapsed = std::chrono::duration<double>(Now() - Setup().start).count();
    return NmeaSentencesFor(logName, elapsed);
}

}
