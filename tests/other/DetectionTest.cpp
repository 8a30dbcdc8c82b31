// Detection against every simulated receiver through the real port: which probes asked, in which
// order, what they cost, and the configurer made for the type found or cached.
#include "receivers/ReceiverDetection.h"
#include "receivers/novatel/COEMStar.h"
#include "tests/support/SimulatedReceiver.h"
#include "tests/support/TestTiming.h"
#include "util/Stopwatch.h"

#include <cxxabi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>

using Lines = std::vector<std::string>;

namespace {

const std::string kNovatel = "log versiona once\r\n";
const std::string kCsi = "$JAPP\r\n";
const std::string kPmcag = "$PMCAG,004,908*5D\r\n";

// What the probes that find nothing cost at least: the NovAtel version log at three rates, each
// 100 ms to settle and two requests of at least 1 s; "$JAPP" 3 s; "$PMCAG" 0.3 s. On top, the
// NovAtel requests may take 1.5 s each and the other two probes end with one more read.
constexpr long kNovatelMs = 3L * (100 + 2 * 1000);
constexpr long kCsiMs = 3000;
constexpr long kPmcagMs = 300;
constexpr long kAllProbesMs = kNovatelMs + kCsiMs + kPmcagMs;
constexpr long kSpreadMs = 3 * 2 * 500 + 2 * 200;
// A full detection is some forty waits, and a loaded machine is late on several of them.
constexpr long kDetectionSlackMs = 6 * kSchedulingSlackMs;

// The configurer's class, and for a COEMStar whether it is the GLONASS variant.
std::string ClassOf(CGPSConfigurer* configurer)
{
    if (configurer == nullptr) {
        return "none";
    }
    char* name = abi::__cxa_demangle(typeid(*configurer).name(), nullptr, nullptr, nullptr);
    const std::string result = name;
    std::free(name);
    auto* star = dynamic_cast<COEMStar*>(configurer);
    return star != nullptr && star->SupportsGlonass() ? result + " (StarG)" : result;
}

struct DetectionCase {
    const char* receiver;
    int type;
    const char* configurer;
    Lines probes;  // the requests heard, each repeat dropped
    long minMs;
};

// No probe recognises an OEMV: it is configured only when named on the command line.
const DetectionCase kEveryReceiver[] = {
    {"oemstar", 3, "COEMStar", {kNovatel}, 0},
    {"oemstarg", 4, "COEMStar (StarG)", {kNovatel}, 0},
    {"oem6", 5, "NovatelOem6", {kNovatel}, 0},
    {"oem7500", 6, "NovatelOem7", {kNovatel}, 0},
    {"oem7700", 7, "NovatelOem7", {kNovatel}, 0},
    {"csi", 1, "CAutonomousCSI", {kNovatel, kCsi}, kNovatelMs},
    {"pmcag", 0, "CAutonomousNovatel", {kNovatel, kCsi, kPmcag}, kNovatelMs + kCsiMs},
    {"oemv", 9, "CAutonomousGeneric", {kNovatel, kCsi, kPmcag}, kAllProbesMs},
    {"silent", 9, "CAutonomousGeneric", {kNovatel, kCsi, kPmcag}, kAllProbesMs}};

void PrintTo(const DetectionCase& c, std::ostream* os)
{
    *os << c.receiver;
}

class SimDetection : public testing::TestWithParam<DetectionCase> {};

// A fresh context detects before it makes the configurer; afterwards the cached type answers
// without a word to the receiver.
TEST_P(SimDetection, FindsFamilyAndConfigurer)
{
    const DetectionCase& expected = GetParam();
    SimulatedReceiver receiver(expected.receiver);
    ReceiverProbe probe(receiver.OpenPort());
    const Stopwatch clock;
    EXPECT_EQ(ClassOf(CreateConfigurer(probe).get()), expected.configurer);
    const long elapsedMs = clock.ElapsedMs();
    EXPECT_EQ(probe.cachedType, expected.type);
    Lines heard = receiver.Heard();
    heard.erase(std::unique(heard.begin(), heard.end()), heard.end());
    EXPECT_EQ(heard, expected.probes);
    EXPECT_GE(elapsedMs, expected.minMs);
    EXPECT_LE(elapsedMs, expected.minMs + kSpreadMs + kDetectionSlackMs);
    receiver.Sim().ClearHeard();
    EXPECT_EQ(DetectReceiverType(probe, false), expected.type);
    EXPECT_EQ(ClassOf(CreateConfigurer(probe).get()), expected.configurer);
    EXPECT_EQ(receiver.Heard(true), Lines());
}

INSTANTIATE_TEST_SUITE_P(Each, SimDetection, testing::ValuesIn(kEveryReceiver),
                         [](const auto& info) { return info.param.receiver; });

// V1 and Other are cached only from the command line, as no probe finds them; a type outside the
// catalogue gets no configurer. The generic configurer, for Other and Unknown, accepts everything
// and sends nothing. A forced detection, and the NovAtel requirement, do not believe a stale type.
TEST(CachedDetection, IsBelievedUnlessForced)
{
    SimulatedReceiver receiver("oem7700");
    ReceiverProbe probe(receiver.OpenPort());
    for (const auto& [type, configurer] : {std::pair<int, std::string>{2, "CAutonomousV1"},
                                           {11, "none"}, {8, "CAutonomousGeneric"}}) {
        probe.cachedType = type;
        EXPECT_EQ(DetectReceiverType(probe, false), type);
        EXPECT_EQ(ClassOf(CreateConfigurer(probe).get()), configurer);
    }
    const std::unique_ptr<CGPSConfigurer> generic = CreateConfigurer(probe);
    EXPECT_EQ(generic->SetBaudRate(19200), 0);
    EXPECT_FALSE(generic->ConfigureSbas(SbasPrnFlags{}, true, true));
    for (auto rate : {&CGPSConfigurer::SetGGAFrequency, &CGPSConfigurer::SetGSAFrequency,
                      &CGPSConfigurer::SetGSVFrequency, &CGPSConfigurer::SetVTGFrequency,
                      &CGPSConfigurer::SetZDAFrequency}) {
        (generic.get()->*rate)(1.0f);
    }
    for (auto output : {&CGPSConfigurer::OutputGGA, &CGPSConfigurer::OutputGSA,
                        &CGPSConfigurer::OutputGSV, &CGPSConfigurer::OutputVTG,
                        &CGPSConfigurer::OutputZDA}) {
        (generic.get()->*output)(true);
    }
    EXPECT_EQ(receiver.Heard(true), Lines());

    probe.cachedType = ReceiverType::CSI;
    EXPECT_EQ(DetectReceiverType(probe, true), ReceiverType::Oem7700);
    probe.cachedType = ReceiverType::CSI;
    RequireNovatelReceiver(probe);
    EXPECT_EQ(probe.cachedType, ReceiverType::Oem7700);
    EXPECT_EQ(ClassOf(probe.novatelConfigurer.get()), "NovatelOem7");
    EXPECT_EQ(receiver.Heard(), Lines(2, kNovatel));
}

}  // namespace
