#include "receivers/novatel/OemV1Descendants.h"

#include "receivers/novatel/LogCommand.h"
#include "receivers/novatel/LogReplies.h"
#include "receivers/novatel/NovatelExchange.h"
#include "receivers/novatel/NovatelTimeouts.h"
#include "receivers/novatel/SbasCommands.h"
#include "receivers/novatel/VersionLog.h"
#include "serial/CComPort.h"
#include "util/Sleep.h"
#include "util/Stopwatch.h"
#include "util/Strings.h"

namespace NovatelCommon {

namespace {

const char* const kOk = "<OK";

// The rates a receiver may have been left at, slowest first.
const int kSweepRates[] = {9600, 19200, 38400, 57600, 115200};
// The receiver needs a moment to act on a rate switch before the line may change speed under it.
constexpr int kBaudSwitchSettleMs = 10;

// A version-log request is repeated at this interval until its time is used up.
constexpr int kVersionRequestSliceMs = 100;

const char* const kVersionLogOnce = "LOG VERSIONA ONCE\r\n";

// OEM-V1 receivers acknowledge SBAS commands within half a second.
constexpr int kSbasOkTimeoutMs = 500;

// Above this rate the GGA period needs two decimals (20 Hz is 0.05 s, not 0.1 s). The other
// sentences keep one decimal at any rate.
constexpr float kGgaTwoDecimalsAboveHz = 10.0f;

// "selectchanconfig" restarts the receiver: the first second it may still send old output, then
// it boots for about five seconds, and it may take up to half a minute before it answers again.
constexpr int kRestartSettleMs = 1000;
constexpr int kRestartBootMs = 5000;
constexpr long kRestartSearchMs = 30000;

// A reset receiver is searched for up to 20 s unless the caller says otherwise; between searches
// it gets a short breath.
constexpr int kDefaultResetLimitMs = 20000;
constexpr int kResetSearchPauseMs = 10;

constexpr int kPdpFilterAcknowledged = 2;
constexpr int kPdpFilterNotAcknowledged = 1;

constexpr int kResetFoundAgain = 0;
constexpr int kResetNotAcknowledged = 1;
constexpr int kResetNotFoundAgain = 2;

constexpr int kChannelConfigFailed = 0;

// The receiver is told the new rate both in the OEMV family's words and in those of later
// generations; the leading line ends end any command it was half-way through.
void CommandReceiverToRate(CComPort& port, int baud)
{
    int written = 0;
    port.WriteString(FormatString("\r\n\r\nCOM %d\r\n", baud).c_str(), &written);
    port.WriteString(FormatString("\r\n\r\nserialconfig %d\r\n", baud).c_str(), &written);
}

}  // namespace

OemV1Descendants::OemV1Descendants(CComPort* port) : CGPSConfigurer(port)
{
}

OemV1Descendants::~OemV1Descendants() = default;

CComPort& OemV1Descendants::Port() const
{
    return *m_pPort;
}

bool OemV1Descendants::Acknowledged(const std::string& command, int timeoutMs) const
{
    return !ExchangeCommand(Port(), command, kOk, timeoutMs).empty();
}

bool OemV1Descendants::AcknowledgedInTurn(const std::vector<std::string>& commands,
                                          int timeoutMs) const
{
    for (const std::string& command : commands) {
        if (!Acknowledged(command, timeoutMs)) {
            return false;
        }
    }
    return true;
}

bool OemV1Descendants::AcknowledgedEach(const std::vector<std::string>& commands) const
{
    bool allAcknowledged = true;
    for (const std::string& command : commands) {
        allAcknowledged = Acknowledged(command) && allAcknowledged;
    }
    return allAcknowledged;
}

bool OemV1Descendants::ReapplyBaudRateAndCheckAlive()
{
    SetBaudRate(m_nBaudRate);
    return RequestVersionLog(kAliveTimeoutMs);
}

bool OemV1Descendants::AcknowledgedInTurnOnceAlive(const std::vector<std::string>& commands)
{
    return ReapplyBaudRateAndCheckAlive() && AcknowledgedInTurn(commands);
}

void OemV1Descendants::WriteBareLineEnd() const
{
    int written = 0;
    Port().WriteString("\r\n", &written);
}

bool OemV1Descendants::SupportsFeature2()
{
    return false;
}

bool OemV1Descendants::CanReset()
{
    return true;
}

bool OemV1Descendants::SupportsSbas()
{
    return true;
}

bool OemV1Descendants::SupportsNovatelExtras()
{
    return true;
}

// ---- Baud rate ----

int OemV1Descendants::SetBaudRate(int baud)
{
    m_nBaudRate = baud;
    for (const int rate : kSweepRates) {
        Port().SetBaudRate(rate);
        CommandReceiverToRate(Port(), baud);
        SleepMs(kBaudSwitchSettleMs);
        // The receiver's answer, if any, came at a rate that may no longer be the line's.
        Port().Drain();
        Port().FlushInput();
    }
    return Port().SetBaudRate(baud);
}

int OemV1Descendants::FindReceiverBaud()
{
    const int entryRate = Port().GetBaudRate();
    int foundRate = -1;
    for (const int candidate : kSweepRates) {
        Port().Drain();
        SetBaudRate(candidate);
        if (Acknowledged("echo off\r\n")) {
            foundRate = candidate;
            break;
        }
    }
    // Receiver and port go back to the entry rate even after a success; the caller switches to
    // the found rate itself.
    SetBaudRate(entryRate);
    return foundRate;
}

// ---- Version log ----

std::string OemV1Descendants::ReadVersionLog()
{
    return ReadVersionLine(Port());
}

bool OemV1Descendants::RequestVersionLog(int timeoutMs)
{
    if (timeoutMs <= 0) {
        return false;
    }
    if (timeoutMs <= kVersionRequestSliceMs) {
        return Acknowledged(kVersionLogOnce, timeoutMs);
    }
    if (Acknowledged(kVersionLogOnce, kVersionRequestSliceMs)) {
        return true;
    }
    // Through the slot, so that a generation's own request serves the rest of the time.
    return RequestVersionLog(timeoutMs - kVersionRequestSliceMs);
}

VersionRecord OemV1Descendants::GetVersionRecord()
{
    return ParseVersionRecord(ReadVersionLog());
}

std::string OemV1Descendants::GetModel()
{
    return GetVersionRecord().strModel;
}

std::string OemV1Descendants::GetFirmwareVersion()
{
    return FirmwareVersionFromLine(ReadVersionLog());
}

std::string OemV1Descendants::GetExtendedVersion()
{
    return ExtendedVersionFromLine(ReadVersionLog());
}

std::string OemV1Descendants::GetRawVersionInfo()
{
    return ReadVersionLog();
}

// ---- NMEA logs ----

void OemV1Descendants::OutputGGA(bool on)
{
    // The standard GGA is always switched off: the console reads the long form only.
    SendLogCommand(Port(), "GPGGA", "0.0", false);
    SendLogCommand(Port(), "GPGGALONG",
                   FormatLogPeriod(m_fGGAFrequency, m_fGGAFrequency > kGgaTwoDecimalsAboveHz), on);
    m_bGGAOn = on;
}

void OemV1Descendants::OutputNmea(const char* logName, float rateHz, bool on, bool& isOn)
{
    SendLogCommand(Port(), logName, FormatLogPeriod(rateHz, false), on);
    isOn = on;
}

void OemV1Descendants::OutputGSA(bool on)
{
    OutputNmea("GPGSA", m_fGSAFrequency, on, m_bGSAOn);
}

void OemV1Descendants::OutputGSV(bool on)
{
    OutputNmea("GPGSV", m_fGSVFrequency, on, m_bGSVOn);
}

void OemV1Descendants::OutputVTG(bool on)
{
    OutputNmea("GPVTG", m_fVTGFrequency, on, m_bVTGOn);
}

void OemV1Descendants::OutputZDA(bool on)
{
    OutputNmea("GPZDA", m_fZDAFrequency, on, m_bZDAOn);
}

void OemV1Descendants::SetRate(float& rate, float hz, bool isOn,
                               void (OemV1Descendants::*output)(bool))
{
    rate = hz;
    if (isOn) {
        (this->*output)(true);
    }
}

void OemV1Descendants::SetGGAFrequency(float hz)
{
    SetRate(m_fGGAFrequency, hz, m_bGGAOn, &OemV1Descendants::OutputGGA);
}

void OemV1Descendants::SetGSAFrequency(float hz)
{
    SetRate(m_fGSAFrequency, hz, m_bGSAOn, &OemV1Descendants::OutputGSA);
}

void OemV1Descendants::SetGSVFrequency(float hz)
{
    SetRate(m_fGSVFrequency, hz, m_bGSVOn, &OemV1Descendants::OutputGSV);
}

void OemV1Descendants::SetVTGFrequency(float hz)
{
    SetRate(m_fVTGFrequency, hz, m_bVTGOn, &OemV1Descendants::OutputVTG);
}

void OemV1Descendants::SetZDAFrequency(float hz)
{
    SetRate(m_fZDAFrequency, hz, m_bZDAOn, &OemV1Descendants::OutputZDA);
}

// ---- SBAS ----

bool OemV1Descendants::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0)
{
    for (const std::string& command : OemV1SbasCommands(prnEnabled, useSbas, allowType0)) {
        int written = 0;
        Port().WriteString(command.c_str(), &written);
        Port().Drain();
        WaitForOk(Port(), kSbasOkTimeoutMs);
    }
    return true;
}

std::vector<int> OemV1Descendants::BeginLaterSbas(const SbasPrnFlags& prnEnabled, bool useSbas)
{
    std::vector<int> prns = SelectedPrnsDescending(prnEnabled);
    WriteBareLineEnd();
    if (!useSbas || prns.empty()) {
        Acknowledged("SBASCONTROL DISABLE\r\n");
        return {};
    }
    if (AllPrnsSelected(prnEnabled)) {
        AcknowledgedInTurn(
            {"PSRDIFFSOURCE SBAS\r\n", "SBASCONTROL ENABLE AUTO\r\n", "ASSIGNALL SBAS AUTO\r\n"});
        return {};
    }
    return prns;
}

// ---- Family configuration of the later generations ----

bool OemV1Descendants::BeginLaterFamilyConfiguration()
{
    bool alive = ReapplyBaudRateAndCheckAlive();
    WriteBareLineEnd();
    if (alive) {
        alive = Acknowledged("PDPFILTER ENABLE\r\n");
    }
    SleepMs(kFamilySettleMs);
    return alive;
}

bool OemV1Descendants::SetLaterSerialPorts() const
{
    return AcknowledgedInTurn({
        FormatString("SERIALCONFIG COM2 %d N 8 1 N OFF\r\n", m_nBaudRate),
        FormatString("SERIALCONFIG COM1 %d N 8 1 N OFF\r\n", m_nBaudRate),
    });
}

// ---- Channel configuration ----

void OemV1Descendants::SetUseGlonass(bool use)
{
    SelectChannelConfig(use, false);
}

int OemV1Descendants::SelectChannelConfig(bool useGlonass, bool alternative)
{
    if (!SupportsGlonass()) {
        return kChannelConfigFailed;
    }
    if (!useGlonass) {
        return ApplyChannelConfig(kGpsOnlyChannelConfig);
    }
    return ApplyChannelConfig(alternative ? kGlonassAlternativeChannelConfig
                                          : kGlonassChannelConfig);
}

int OemV1Descendants::GetCurrentChannelConfig()
{
    Port().FlushInput();
    return ParseChannelConfigReply(ExchangeCommand(Port(), "log chanconfiglista once",
                                                   "#CHANCONFIGLIST", kCommandTimeoutMs));
}

int OemV1Descendants::ApplyChannelConfig(int number)
{
    const int portRate = Port().GetBaudRate();
    if (GetCurrentChannelConfig() == number) {
        return kChannelConfigDone;
    }
    const bool accepted = Acknowledged(FormatString("selectchanconfig %d", number));

    // The receiver restarts whether or not it acknowledged; what it sends meanwhile is stale.
    SleepMs(kRestartSettleMs);
    Port().FlushInput();
    SleepMs(kRestartBootMs);
    Port().FlushInput();

    bool answered = false;
    const Stopwatch search;
    while (search.ElapsedMs() < kRestartSearchMs) {
        answered = Acknowledged("echo off");
        if (answered) {
            break;
        }
        // The restarted receiver may have come back at another rate.
        SetBaudRate(portRate);
    }
    if (!accepted || !answered) {
        return kChannelConfigFailed;
    }
    ApplyBaseConfiguration();
    return kChannelConfigDone;
}

void OemV1Descendants::ApplyBaseConfiguration()
{
    ApplyFamilyConfiguration();
}

// ---- Models, reset, save ----

std::vector<std::string> OemV1Descendants::ListValidModels()
{
    return ParseValidModelsReply(ExchangeCommand(Port(), "log validmodelsa once\r\n",
                                                 "#VALIDMODELSA", kCommandTimeoutMs));
}

int OemV1Descendants::ResetReceiver(int timeoutMs)
{
    const long limitMs = timeoutMs == -1 ? kDefaultResetLimitMs : timeoutMs;
    if (!Acknowledged("reset\r\n")) {
        return kResetNotAcknowledged;
    }
    const Stopwatch search;
    for (;;) {
        SleepMs(kResetSearchPauseMs);
        const int rate = FindReceiverBaud();
        if (rate != -1) {
            SetBaudRate(rate);
            return kResetFoundAgain;
        }
        if (search.ElapsedMs() >= limitMs) {
            return kResetNotFoundAgain;
        }
    }
}

int OemV1Descendants::ResetPdpFilter()
{
    // Sent as it stands: the command already ends with its line end.
    return Acknowledged("PDPFILTER RESET\r\n") ? kPdpFilterAcknowledged : kPdpFilterNotAcknowledged;
}

bool OemV1Descendants::SaveConfiguration()
{
    return Acknowledged("SAVECONFIG");
}

}  // namespace NovatelCommon
