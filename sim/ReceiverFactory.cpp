#include "sim/ReceiverFactory.h"

#include "sim/receivers/CsiReceiver.h"
#include "sim/receivers/NovatelCommandTable.h"
#include "sim/receivers/NovatelReceiver.h"
#include "sim/receivers/PmcagReceiver.h"
#include "sim/receivers/SilentReceiver.h"

namespace GnssSim {

namespace {

std::string KnownNames()
{
    std::string names;
    for (const std::string& name : ReceiverNames()) {
        names += (names.empty() ? "" : ", ") + name;
    }
    return names;
}

}

bool MakeReceiverSetup(const SimOptions& options, TimePoint start, ReceiverSetup& setup, std::string& error)
{
    const bool known = FindReceiverKind(options.receiver, setup.kind);
    if (!known) {
        error = "unknown receiver \"" + options.receiver + "\" (known: " + KnownNames() + ")";
        FindReceiverKind("silent", setup.kind);
    }
    setup.identity = options.identity ? *options.identity : DefaultIdentity(setup.kind);
    setup.versionLine = options.versionLine;
    setup.validModels = options.validModels ? *options.validModels : DefaultValidModels(setup.kind, setup.identity);
    setup.channelConfigCount =
        options.channelConfigCount ? *options.channelConfigCount : TraitsOf(setup.kind.generation).channelConfigCount;
    setup.factory.baud = options.startupBaud;
    setup.factory.echo = options.echo;
    setup.factory.channelConfig = options.channelConfig;
    setup.initialBaud = static_cast<int>(LineFaultValue(options.faults, FaultKind::StartAtBaud, 0));
    setup.restartMs = options.restartMs;
    setup.port = options.port;
    setup.start = start;
    return known;
}

std::unique_ptr<ReceiverModel> MakeReceiverModel(const ReceiverSetup& setup, ReceiverLine& line)
{
    switch (setup.kind.family) {
    case Family::Novatel: return std::make_unique<NovatelReceiver>(setup, line);
    case Family::Csi: return std::make_unique<CsiReceiver>(setup, line);
    case Family::Pmcag: return std::make_unique<PmcagReceiver>(setup, line);
    case Family::Silent: break;
    }
    return std::make_unique<SilentReceiver>(setup, line);
}

}
