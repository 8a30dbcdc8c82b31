#include "receivers/other/CAutonomousCSI.h"

#include "receivers/other/CsiCommands.h"
#include "receivers/other/PacedLineRead.h"
#include "receivers/other/StreamMatcher.h"
#include "serial/CComPort.h"
#include "util/Stopwatch.h"
#include "util/Strings.h"

namespace {

// Each read waits at most this long for the rest of a line, so the budgets below are checked
// several times a second.
constexpr int kReadTimeoutMs = 200;
constexpr int kReadBufferSize = 200;

// A CSI receiver answers "$JAPP" at once; 3 s leaves room for a receiver busy with its output.
constexpr long kProbeBudgetMs = 3000;
// The "$JI" reply comes straight back; a receiver that has not answered within one read's wait
// does not have it.
constexpr long kFirmwareBudgetMs = 200;

constexpr char kProbeAnswer[] = "$>JAPP";
constexpr char kFirmwareReplyStart[] = "$>JI";
// The reply's field that holds the firmware version.
constexpr std::size_t kFirmwareField = 7;

// The "$>JI" reply line, or "" when none came within the budget.
std::string ReadFirmwareReply(CComPort& port)
{
    const Stopwatch clock;
    char buffer[kReadBufferSize];
    for (;;) {
        int count = 0;
        const int code = PacedLineRead(port, buffer, kReadBufferSize, &count, kReadTimeoutMs);
        if (code == 0 && count > 1) {
            const std::string line(buffer, static_cast<std::size_t>(count));
            if (StartsWith(line, kFirmwareReplyStart)) {
                return line;
            }
        }
        if (clock.ElapsedMs() >= kFirmwareBudgetMs) {
            return "";
        }
    }
}

}  // namespace

bool ProbeCsiReceiver(CComPort& port)
{
    const Stopwatch clock;
    port.FlushInput();
    int written = 0;
    if (port.WriteString("$JAPP\r\n", &written) != 0) {
        return false;
    }
    StreamMatcher matcher(kProbeAnswer);
    char buffer[kReadBufferSize];
    for (;;) {
        int count = 0;
        PacedLineRead(port, buffer, kReadBufferSize, &count, kReadTimeoutMs);
        if (matcher.Feed(buffer, count)) {
            return true;
        }
        if (clock.ElapsedMs() > kProbeBudgetMs) {
            return false;
        }
    }
}

CAutonomousCSI::CAutonomousCSI(CComPort* port) : CGPSConfigurer(port) {}

bool CAutonomousCSI::SupportsFeature2()
{
    return false;
}

bool CAutonomousCSI::SupportsGlonass()
{
    return false;
}

bool CAutonomousCSI::SupportsSbas()
{
    return true;
}

bool CAutonomousCSI::SupportsNovatelExtras()
{
    return false;
}

std::string CAutonomousCSI::GetModel()
{
    return "";
}

std::string CAutonomousCSI::GetFirmwareVersion()
{
    m_pPort->FlushInput();
    Send("$JI\r\n");
    const std::vector<std::string> fields = SplitFields(ReadFirmwareReply(*m_pPort), ",");
    return fields.size() > kFirmwareField ? fields[kFirmwareField] : "";
}

int CAutonomousCSI::SetBaudRate(int baud)
{
    m_nBaudRate = baud;
    return 0;
}

void CAutonomousCSI::OutputGGA(bool on)
{
    Send(BuildCsiOutputCommand("GPGGA", m_fGGAFrequency, on, true));
    m_bGGAOn = on;
}

void CAutonomousCSI::SetGGAFrequency(float hz)
{
    m_fGGAFrequency = QuantiseCsiRateClassA(hz);
    OutputGGA(m_bGGAOn);
}

void CAutonomousCSI::OutputGSA(bool on)
{
    Send(BuildCsiOutputCommand("GPGSA", m_fGSAFrequency, on, false));
    m_bGSAOn = on;
}

void CAutonomousCSI::SetGSAFrequency(float hz)
{
    m_fGSAFrequency = QuantiseCsiRateClassB(hz);
    OutputGSA(m_bGSAOn);
}

void CAutonomousCSI::OutputGSV(bool on)
{
    Send(BuildCsiOutputCommand("GPGSV", m_fGSVFrequency, on, false));
    m_bGSVOn = on;
}

void CAutonomousCSI::SetGSVFrequency(float hz)
{
    m_fGSVFrequency = QuantiseCsiRateClassB(hz);
    OutputGSV(m_bGSVOn);
}

void CAutonomousCSI::OutputVTG(bool on)
{
    Send(BuildCsiOutputCommand("GPVTG", m_fVTGFrequency, on, true));
    m_bVTGOn = on;
}

void CAutonomousCSI::SetVTGFrequency(float hz)
{
    m_fVTGFrequency = QuantiseCsiRateClassA(hz);
    OutputVTG(m_bVTGOn);
}

void CAutonomousCSI::OutputZDA(bool on)
{
    Send(BuildCsiOutputCommand("GPZDA", m_fZDAFrequency, on, true));
    m_bZDAOn = on;
}

void CAutonomousCSI::SetZDAFrequency(float hz)
{
    m_fZDAFrequency = QuantiseCsiRateClassA(hz);
    OutputZDA(m_bZDAOn);
}

bool CAutonomousCSI::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas,
                                   bool /*allowType0*/)
{
    SetDiffSource(useSbas ? 1 : 0);
    Send(BuildCsiSbasPrnCommand(prnEnabled));
    return true;
}

void CAutonomousCSI::SetDiffSource(int source)
{
    const std::string command = BuildCsiDiffSourceCommand(source);
    if (!command.empty()) {
        Send(command);
    }
}

void CAutonomousCSI::Send(const std::string& command)
{
    int written = 0;
    m_pPort->WriteString(command.c_str(), &written);
}
