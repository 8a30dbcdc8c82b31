#ifndef GNSS_RECEIVERS_OTHER_CAUTONOMOUSCSI_H
#define GNSS_RECEIVERS_OTHER_CAUTONOMOUSCSI_H

#include "receivers/CGPSConfigurer.h"

#include <string>

class CComPort;

// True when a CSI receiver answers "$JAPP" with "$>JAPP" within about 3 s. The answer may come
// in pieces and among other output. False also when the request cannot be written.
bool ProbeCsiReceiver(CComPort& port);

// Configures a CSI receiver with "$J" commands. Apart from the firmware query nothing is read
// back: the receiver does not confirm its commands, and write results are not looked at.
class CAutonomousCSI : public CGPSConfigurer {
public:
    // The port is not owned.
    explicit CAutonomousCSI(CComPort* port);

    bool SupportsFeature2() override;
    bool SupportsGlonass() override;
    bool SupportsSbas() override;
    bool SupportsNovatelExtras() override;
    // Always "": CSI receivers report no model.
    std::string GetModel() override;
    // Field 7 of the "$>JI" reply exactly as it stands: when it is the reply's last field it ends
    // with the receiver's CR LF. "" when no reply comes within 200 ms or it has fewer fields.
    std::string GetFirmwareVersion() override;
    // Only stored: the receiver keeps its line speed. Always 0.
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
    // "$JDIFF" for WAAS or none, then "$JWAASPRN" with at most two PRNs or ",,,AUTO". The
    // receiver has no type 0 setting, so allowType0 is not used. Always true.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;

    // Correction source: 0 none, 1 WAAS (SBAS), 2 beacon; any other value sends nothing.
    virtual void SetDiffSource(int source);

private:
    void Send(const std::string& command);
};

#endif
