#include "receivers/other/CAutonomousNovatel.h"

#include "receivers/other/PacedLineRead.h"
#include "receivers/other/PmcagOutputSentence.h"
#include "receivers/other/PmcagSbasBlocks.h"
#include "serial/CComPort.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"
#include "util/Strings.h"

#include <cstring>

namespace {

constexpr char kProbeRequest[] = "$PMCAG,004,908*5D\r\n";
constexpr char kProbeAnswerStart[] = "$PMCAG,908";
// The receiver answers its probe at once; 300 ms keeps a full detection of a silent line short.
constexpr long kProbeBudgetMs = 299;
// Each probe read waits at most this long for the rest of a line.
constexpr int kReadTimeoutMs = 200;
constexpr int kReadBufferSize = 200;

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
    const Stopwatch clock;
    char buffer[kReadBufferSize];
    for (;;) {
        int count = 0;
        const int code = PacedLineRead(port, buffer, kReadBufferSize, &count, kReadTimeoutMs);
        if (code == 0 && count > 1 &&
            StartsWith(std::string(buffer, static_cast<std::size_t>(count)), kProbeAnswerStart)) {
            return true;
        }
        if (clock.ElapsedMs() > kProbeBudgetMs) {
            return false;
        }
    }
}

CAutonomousNovatel::CAutonomousNovatel(CComPort* port) : CGPSConfigurer(port) {}

bool CAutonomousNovatel::SupportsFeature2()
{
    return false;
}

bool CAutonomousNovatel::SupportsGlonass()
{
    return false;
}

bool CAutonomousNovatel::SupportsSbas()
{
    return false;
}

bool CAutonomousNovatel::SupportsNovatelExtras()
{
    return false;
}

std::string CAutonomousNovatel::GetModel()
{
    return "";
}

std::string CAutonomousNovatel::GetFirmwareVersion()
{
    return "";
}

int CAutonomousNovatel::SetBaudRate(int baud)
{
    m_nBaudRate = baud;
    SendOutputSentence();
    return 0;
}

void CAutonomousNovatel::OutputGGA(bool on)
{
    m_bGGAOn = on;
    SendOutputSentence();
}

void CAutonomousNovatel::SetGGAFrequency(float hz)
{
    m_fGGAFrequency = hz;
    OutputGGA(m_bGGAOn);
}

void CAutonomousNovatel::OutputGSA(bool on)
{
    m_bGSAOn = on;
    SendOutputSentence();
}

void CAutonomousNovatel::SetGSAFrequency(float hz)
{
    m_fGSAFrequency = hz;
    OutputGSA(m_bGSAOn);
}

void CAutonomousNovatel::OutputGSV(bool on)
{
    m_bGSVOn = on;
    SendOutputSentence();
}

void CAutonomousNovatel::SetGSVFrequency(float hz)
{
    m_fGSVFrequency = hz;
    OutputGSV(m_bGSVOn);
}

void CAutonomousNovatel::OutputVTG(bool on)
{
    m_bVTGOn = on;
    SendOutputSentence();
}

void CAutonomousNovatel::SetVTGFrequency(float hz)
{
    m_fVTGFrequency = hz;
    OutputVTG(m_bVTGOn);
}

void CAutonomousNovatel::OutputZDA(bool on)
{
    m_bZDAOn = on;
    SendOutputSentence();
}

void CAutonomousNovatel::SetZDAFrequency(float hz)
{
    m_fZDAFrequency = hz;
    OutputZDA(m_bZDAOn);
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
    const std::string sentence = BuildPmcagOutputSentence(settings);
    int written = 0;
    m_pPort->WriteString(sentence.c_str(), &written);
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
