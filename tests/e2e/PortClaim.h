#ifndef GNSS_TESTS_E2E_PORTCLAIM_H
#define GNSS_TESTS_E2E_PORTCLAIM_H

#include <string>

// A scenario's hold on one of the console's /dev/ttyO* names. The scenarios that share a name
// are serialised by ctest; this guards against everything else: a name that is a real device, a
// link left by a run that was killed, and another program's simulator (the README demo links
// /dev/ttyO1 for a moment), which it waits for.
class PortClaim {
public:
    explicit PortClaim(std::string port);
    // Removes a link that the scenario's simulator left behind, whatever ended the scenario.
    ~PortClaim();
    PortClaim(const PortClaim&) = delete;
    PortClaim& operator=(const PortClaim&) = delete;

    // True when the name is free for the scenario to link or to keep missing; otherwise false
    // with the reason, which is a reason to skip the scenario rather than to fail it.
    bool Take(std::string& whyNot);

private:
    std::string m_port;
};

#endif
