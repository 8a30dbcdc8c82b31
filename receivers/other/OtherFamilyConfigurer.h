#ifndef GNSS_RECEIVERS_OTHER_OTHERFAMILYCONFIGURER_H
#define GNSS_RECEIVERS_OTHER_OTHERFAMILYCONFIGURER_H

#include "receivers/CGPSConfigurer.h"

#include <string>

class CComPort;

// What the CSI, "$PMCAG" and generic configurers have in common. None of their receivers has
// GLONASS, NovAtel extras or a model to report, and each family switches and rates its five
// sentences in one way of its own: the sentence operations of the interface all lead to the
// family's Output and SetFrequency.
class OtherFamilyConfigurer : public CGPSConfigurer {
public:
    // All false here.
    bool SupportsFeature2() override;
    bool SupportsGlonass() override;
    bool SupportsSbas() override;
    bool SupportsNovatelExtras() override;
    // Both "" here: the receiver is not asked.
    std::string GetModel() override;
    std::string GetFirmwareVersion() override;

    void OutputGGA(bool on) final;
    void SetGGAFrequency(float hz) final;
    void OutputGSA(bool on) final;
    void SetGSAFrequency(float hz) final;
    void OutputGSV(bool on) final;
    void SetGSVFrequency(float hz) final;
    void OutputVTG(bool on) final;
    void SetVTGFrequency(float hz) final;
    void OutputZDA(bool on) final;
    void SetZDAFrequency(float hz) final;

protected:
    // The port is not owned.
    explicit OtherFamilyConfigurer(CComPort* port);

    enum class Sentence { GGA, GSA, GSV, VTG, ZDA };

    // The family's OutputGGA ... OutputZDA.
    virtual void Output(Sentence sentence, bool on) = 0;
    // The family's SetGGAFrequency ... SetZDAFrequency. Here: hz is stored as it is, then the
    // sentence's Output is called with its stored flag, so that the rate takes effect at once.
    virtual void SetFrequency(Sentence sentence, float hz);

    // Where the base keeps the sentence's rate and whether it was last switched on.
    struct SentenceFields {
        float& rate;
        bool& on;
    };
    SentenceFields FieldsOf(Sentence sentence);

    // Writes text on the port. The result is not looked at: these receivers confirm nothing.
    void Send(const std::string& text);
};

#endif
