#include "receivers/other/CAutonomousGeneric.h"

CAutonomousGeneric::CAutonomousGeneric(CComPort* port) : CGPSConfigurer(port) {}

bool CAutonomousGeneric::SupportsFeature2()
{
    return false;
}

bool CAutonomousGeneric::SupportsGlonass()
{
    return false;
}

bool CAutonomousGeneric::SupportsSbas()
{
    return false;
}

bool CAutonomousGeneric::SupportsNovatelExtras()
{
    return false;
}

std::string CAutonomousGeneric::GetModel()
{
    return "";
}

std::string CAutonomousGeneric::GetFirmwareVersion()
{
    return "";
}

int CAutonomousGeneric::SetBaudRate(int /*baud*/)
{
    return 0;
}

void CAutonomousGeneric::OutputGGA(bool /*on*/) {}

void CAutonomousGeneric::SetGGAFrequency(float /*hz*/) {}

void CAutonomousGeneric::OutputGSA(bool /*on*/) {}

void CAutonomousGeneric::SetGSAFrequency(float /*hz*/) {}

void CAutonomousGeneric::OutputGSV(bool /*on*/) {}

void CAutonomousGeneric::SetGSVFrequency(float /*hz*/) {}

void CAutonomousGeneric::OutputVTG(bool /*on*/) {}

void CAutonomousGeneric::SetVTGFrequency(float /*hz*/) {}

void CAutonomousGeneric::OutputZDA(bool /*on*/) {}

void CAutonomousGeneric::SetZDAFrequency(float /*hz*/) {}

bool CAutonomousGeneric::ConfigureSbas(const SbasPrnFlags& /*prnEnabled*/, bool /*useSbas*/,
                                       bool /*allowType0*/)
{
    return false;
}
