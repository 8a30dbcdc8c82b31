#include "receivers/other/CAutonomousGeneric.h"

CAutonomousGeneric::CAutonomousGeneric(CComPort* port) : OtherFamilyConfigurer(port) {}

int CAutonomousGeneric::SetBaudRate(int /*baud*/)
{
    return 0;
}

bool CAutonomousGeneric::ConfigureSbas(const SbasPrnFlags& /*prnEnabled*/, bool /*useSbas*/,
                                       bool /*allowType0*/)
{
    return false;
}

void CAutonomousGeneric::Output(Sentence /*sentence*/, bool /*on*/) {}

void CAutonomousGeneric::SetFrequency(Sentence /*sentence*/, float /*hz*/) {}
