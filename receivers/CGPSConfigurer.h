#ifndef GNSS_RECEIVERS_CGPSCONFIGURER_H
#define GNSS_RECEIVERS_CGPSCONFIGURER_H

#include <string>

#include "receivers/SbasPrnFlags.h"

class CComPort;

// One receiver family's way of querying and configuring the receiver on an open serial port.
// The run driver calls these operations in a fixed order; families that lack an operation keep the
// behaviour here, which is a silent no-op or a fixed answer, never an error. The virtual
// operations are declared in a fixed order that later families rely on: keep it.
class CGPSConfigurer {
public:
    virtual ~CGPSConfigurer();

    virtual bool SupportsFeature2() = 0;
    virtual bool SupportsGlonass() = 0;
    virtual bool CanReset();
    // 0 when the receiver was reset and found again; timeoutMs -1 is the family's default limit.
    virtual int ResetReceiver(int timeoutMs);
    virtual bool SupportsSbas() = 0;
    virtual bool SupportsNovatelExtras() = 0;
    virtual void SetUseGlonass(bool use);
    // 1 when the configuration is in use afterwards, 0 when it failed or is not supported.
    virtual int SelectChannelConfig(bool useGlonass, bool alternative);
    // Model, firmware and extended version are what the kernel driver is told; "" when unknown.
    virtual std::string GetModel() = 0;
    virtual std::string GetFirmwareVersion() = 0;
    virtual std::string GetExtendedVersion();
    virtual std::string GetRawVersionInfo();
    virtual void ApplyBaseConfiguration();
    // The port's result code of the final rate change (0 when nothing was changed).
    virtual int SetBaudRate(int baud) = 0;
    virtual void OutputGGA(bool on) = 0;
    virtual void SetGGAFrequency(float hz) = 0;
    virtual void OutputGSA(bool on) = 0;
    virtual void SetGSAFrequency(float hz) = 0;
    virtual void OutputGSV(bool on) = 0;
    virtual void SetGSVFrequency(float hz) = 0;
    virtual void OutputVTG(bool on) = 0;
    virtual void SetVTGFrequency(float hz) = 0;
    virtual void OutputZDA(bool on) = 0;
    virtual void SetZDAFrequency(float hz) = 0;
    // The family's own answer; the run driver does not look at it.
    virtual bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) = 0;
    // true when the receiver acknowledged that its configuration is saved.
    virtual bool SaveConfiguration();

protected:
    // The port is not owned: the run driver owns it and outlives the configurer.
    explicit CGPSConfigurer(CComPort* port);

    CGPSConfigurer(const CGPSConfigurer&) = delete;
    CGPSConfigurer& operator=(const CGPSConfigurer&) = delete;

    int m_nBaudRate;  // the value last given to SetBaudRate
    // Sentence rates in Hz, and whether each sentence was last switched on.
    float m_fGGAFrequency;
    float m_fVTGFrequency;
    float m_fZDAFrequency;
    float m_fGSVFrequency;
    float m_fGSAFrequency;
    bool m_bGGAOn;
    bool m_bVTGOn;
    bool m_bZDAOn;
    bool m_bGSVOn;
    bool m_bGSAOn;
    CComPort* m_pPort;
};

#endif
