#ifndef GNSS_RECEIVERS_OTHER_CAUTONOMOUSCSI_H
#define GNSS_RECEIVERS_OTHER_CAUTONOMOUSCSI_H

#include "receivers/other/OtherFamilyConfigurer.h"

#include <string>

class CComPort;

// True when a CSI receiver answers "$JAPP" with "$>JAPP" within about 3 s. The answer may come
// in pieces and among other output. False also when the request cannot be written.
bool ProbeCsiReceiver(CComPort& port);

// The firmware version in a reply line to "$JI": field 7 (counting from 0, empty fields between
// adjacent commas included) exactly as it stands, so when it is the line's last field it keeps
// the receiver's CR LF. "" when the line does not begin with "$>JI" or has fewer fields.
std::string CsiFirmwareFromReply(const std::string& line);

// Configures a CSI receiver with "$J" commands. Apart from the firmware query nothing is read
// back: the receiver does not confirm its commands, and write results are not looked at.
class CAutonomousCSI : public OtherFamilyConfigurer<CAutonomousCSI> {
public:
    // The port is not owned.
    explicit CAutonomousCSI(CComPort* port);

    // True: the receiver takes WAAS corrections.
    bool SupportsSbas() override;
    // Field 7 of the "$>JI" reply exactly as it stands: when it is the reply's last field it ends
    // with the receiver's CR LF. "" when no reply comes within 200 ms or it has fewer fields.
    std::string GetFirmwareVersion() override;
    // Only stored: the receiver keeps its line speed. Always 0.
    int SetBaudRate(int baud) override;
    // "$JDIFF" for WAAS or none, then "$JWAASPRN" with at most two PRNs or ",,,AUTO". The
    // receiver has no type 0 setting, so allowType0 is not used. Always true.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;

    // Correction source: 0 none, 1 WAAS (SBAS), 2 beacon; any other value sends nothing.
    virtual void SetDiffSource(int source);

private:
    friend class OtherFamilyConfigurer<CAutonomousCSI>;

    // "$JASC" with the sentence's stored rate, then the flag is stored.
    void Output(Sentence sentence, bool on);
    // The rate is rounded to one the receiver can output before it is stored and sent.
    void SetFrequency(Sentence sentence, float hz);
};

#endif
