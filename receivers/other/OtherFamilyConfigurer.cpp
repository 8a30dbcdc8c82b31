#include "receivers/other/OtherFamilyConfigurer.h"

#include "serial/CComPort.h"

OtherFamilyConfigurer::OtherFamilyConfigurer(CComPort* port) : CGPSConfigurer(port) {}

// Fixed answers and the sentence operations, which only pass on to the family's own: a line each.
bool OtherFamilyConfigurer::SupportsFeature2() { return false; }
bool OtherFamilyConfigurer::SupportsGlonass() { return false; }
bool OtherFamilyConfigurer::SupportsSbas() { return false; }
bool OtherFamilyConfigurer::SupportsNovatelExtras() { return false; }
std::string OtherFamilyConfigurer::GetModel() { return ""; }
std::string OtherFamilyConfigurer::GetFirmwareVersion() { return ""; }

void OtherFamilyConfigurer::OutputGGA(bool on) { Output(Sentence::GGA, on); }
void OtherFamilyConfigurer::SetGGAFrequency(float hz) { SetFrequency(Sentence::GGA, hz); }
void OtherFamilyConfigurer::OutputGSA(bool on) { Output(Sentence::GSA, on); }
void OtherFamilyConfigurer::SetGSAFrequency(float hz) { SetFrequency(Sentence::GSA, hz); }
void OtherFamilyConfigurer::OutputGSV(bool on) { Output(Sentence::GSV, on); }
void OtherFamilyConfigurer::SetGSVFrequency(float hz) { SetFrequency(Sentence::GSV, hz); }
void OtherFamilyConfigurer::OutputVTG(bool on) { Output(Sentence::VTG, on); }
void OtherFamilyConfigurer::SetVTGFrequency(float hz) { SetFrequency(Sentence::VTG, hz); }
void OtherFamilyConfigurer::OutputZDA(bool on) { Output(Sentence::ZDA, on); }
void OtherFamilyConfigurer::SetZDAFrequency(float hz) { SetFrequency(Sentence::ZDA, hz); }

void OtherFamilyConfigurer::SetFrequency(Sentence sentence, float hz)
{
    FieldsOf(sentence).rate = hz;
    Output(sentence, FieldsOf(sentence).on);
}

OtherFamilyConfigurer::SentenceFields OtherFamilyConfigurer::FieldsOf(Sentence sentence)
{
    const SentenceFields fields[] = {{m_fGGAFrequency, m_bGGAOn},
                                     {m_fGSAFrequency, m_bGSAOn},
                                     {m_fGSVFrequency, m_bGSVOn},
                                     {m_fVTGFrequency, m_bVTGOn},
                                     {m_fZDAFrequency, m_bZDAOn}};
    return fields[static_cast<int>(sentence)];
}

void OtherFamilyConfigurer::Send(const std::string& text)
{
    int written = 0;
    m_pPort->WriteString(text.c_str(), &written);
}
