#include "receivers/Error.h"
#include "receivers/ReceiverDetection.h"
#include "receivers/novatel/CAutonomousV1.h"
#include "receivers/novatel/COEMStar.h"
#include "receivers/novatel/NovatelOem6.h"
#include "receivers/novatel/NovatelOem7.h"
#include "receivers/other/CAutonomousCSI.h"
#include "receivers/other/CAutonomousGeneric.h"
#include "receivers/other/CAutonomousNovatel.h"
#include "tests/other/SimulatedReceiverTest.h"
#include "util/Stopwatch.h"

#include <ostream>
#include <typeinfo>

namespace {

// A detection that fails every probe has slept through all their budgets, which a loaded
// machine stretches by more than a single wait.
constexpr long kDetectionSlackMs = 2500;

// The probes' budgets: the NovAtel version log at three rates, each 100 ms to settle and two
// requests of 1 to 1.5 s; then "$JAPP" (3 s, plus a last read) and "$PMCAG" (0.3 s, likewise).
constexpr long kNovatelProbeMinMs = 3 * (100 + 2 * 1000);
constexpr long kNovatelProbeMaxMs = 3 * (100 + 2 * 1500);
constexpr long kCsiProbeMinMs = 3000;
constexpr long kCsiProbeMaxMs = 3200;
constexpr long kPmcagProbeMinMs = 300;
constexpr long kPmcagProbeMaxMs = 500;
// A NovAtel receiver answers the first request at the first rate.
constexpr long kNovatelAnswerMaxMs = 1500;

// The configurer's class, as far as a test can tell them apart.
std::string ClassOf(CGPSConfigurer* configurer)
{
    if (configurer == nullptr) {
        return "none";
    }
    const std::type_info& type = typeid(*configurer);
    if (type == typeid(COEMStar)) {
        return configurer->SupportsGlonass() ? "COEMStar (StarG)" : "COEMStar";
    }
    const struct {
        const std::type_info& type;
        const char* name;
    } classes[] = {{typeid(CAutonomousNovatel), "CAutonomousNovatel"},
                   {typeid(CAutonomousCSI), "CAutonomousCSI"},
                   {typeid(CAutonomousV1), "CAutonomousV1"},
                   {typeid(NovatelOem6), "NovatelOem6"},
                   {typeid(NovatelOem7), "NovatelOem7"},
                   {typeid(CAutonomousGeneric), "CAutonomousGeneric"}};
    for (const auto& known : classes) {
        if (type == known.type) {
            return known.name;
        }
    }
    return type.name();
}

// Which probes asked the receiver, in order, from the requests it heard.
std::vector<std::string> ProbesHeard(const std::vector<std::string>& lines)
{
    std::vector<std::string> probes;
    for (const std::string& line : lines) {
        std::string probe = "other: " + line;
        if (line == "log versiona once\r\n") {
            probe = "NovAtel";
        } else if (line == "$JAPP\r\n") {
            probe = "CSI";
        } else if (line == "$PMCAG,004,908*5D\r\n") {
            probe = "PMCAG";
        }
        if (probes.empty() || probes.back() != probe) {
            probes.push_back(probe);
        }
    }
    return probes;
}

struct DetectionCase {
    const char* receiver;
    int type;
    const char* configurer;
    std::vector<std::string> probes;
    long minMs;
    long maxMs;
};

// Names the case by its receiver in test output.
void PrintTo(const DetectionCase& detectionCase, std::ostream* out)
{
    *out << detectionCase.receiver;
}

const std::vector<std::string> kAllProbes = {"NovAtel", "CSI", "PMCAG"};

const DetectionCase kDetectionCases[] = {
    {"oemstar", ReceiverType::OemStar, "COEMStar", {"NovAtel"}, 0, kNovatelAnswerMaxMs},
    {"oemstarg", ReceiverType::OemStarG, "COEMStar (StarG)", {"NovAtel"}, 0, kNovatelAnswerMaxMs},
    {"oem6", ReceiverType::Oem6, "NovatelOem6", {"NovAtel"}, 0, kNovatelAnswerMaxMs},
    {"oem7500", ReceiverType::Oem7500, "NovatelOem7", {"NovAtel"}, 0, kNovatelAnswerMaxMs},
    {"oem7700", ReceiverType::Oem7700, "NovatelOem7", {"NovAtel"}, 0, kNovatelAnswerMaxMs},
    // No probe recognises an OEMV: it is configured only when named on the command line.
    {"oemv", ReceiverType::Unknown, "CAutonomousGeneric", kAllProbes,
     kNovatelProbeMinMs + kCsiProbeMinMs + kPmcagProbeMinMs,
     kNovatelProbeMaxMs + kCsiProbeMaxMs + kPmcagProbeMaxMs},
    {"csi", ReceiverType::CSI, "CAutonomousCSI", {"NovAtel", "CSI"}, kNovatelProbeMinMs,
     kNovatelProbeMaxMs + kCsiProbeMaxMs},
    {"pmcag", ReceiverType::Novatel, "CAutonomousNovatel", kAllProbes,
     kNovatelProbeMinMs + kCsiProbeMinMs, kNovatelProbeMaxMs + kCsiProbeMaxMs + kPmcagProbeMaxMs},
    {"silent", ReceiverType::Unknown, "CAutonomousGeneric", kAllProbes,
     kNovatelProbeMinMs + kCsiProbeMinMs + kPmcagProbeMinMs,
     kNovatelProbeMaxMs + kCsiProbeMaxMs + kPmcagProbeMaxMs},
};

}  // namespace

class DetectionOnSimulator : public SimulatedReceiverTest,
                             public testing::WithParamInterface<DetectionCase> {};

// A fresh context detects before it makes the configurer; afterwards the cache answers without
// asking the receiver again.
TEST_P(DetectionOnSimulator, FindsTheFamilyInOrderAndMakesItsConfigurer)
{
    const DetectionCase& expected = GetParam();
    ASSERT_NO_FATAL_FAILURE(StartReceiver(expected.receiver));
    ReceiverProbe probe(*port);
    const Stopwatch clock;
    const std::unique_ptr<CGPSConfigurer> configurer = CreateConfigurer(probe);
    const long elapsedMs = clock.ElapsedMs();

    EXPECT_EQ(expected.type, probe.cachedType) << GetReceiverTypeName(probe.cachedType);
    EXPECT_EQ(expected.configurer, ClassOf(configurer.get()));
    EXPECT_EQ(expected.probes, ProbesHeard(HeardLines()));
    EXPECT_GE(elapsedMs, expected.minMs);
    EXPECT_LE(elapsedMs, expected.maxMs + kDetectionSlackMs);

    sim->ClearHeard();
    EXPECT_EQ(expected.type, DetectReceiverType(probe, false));
    EXPECT_EQ(expected.configurer, ClassOf(CreateConfigurer(probe).get()));
    ASSERT_TRUE(sim->WaitForQuiet(kQuietWaitMs));
    EXPECT_TRUE(sim->Heard().empty()) << sim->HeardTranscript();
}

INSTANTIATE_TEST_SUITE_P(EveryReceiver, DetectionOnSimulator, testing::ValuesIn(kDetectionCases),
                         [](const testing::TestParamInfo<DetectionCase>& info) {
                             return std::string(info.param.receiver);
                         });

using CachedDetection = SimulatedReceiverTest;

TEST_F(CachedDetection, EachCachedTypeGetsItsConfigurerWithoutProbing)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("silent"));
    // Uninitialized is left out: a context without a type detects first (DetectionOnSimulator).
    const struct {
        int type;
        const char* configurer;
    } cases[] = {{0, "CAutonomousNovatel"}, {1, "CAutonomousCSI"},     {2, "CAutonomousV1"},
                 {3, "COEMStar"},           {4, "COEMStar (StarG)"},   {5, "NovatelOem6"},
                 {6, "NovatelOem7"},        {7, "NovatelOem7"},        {8, "CAutonomousGeneric"},
                 {9, "CAutonomousGeneric"}, {11, "none"},              {12345, "none"}};
    for (const auto& c : cases) {
        ReceiverProbe probe(*port);
        probe.cachedType = c.type;
        EXPECT_EQ(c.configurer, ClassOf(CreateConfigurer(probe).get())) << c.type;
        EXPECT_EQ(c.type, DetectReceiverType(probe, false));
    }
    ASSERT_TRUE(sim->WaitForQuiet(kQuietWaitMs));
    EXPECT_TRUE(sim->Heard().empty()) << sim->HeardTranscript();
}

TEST_F(CachedDetection, ForcedDetectionAsksTheReceiverAgain)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("oem6"));
    ReceiverProbe probe(*port);
    probe.cachedType = ReceiverType::CSI;
    EXPECT_EQ(ReceiverType::Oem6, DetectReceiverType(probe, true));
    EXPECT_EQ(ReceiverType::Oem6, probe.cachedType);
    EXPECT_EQ((std::vector<std::string>{"NovAtel"}), ProbesHeard(HeardLines()));
}

using NovatelRequirement = SimulatedReceiverTest;

TEST_F(NovatelRequirement, DetectsAfreshAndKeepsTheNovatelConfigurer)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("oem7700"));
    ReceiverProbe probe(*port);
    probe.cachedType = ReceiverType::CSI;  // stale: must not be believed
    RequireNovatelReceiver(probe);
    EXPECT_EQ(ReceiverType::Oem7700, probe.cachedType);
    EXPECT_EQ("NovatelOem7", ClassOf(probe.novatelConfigurer.get()));
}

TEST_F(NovatelRequirement, RejectsACsiReceiver)
{
    ASSERT_NO_FATAL_FAILURE(StartReceiver("csi"));
    ReceiverProbe probe(*port);
    try {
        RequireNovatelReceiver(probe);
        FAIL() << "a CSI receiver was accepted";
    } catch (const Error& error) {
        EXPECT_STREQ("Did not detect a compatible receiver", error.what());
    }
    EXPECT_EQ(ReceiverType::CSI, probe.cachedType);
    EXPECT_EQ(nullptr, probe.novatelConfigurer);
}
