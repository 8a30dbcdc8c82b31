#ifndef GNSS_RECEIVERS_NOVATEL_OEMV1DESCENDANTS_H
#define GNSS_RECEIVERS_NOVATEL_OEMV1DESCENDANTS_H

#include "receivers/CGPSConfigurer.h"
#include "receivers/novatel/NovatelTimeouts.h"
#include "receivers/novatel/VersionRecord.h"

#include <string>
#include <vector>

namespace NovatelCommon {

// What every NovAtel receiver descended from the OEMV command set shares: NovAtel's ASCII command
// exchange, the version log, the NMEA logs, SBAS on channels 12 and 13, baud-rate changes,
// channel configurations, reset and save. Each generation supplies its GLONASS test, its family
// configuration and its fix configuration; OEM6 and OEM7 begin their family and SBAS set-ups
// alike and take that beginning from here.
//
// Six operations follow the 28 of CGPSConfigurer, in this order; keep it. Nothing here prints;
// every operation asks the receiver again (nothing is cached).
class OemV1Descendants : public CGPSConfigurer {
public:
    // The port is not owned. Sends nothing.
    explicit OemV1Descendants(CComPort* port);
    ~OemV1Descendants() override;

    bool SupportsFeature2() override;       // false
    bool CanReset() override;               // true
    // 0 when the receiver acknowledged "reset" and was found again (then at the rate it was found
    // at, see FindReceiverBaud), 1 when "reset" was not acknowledged, 2 when it was not found again
    // within timeoutMs (-1: 20 s).
    int ResetReceiver(int timeoutMs) override;
    bool SupportsSbas() override;           // true
    bool SupportsNovatelExtras() override;  // true
    // SelectChannelConfig(use, false).
    void SetUseGlonass(bool use) override;
    // Channel configuration 2 without GLONASS, 3 with it, 5 with it when alternative. 0 and nothing
    // sent when the receiver has no GLONASS; otherwise ApplyChannelConfig's result.
    int SelectChannelConfig(bool useGlonass, bool alternative) override;
    // The model name of the version log; "" when the receiver did not send one.
    std::string GetModel() override;
    // Six characters of the software version ("060600" of "OEM060600RN0000"); "" when unknown.
    std::string GetFirmwareVersion() override;
    // The software version of the receiver's "PACKAGE" component; "" when it has none.
    std::string GetExtendedVersion() override;
    // The whole version-log line; "" when the receiver did not send one.
    std::string GetRawVersionInfo() override;
    // ApplyFamilyConfiguration, whose result nobody needs here.
    void ApplyBaseConfiguration() override;
    // Commands the receiver to baud from each of the five rates it may be at, then sets the port
    // to baud. The port's code of that last change; no reply is examined.
    int SetBaudRate(int baud) override;
    void OutputGGA(bool on) override;
    void SetGGAFrequency(float hz) override;
    void OutputGSA(bool on) override;
    void SetGSAFrequency(float hz) override;
    void OutputGSV(bool on) override;
    void SetGSVFrequency(float hz) override;
    void OutputVTG(bool on) override;
    void SetVTGFrequency(float hz) override;
    void OutputZDA(bool on) override;
    void SetZDAFrequency(float hz) override;
    // SBAS corrections and the satellites on channels 12 and 13. Always true: no reply is needed.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;
    // true when the receiver acknowledged "SAVECONFIG".
    bool SaveConfiguration() override;

    // 2 when the receiver acknowledged "PDPFILTER RESET", 1 when not.
    virtual int ResetPdpFilter();
    // The first component of the version log; all fields "" when there was none.
    virtual VersionRecord GetVersionRecord();
    // The settings the console needs from this generation; true when every command was accepted.
    virtual bool ApplyFamilyConfiguration() = 0;
    // Which satellite systems and corrections the receiver uses; true when every command was
    // accepted. Each generation looks at the flags it can act on.
    virtual bool ConfigureFix(bool useGps, bool useGlonass, bool useBeidou, bool useGalileo,
                              bool useQzss, bool useSbas, bool usePpp) = 0;
    // Whether the receiver acknowledged a version-log request within timeoutMs, asking afresh
    // every 100 ms. The log itself is left unread.
    virtual bool RequestVersionLog(int timeoutMs);
    // The version-log line, asked for up to twice; "" when none came.
    virtual std::string ReadVersionLog();

    // The models the receiver's authorisation accepts, in its order; empty when it did not answer.
    std::vector<std::string> ListValidModels();
    // The channel configuration in use, or -1 when the receiver did not say.
    int GetCurrentChannelConfig();
    // Switches to channel configuration number, which restarts the receiver, finds the receiver
    // again (up to about 36 s) and re-applies the family configuration. 1 when done or already in
    // use, 0 when the receiver refused the switch or was not found again.
    int ApplyChannelConfig(int number);
    // The first of the five rates at which the receiver acknowledged "echo off" after being
    // commanded to it, or -1. Both receiver and port are put back to the port's entry rate first,
    // so a caller that wants the found rate switches to it itself.
    int FindReceiverBaud();

protected:
    // The receiver's own numbered channel configurations: GPS only, GPS with GLONASS, and the
    // GLONASS alternative that also has SBAS channels.
    static constexpr int kGpsOnlyChannelConfig = 2;
    static constexpr int kGlonassChannelConfig = 3;
    static constexpr int kGlonassAlternativeChannelConfig = 5;
    // ApplyChannelConfig's result when the configuration is in use.
    static constexpr int kChannelConfigDone = 1;

    CComPort& Port() const;
    // Whether the receiver answered command with "<OK" within timeoutMs (a reply line of the
    // exchange always begins with what it expects, so any reply at all is the acknowledgement).
    bool Acknowledged(const std::string& command, int timeoutMs = kCommandTimeoutMs) const;
    // Commands the receiver and the port to the configured rate again, then gives the receiver
    // five seconds to acknowledge a version-log request: whether it did.
    bool ReapplyBaudRateAndCheckAlive();
    // How OEMV and OEM-Star apply their family configuration: the rate re-applied, then, once the
    // receiver answers, commands sent in order until one is not acknowledged. True when all were.
    bool AcknowledgedInTurnOnceAlive(const std::vector<std::string>& commands);
    // Sends commands in order until one is not acknowledged; true when all were.
    bool AcknowledgedInTurn(const std::vector<std::string>& commands,
                            int timeoutMs = kCommandTimeoutMs) const;
    // Sends every command whatever the ones before it answered; true when all were acknowledged.
    bool AcknowledgedEach(const std::vector<std::string>& commands) const;

    // How OEM6 and OEM7 begin their family configuration: the rate re-applied, any half command
    // ended, the PDP filter enabled once the receiver answers, then a pause that is always made.
    // Whether the receiver answered and acknowledged the filter.
    bool BeginLaterFamilyConfiguration();
    // OEM6 and OEM7: both serial ports set to the configured rate, COM2 first; true when both
    // were acknowledged (COM1 is not sent after a refusal).
    bool SetLaterSerialPorts() const;
    // How OEM6 and OEM7 begin their SBAS set-up: any half command ended, then SBAS disabled when
    // it is not wanted or no PRN is selected, or the satellites left to the receiver when every
    // PRN is (stopping at the first refusal). The PRNs, highest first, that the generation is
    // still to put on its own channels; none when it is done.
    std::vector<int> BeginLaterSbas(const SbasPrnFlags& prnEnabled, bool useSbas);

private:
    // A line end on its own ends any half-received command in the receiver.
    void WriteBareLineEnd() const;
    // Switches a sentence with a one-decimal period on at rateHz, or off, and records which.
    void OutputNmea(const char* logName, float rateHz, bool on, bool& isOn);
    // Stores a sentence's new rate; a sentence that is on is switched on again at once through
    // its output slot, so that the receiver takes the rate. One that is off keeps it for later.
    void SetRate(float& rate, float hz, bool isOn, void (OemV1Descendants::*output)(bool));
};

}  // namespace NovatelCommon

#endif
