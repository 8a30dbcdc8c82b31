#include "receivers/ReceiverDetection.h"

#include "receivers/Error.h"
#include "receivers/novatel/CAutonomousV1.h"
#include "receivers/novatel/COEMStar.h"
#include "receivers/novatel/NovatelOem6.h"
#include "receivers/novatel/NovatelOem7.h"
#include "receivers/novatel/OemV1Descendants.h"
#include "receivers/novatel/VersionLog.h"
#include "receivers/other/CAutonomousCSI.h"
#include "receivers/other/CAutonomousGeneric.h"
#include "receivers/other/CAutonomousNovatel.h"

namespace {

struct ProbeOutcome {
    int type;
    bool decidedByPmcag;
};

// Every family's probe in the fixed order; the type found is cached.
ProbeOutcome ProbeEveryFamily(ReceiverProbe& probe)
{
    probe.cachedType = NovatelCommon::IdentifyNovatelReceiver(probe.port);
    if (probe.cachedType != ReceiverType::Unknown) {
        return {probe.cachedType, false};
    }
    if (ProbeCsiReceiver(probe.port)) {
        probe.cachedType = ReceiverType::CSI;
        return {probe.cachedType, false};
    }
    if (ProbePmcagReceiver(probe.port)) {
        probe.cachedType = ReceiverType::Novatel;
        return {probe.cachedType, true};
    }
    return {ReceiverType::Unknown, false};
}

std::unique_ptr<CGPSConfigurer> MakeConfigurerFor(int type, CComPort* port)
{
    switch (type) {
    case ReceiverType::Novatel: return std::make_unique<CAutonomousNovatel>(port);
    case ReceiverType::CSI: return std::make_unique<CAutonomousCSI>(port);
    case ReceiverType::V1: return std::make_unique<CAutonomousV1>(port);
    case ReceiverType::OemStar: return std::make_unique<COEMStar>(port, false);
    case ReceiverType::OemStarG: return std::make_unique<COEMStar>(port, true);
    case ReceiverType::Oem6: return std::make_unique<NovatelOem6>(port);
    case ReceiverType::Oem7500:
    case ReceiverType::Oem7700: return std::make_unique<NovatelOem7>(port);
    case ReceiverType::Other:
    case ReceiverType::Unknown:
    case ReceiverType::Uninitialized: return std::make_unique<CAutonomousGeneric>(port);
    default: return nullptr;
    }
}

// The generations the NovAtel model queries work with. V1 is not among them: its receivers are
// never detected, only named on the command line.
bool IsNovatelGeneration(int type)
{
    return type >= ReceiverType::OemStar && type <= ReceiverType::Oem7700;
}

}  // namespace

int DetectReceiverType(ReceiverProbe& probe, bool force)
{
    if (probe.cachedType != ReceiverType::Uninitialized && !force) {
        return probe.cachedType;
    }
    return ProbeEveryFamily(probe).type;
}

std::unique_ptr<CGPSConfigurer> CreateConfigurer(ReceiverProbe& probe)
{
    if (probe.cachedType == ReceiverType::Uninitialized && ProbeEveryFamily(probe).decidedByPmcag) {
        return std::make_unique<CAutonomousNovatel>(&probe.port);
    }
    return MakeConfigurerFor(probe.cachedType, &probe.port);
}

void RequireNovatelReceiver(ReceiverProbe& probe)
{
    probe.cachedType = ReceiverType::Uninitialized;
    probe.cachedType = DetectReceiverType(probe, true);
    probe.novatelConfigurer.reset();
    if (!IsNovatelGeneration(probe.cachedType)) {
        throw Error("Did not detect a compatible receiver");
    }
    std::unique_ptr<CGPSConfigurer> configurer = CreateConfigurer(probe);
    auto* novatel = dynamic_cast<NovatelCommon::OemV1Descendants*>(configurer.get());
    if (novatel == nullptr) {
        throw Error(
            "Internal Error.  Probe found a compatible receiver, but could not get compatible "
            "pointer");
    }
    // The check above made sure the object is a NovAtel configurer; the probe takes it over.
    probe.novatelConfigurer.reset(
        static_cast<NovatelCommon::OemV1Descendants*>(configurer.release()));
}
