#include "receivers/CGPSConfigurer.h"

namespace {

// Every family starts from the same assumptions: the console's usual line speed, GGA and VTG at
// 5 Hz, ZDA every 5 s, GSV and GSA once a second, and every sentence off until switched on.
constexpr int kInitialBaudRate = 115200;
constexpr float kInitialGGAFrequency = 5.0f;
constexpr float kInitialVTGFrequency = 5.0f;
constexpr float kInitialZDAFrequency = 0.2f;
constexpr float kInitialGSVFrequency = 1.0f;
constexpr float kInitialGSAFrequency = 1.0f;

// ResetReceiver's answer for a family that cannot reset its receiver.
constexpr int kResetNotSupported = 1;

}  // namespace

CGPSConfigurer::CGPSConfigurer(CComPort* port)
    : m_nBaudRate(kInitialBaudRate),
      m_fGGAFrequency(kInitialGGAFrequency),
      m_fVTGFrequency(kInitialVTGFrequency),
      m_fZDAFrequency(kInitialZDAFrequency),
      m_fGSVFrequency(kInitialGSVFrequency),
      m_fGSAFrequency(kInitialGSAFrequency),
      m_bGGAOn(false),
      m_bVTGOn(false),
      m_bZDAOn(false),
      m_bGSVOn(false),
      m_bGSAOn(false),
      m_pPort(port)
{
}

CGPSConfigurer::~CGPSConfigurer() = default;

bool CGPSConfigurer::CanReset()
{
    return false;
}

int CGPSConfigurer::ResetReceiver(int /*timeoutMs*/)
{
    return kResetNotSupported;
}

void CGPSConfigurer::SetUseGlonass(bool /*use*/)
{
}

int CGPSConfigurer::SelectChannelConfig(bool /*useGlonass*/, bool /*alternative*/)
{
    return 0;
}

std::string CGPSConfigurer::GetExtendedVersion()
{
    return GetFirmwareVersion();
}

std::string CGPSConfigurer::GetRawVersionInfo()
{
    return GetFirmwareVersion();
}

void CGPSConfigurer::ApplyBaseConfiguration()
{
}

bool CGPSConfigurer::SaveConfiguration()
{
    return false;
}
