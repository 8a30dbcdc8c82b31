#ifndef GNSS_RECEIVERS_RECEIVERPROBE_H
#define GNSS_RECEIVERS_RECEIVERPROBE_H

#include "receivers/ReceiverType.h"

#include <memory>

class CComPort;
namespace NovatelCommon {
class OemV1Descendants;
}

// What detection knows about the receiver on one open port, for one mode of a run: make a fresh
// one for each mode.
struct ReceiverProbe {
    // The port is not owned; it must stay open while detection and its configurers use it.
    explicit ReceiverProbe(CComPort& port);
    ~ReceiverProbe();
    ReceiverProbe(const ReceiverProbe&) = delete;
    ReceiverProbe& operator=(const ReceiverProbe&) = delete;

    CComPort& port;
    // The type found by the last detection; Uninitialized until a detection has run.
    int cachedType = ReceiverType::Uninitialized;
    // The NovAtel configurer made by RequireNovatelReceiver, owned by this context (and freed
    // with it). A caller that needs it longer takes it over with std::move.
    std::unique_ptr<NovatelCommon::OemV1Descendants> novatelConfigurer;
};

#endif
