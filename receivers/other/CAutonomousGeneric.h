#ifndef GNSS_RECEIVERS_OTHER_CAUTONOMOUSGENERIC_H
#define GNSS_RECEIVERS_OTHER_CAUTONOMOUSGENERIC_H

#include "receivers/CGPSConfigurer.h"

#include <string>

class CComPort;

// The configurer for a receiver that no family recognises: the run driver can go through its
// whole sequence, and the receiver hears nothing. Every query answers "no" or "".
class CAutonomousGeneric : public CGPSConfigurer {
public:
    // The port is not owned, and never used.
    explicit CAutonomousGeneric(CComPort* port);

    bool SupportsFeature2() override;
    bool SupportsGlonass() override;
    bool SupportsSbas() override;
    bool SupportsNovatelExtras() override;
    std::string GetModel() override;
    std::string GetFirmwareVersion() override;
    // Nothing is stored or sent. Always 0.
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
    // Nothing is sent; false: SBAS was not configured.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;
};

#endif
