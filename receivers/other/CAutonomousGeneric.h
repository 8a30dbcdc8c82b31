#ifndef GNSS_RECEIVERS_OTHER_CAUTONOMOUSGENERIC_H
#define GNSS_RECEIVERS_OTHER_CAUTONOMOUSGENERIC_H

#include "receivers/other/OtherFamilyConfigurer.h"

class CComPort;

// The configurer for a receiver that no family recognises: the run driver can go through its
// whole sequence, and the receiver hears nothing. Every query answers "no" or "".
class CAutonomousGeneric : public OtherFamilyConfigurer<CAutonomousGeneric> {
public:
    // The port is not owned, and never used.
    explicit CAutonomousGeneric(CComPort* port);

    // Nothing is stored or sent. Always 0.
    int SetBaudRate(int baud) override;
    // Nothing is sent; false: SBAS was not configured.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;

private:
    friend class OtherFamilyConfigurer<CAutonomousGeneric>;

    // Nothing is stored or sent.
    void Output(Sentence sentence, bool on);
    void SetFrequency(Sentence sentence, float hz);
};

#endif
