#include "receivers/other/CAutonomousNovatel.h"

#include "receivers/other/PacedLineRead.h"
#include "receivers/other/PmcagPacket.h"
#include "receivers/other/PmcagOutputSentence.h"
#include "receivers/other/PmcagSbasBlocks.h"
#include "serial/CComPort.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"
#include "util/Strings.h"

namespace {

constexpr char kProbeRequest[] = "$PMCAG,004,908*5D\r\n";
constexpr char kProbeAnswerStart[] = "$PMCAG,908";
// The receiver answers its probe at once; 300 ms keeps a full detection of a silent line short.
constexpr long kProbeBudgetMs = 299;

// Sent before every binary change; its meaning is the receiver's own.
constexpr char kSentence000[] = "$PMCAG,000,0*58\r\n";
constexpr int kSentence000Length = 17;

// The receiver drops packets and sentences that follow each other without a pause.
constexpr int kBetweenCommandsMs = 10;

constexpr std::uint8_t kIdentifyPacket = 63;
constexpr std::uint8_t kModePacket = 83;
constexpr std::uint8_t kPrnPacket = 90;
constexpr std::uint8_t kCommitPacket = 110;
constexpr std::uint8_t kIdentifyPayload[] = {'U', 'G', 'P', 'S', '-', '1', '0', '0'};
constexpr std::uint8_t kCommitPayload[] = {0x40};

}  // namespace

bool ProbePmcagReceiver(CComPort& port)
{
    int written = 0;
    port.WriteString(kProbeRequest, &written);
    return ReadForAnswer(port, Stopwatch(), kProbeBudgetMs,
                         [](int code, const char* bytes, int count) {
                             return StartsWith(LineOf(code, bytes, count), kProbeAnswerStart);
                         });
}

CAutonomousNovatel::CAutonomousNovatel(CComPort* port) : OtherFamilyConfigurer(port) {}

int CAutonomousNovatel::SetBaudRate(int baud)
{
    m_nBaudRate = baud;
    SendOutputSentence();
    return 0;
}

void CAutonomousNovatel::Output(Sentence sentence, bool on)
{
    FieldsOf(sentence).on = on;
    SendOutputSentence();
}

bool CAutonomousNovatel::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas,
                                       bool allowType0)
{
    SetSbasMode(useSbas, allowType0);
    SendPmcag000Twice();
    const PmcagPrnBlock blockA = BuildPmcagPrnBlockA(prnEnabled);
    const PmcagPrnBlock blockB = BuildPmcagPrnBlockB(prnEnabled);
    SendPacket(kPrnPacket, blockA.data(), static_cast<std::uint8_t>(blockA.size()));
    SendPacket(kPrnPacket, blockB.data(), static_cast<std::uint8_t>(blockB.size()));
    Commit();
    return true;
}

bool CAutonomousNovatel::SetSbasMode(bool useSbas, bool allowType0)
{
    SendPacket(kIdentifyPacket, kIdentifyPayload, sizeof kIdentifyPayload);
    SleepMs(kBetweenCommandsMs);
    SendPmcag000Twice();
    const PmcagModeBlock mode = BuildPmcagModeBlock(useSbas, allowType0);
    SleepMs(kBetweenCommandsMs);
    SendPacket(kModePacket, mode.data(), static_cast<std::uint8_t>(mode.size()));
    SleepMs(kBetweenCommandsMs);
    return Commit();
}

void CAutonomousNovatel::SendPmcag000Twice()
{
    int written = 0;
    m_pPort->WriteBuffer(kSentence000, kSentence000Length, &written);
    SleepMs(kBetweenCommandsMs);
    m_pPort->WriteBuffer(kSentence000, kSentence000Length, &written);
}

void CAutonomousNovatel::SendOutputSentence()
{
    const PmcagOutputSettings settings{{m_fGGAFrequency, m_bGGAOn},
                                       {m_fGSAFrequency, m_bGSAOn},
                                       {m_fGSVFrequency, m_bGSVOn},
                                       {m_fVTGFrequency, m_bVTGOn},
                                       {m_fZDAFrequency, m_bZDAOn}};
    Send(BuildPmcagOutputSentence(settings));
}

void CAutonomousNovatel::SendPacket(std::uint8_t id, const std::uint8_t* payload,
                                    std::uint8_t length)
{
    const PmcagPacket packet = BuildPmcagPacket(id, payload, length);
    int written = 0;
    m_pPort->WriteBuffer(packet.data(), static_cast<int>(packet.size()), &written);
}

bool CAutonomousNovatel::Commit()
{
    SendPacket(kCommitPacket, kCommitPayload, sizeof kCommitPayload);
    SleepMs(kBetweenCommandsMs);
    SendPacket(kCommitPacket, kCommitPayload, sizeof kCommitPayload);
    SleepMs(kBetweenCommandsMs);
    return true;
}
