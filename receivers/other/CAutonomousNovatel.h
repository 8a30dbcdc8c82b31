#ifndef GNSS_RECEIVERS_OTHER_CAUTONOMOUSNOVATEL_H
#define GNSS_RECEIVERS_OTHER_CAUTONOMOUSNOVATEL_H

#include "receivers/other/OtherFamilyConfigurer.h"

#include <cstdint>
#include <string>

class CComPort;

// True when the receiver answers "$PMCAG,004,908" with a line beginning "$PMCAG,908" within
// about 300 ms.
bool ProbePmcagReceiver(CComPort& port);

// Configures the receivers that speak "$PMCAG" sentences and binary packets (reported as type
// "Novatel"). Nothing is read back and write results are not looked at.
//
// Every setter sends the one output sentence that covers all five messages, and that sentence
// needs every stored rate to be at least 1 Hz: a slower rate, including ZDA's initial 0.2 Hz,
// ends the process with SIGFPE, the end start-up scripts know for this family (status 136). Set
// ZDA's rate (and any other below 1 Hz) to at least 1 Hz before any other setter.
class CAutonomousNovatel : public OtherFamilyConfigurer<CAutonomousNovatel> {
public:
    // The port is not owned.
    explicit CAutonomousNovatel(CComPort* port);

    // Stored (the sentence does not carry it), then the output sentence is sent. Always 0.
    int SetBaudRate(int baud) override;
    // The SBAS mode, then the disabled PRNs among 120 to 127, 129 to 135, 137 and 138 (the
    // receiver cannot be told about the others); committed. Always true.
    bool ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas, bool allowType0) override;

    // SBAS on or off, with or without RTCM type 0 messages; committed. Always true.
    virtual bool SetSbasMode(bool useSbas, bool allowType0);

    // Sends "$PMCAG,000,0" twice, 10 ms apart, as every binary change begins.
    void SendPmcag000Twice();

private:
    friend class OtherFamilyConfigurer<CAutonomousNovatel>;

    // Stores the flag, then sends the output sentence. A rate is stored as it is and sent the same
    // way.
    void Output(Sentence sentence, bool on);

    void SendOutputSentence();
    void SendPacket(std::uint8_t id, const std::uint8_t* payload, std::uint8_t length);
    // Makes the receiver take the binary changes sent before. Always true.
    bool Commit();
};

#endif
