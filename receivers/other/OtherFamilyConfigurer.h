#ifndef GNSS_RECEIVERS_OTHER_OTHERFAMILYCONFIGURER_H
#define GNSS_RECEIVERS_OTHER_OTHERFAMILYCONFIGURER_H

#include "receivers/CGPSConfigurer.h"
#include "serial/CComPort.h"

#include <string>

// What the CSI, "$PMCAG" and generic configurers have in common. None of their receivers has
// GLONASS, NovAtel extras or a model to report, and each family switches and rates its five
// sentences in one way of its own: the sentence operations of the interface all lead to the
// family's Output and SetFrequency.
//
// The family is the template's argument (class CAutonomousCSI : public
// OtherFamilyConfigurer<CAutonomousCSI>), and its Output and SetFrequency are reached without a
// virtual call. So this class adds no virtual operation to the interface's 28: the one a family
// adds (the CSI configurer's SetDiffSource, the "$PMCAG" configurer's SetSbasMode) takes the next
// slot, as the family's callers expect, and the generic configurer adds none.
template <class Family>
class OtherFamilyConfigurer : public CGPSConfigurer {
public:
    bool SupportsFeature2() override { return false; }
    bool SupportsGlonass() override { return false; }
    bool SupportsSbas() override { return false; }
    bool SupportsNovatelExtras() override { return false; }
    // The receiver is not asked.
    std::string GetModel() override { return ""; }
    std::string GetFirmwareVersion() override { return ""; }

    void OutputGGA(bool on) final { Self().Output(Sentence::GGA, on); }
    void SetGGAFrequency(float hz) final { Self().SetFrequency(Sentence::GGA, hz); }
    void OutputGSA(bool on) final { Self().Output(Sentence::GSA, on); }
    void SetGSAFrequency(float hz) final { Self().SetFrequency(Sentence::GSA, hz); }
    void OutputGSV(bool on) final { Self().Output(Sentence::GSV, on); }
    void SetGSVFrequency(float hz) final { Self().SetFrequency(Sentence::GSV, hz); }
    void OutputVTG(bool on) final { Self().Output(Sentence::VTG, on); }
    void SetVTGFrequency(float hz) final { Self().SetFrequency(Sentence::VTG, hz); }
    void OutputZDA(bool on) final { Self().Output(Sentence::ZDA, on); }
    void SetZDAFrequency(float hz) final { Self().SetFrequency(Sentence::ZDA, hz); }

protected:
    // The port is not owned.
    explicit OtherFamilyConfigurer(CComPort* port) : CGPSConfigurer(port) {}

    enum class Sentence { GGA, GSA, GSV, VTG, ZDA };

    // Every family declares its own Output(Sentence, bool): its OutputGGA ... OutputZDA.

    // The family's SetGGAFrequency ... SetZDAFrequency, unless it declares a SetFrequency of its
    // own: hz is stored as it is, then the family's Output is called with the sentence's stored
    // flag, so that the rate takes effect at once.
    void SetFrequency(Sentence sentence, float hz)
    {
        FieldsOf(sentence).rate = hz;
        Self().Output(sentence, FieldsOf(sentence).on);
    }

    // Where the base keeps the sentence's rate and whether it was last switched on.
    struct SentenceFields {
        float& rate;
        bool& on;
    };
    SentenceFields FieldsOf(Sentence sentence)
    {
        const SentenceFields fields[] = {{m_fGGAFrequency, m_bGGAOn},
                                         {m_fGSAFrequency, m_bGSAOn},
                                         {m_fGSVFrequency, m_bGSVOn},
                                         {m_fVTGFrequency, m_bVTGOn},
                                         {m_fZDAFrequency, m_bZDAOn}};
        return fields[static_cast<int>(sentence)];
    }

    // Writes text on the port. The result is not looked at: these receivers confirm nothing.
    void Send(const std::string& text)
    {
        int written = 0;
        m_pPort->WriteString(text.c_str(), &written);
    }

private:
    Family& Self() { return static_cast<Family&>(*this); }
};

#endif
