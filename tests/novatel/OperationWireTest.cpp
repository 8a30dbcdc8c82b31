#include "receivers/SbasPrnFlags.h"
#include "tests/novatel/NovatelWire.h"

#include <functional>
#include <ostream>
#include <set>
#include <tuple>

// Each operation on each generation it applies to: its result, what the receiver heard in order
// (up to the first refusal, where the operation stops there), and the waits it made.
namespace {

using Operation = std::function<int(OemV1Descendants&)>;
const auto NoAnswer = Fault::NoAnswer;

Lines operator+(Lines first, const Lines& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// The rounds of a rate sweep that the receiver heard at its own rate, each after two line ends.
Lines Swept(const Lines& commands)
{
    Lines lines;
    for (const std::string& command : commands) {
        lines = lines + Lines{"", "", command};
    }
    return lines;
}

Operation Sbas(const std::set<int>& prns, bool useSbas = true, bool allowType0 = false)
{
    return [=](OemV1Descendants& c) {
        return c.ConfigureSbas(BuildSbasPrnFlags(prns), useSbas, allowType0);
    };
}

// GPS, GLONASS, BeiDou, Galileo, QZSS, SBAS and PPP as "GRCEJSP", "." for a system that is off.
Operation Fix(const std::string& systems)
{
    return [systems](OemV1Descendants& c) {
        const auto on = [&systems](size_t i) { return systems[i] != '.'; };
        return c.ConfigureFix(on(0), on(1), on(2), on(3), on(4), on(5), on(6));
    };
}

Operation Select(bool useGlonass, bool alternative)
{
    return [=](OemV1Descendants& c) { return c.SelectChannelConfig(useGlonass, alternative); };
}

struct Case {
    const char* name;
    const char* receiver;
    std::vector<Fault> faults;
    Operation run;
    int result;
    Lines heard;       // without line ends; "" is a line end on its own
    long waitsMs = 0;  // the last read of each unanswered exchange may add half again
    int inUse = 1;     // the channel configuration in use
    int startupBaud = kConsoleBaud;
};

void PrintTo(const Case& c, std::ostream* os)
{
    *os << c.name << " on " << c.receiver;
}

class OnTheWire : public testing::TestWithParam<Case> {};

TEST_P(OnTheWire, Hears)
{
    const Case& c = GetParam();
    using Outcome = std::tuple<int, Lines>;
    const Outcome expected{c.result, WithLineEnds(c.heard)};
    long tookMs = 0;
    const Outcome outcome = RunSweeping(
        [&c, &tookMs] {
            GnssSim::SimOptions options = TestReceiverOptions(c.receiver, c.faults);
            options.channelConfig = c.inUse;
            options.startupBaud = c.startupBaud;
            SimulatedNovatel receiver(options);
            const Stopwatch clock;
            const int result = c.run(receiver.Configurer());
            tookMs = clock.ElapsedMs();
            return Outcome{result, receiver.Heard(true)};
        },
        expected);
    EXPECT_EQ(expected, outcome);
    ExpectTook(tookMs, c.waitsMs, c.waitsMs / 2);
}

constexpr long kSweepMs = 5L * 10;
const Lines kSave = {"SAVECONFIG"};

const Operation kPdpReset = [](auto& c) { return c.ResetPdpFilter(); };
const Operation kModels = [](auto& c) { return static_cast<int>(c.ListValidModels().size()); };
const std::string kList = "log chanconfiglista once";

// Every family configuration starts by commanding the receiver to its rate again. OEM6 pauses
// after the PDP filter, OEM7 after the ionosphere model too.
const Lines kRate = Swept({"COM 115200", "serialconfig 115200"});
constexpr long kPauseMs = 100;
const Lines kAsked(5000 / 100, "LOG VERSIONA ONCE");
const std::vector<Fault> kSilent = SilentTo("LOG VERSIONA ONCE");
const Lines kStar = {"LOG VERSIONA ONCE", "DYNAMICS LAND", "GGAQUALITY 1 WAAS 2",
                     "PDPFILTER ENABLE", "PDPMODE RELATIVE AUTO", "SETIONOTYPE AUTO",
                     "COM COM2,115200,N,8,1,N,OFF,ON", "COM COM1,115200,N,8,1,N,OFF,ON"};
const Lines kOem6 = {"LOG VERSIONA ONCE", "", "PDPFILTER ENABLE", "PDPMODE RELATIVE AUTO",
                     "GGAQUALITY 1 WAAS 2", "DYNAMICS LAND", "SERIALCONFIG COM2 115200 N 8 1 N OFF",
                     "SERIALCONFIG COM1 115200 N 8 1 N OFF"};
const Lines kOem7 = {"LOG VERSIONA ONCE", "", "PDPFILTER ENABLE", "PDPMODE RELATIVE AUTO",
                     "GGAQUALITY 1 WAAS 2", "DYNAMICS LAND", "SETIONOTYPE AUTO",
                     "RADARCONFIG ENABLE 36.11", "SERIALCONFIG COM2 115200 N 8 1 N OFF",
                     "SERIALCONFIG COM1 115200 N 8 1 N OFF"};
const Operation kFamily = [](auto& c) { return c.ApplyFamilyConfiguration(); };

INSTANTIATE_TEST_SUITE_P(
    Common, OnTheWire,
    testing::Values(
        // OEMV and OEM-Star receivers switch on "COM", later ones on "serialconfig"; each hears the
        // rounds at its rate until it has switched, then the last one at its new rate.
        // FindReceiverBaud puts both back to the entry rate, also after it found the receiver.
        Case{"StarUpThenSave", "oemstar", {},
             [](auto& c) { return c.SetBaudRate(115200) == 0 && c.SaveConfiguration(); },
             1, Swept({"COM 115200", "COM 115200", "serialconfig 115200"}) + kSave, kSweepMs, 1,
             9600},
        Case{"FindThenBackToTheEntryRate", "oem7500", {},
             [](auto& c) { return c.FindReceiverBaud(); }, 9600,
             Swept({"COM 9600", "serialconfig 9600"}) + Lines{"echo off"} +
                 Swept({"COM 115200", "serialconfig 115200", "COM 115200", "serialconfig 115200"}),
             2 * kSweepMs, 1, 57600},
        // Running at 115200, the receiver restarts at 57600. The search's first attempt falls into
        // the restart; it answers at the second, and both stay at that rate.
        Case{"ResetComesBackAtAnotherRate", "oemstar", {Fault::StartAtBaud(115200)},
             [](auto& c) { return c.ResetReceiver(5000) == 0 && c.SaveConfiguration(); }, 1,
             Lines{"reset"} + Swept({"COM 19200"}) + Lines{"echo off"} +
                 Swept({"COM 115200", "COM 115200", "serialconfig 115200", "COM 19200"}) + kSave,
             10 + kSweepMs + 1000 + 3 * kSweepMs, 1, 57600},
        // A refusal costs a second and is reported; the version log is asked for twice.
        Case{"VersionLog", "oem6", {NoAnswer("LOG VERSIONA ONCE")},
             [](auto& c) { return !c.ReadVersionLog().empty(); }, 0,
             {"", "log versiona once", "", "log versiona once"}, 2L * 1000},
        Case{"PdpFilter", "oem6", {NoAnswer("PDPFILTER RESET")}, kPdpReset, 1, {"PDPFILTER RESET"},
             1000},
        Case{"NotThePdpFilter", "oem7700", {}, kPdpReset, 2, {"PDPFILTER RESET"}},
        Case{"Save", "oemv", {NoAnswer("SAVECONFIG")},
             [](auto& c) { return c.SaveConfiguration(); }, 0, kSave, 1000},
        Case{"Reset", "oem7700", {NoAnswer("RESET")},
             [](auto& c) { return c.ResetReceiver(-1); }, 1, {"reset"}, 1000},
        // The receiver's own model and one more; their names are the parser's business.
        Case{"NotTheModelList", "oem6", {}, kModels, 2, {"log validmodelsa once"}},
        Case{"ModelList", "oem6", {NoAnswer("LOG VALIDMODELSA ONCE")}, kModels, 0,
             {"log validmodelsa once"}, 1000},
        // The standard GGA always goes off first; only GGA gets two decimals, and only above 10 Hz.
        // A rate set while a sentence is on reaches it at once. "<OK" is found among the sentences
        // that the receiver streams; a missing one costs 300 ms.
        Case{"SwitchedWhileStreaming", "oem7500", {},
             [](auto& c) {
                 c.SetGSVFrequency(20.0f);
                 c.OutputGSV(true);
                 c.OutputGGA(false);
                 c.SetGGAFrequency(10.0f);
                 c.OutputGGA(true);
                 c.SetGGAFrequency(20.0f);
                 c.OutputVTG(false);
                 return 1;
             },
             1,
             {"LOG GPGSV ONTIME 0.1", "UNLOG GPGGA", "UNLOG GPGGALONG", "UNLOG GPGGA",
              "LOG GPGGALONG ONTIME 0.1", "UNLOG GPGGA", "LOG GPGGALONG ONTIME 0.05",
              "UNLOG GPVTG"}},
        Case{"OkMissingThenZeroRate", "oemstar", {NoAnswer("LOG GPGSA *")},
             [](auto& c) {
                 c.OutputGSA(true);
                 c.OutputZDA(true);
                 c.SetZDAFrequency(0.0f);
                 return 1;
             },
             1, {"LOG GPGSA ONTIME 1.0", "LOG GPZDA ONTIME 5.0", "LOG GPZDA ONTIME inf"},
             2L * (100 + 200)},
        // A configuration in use is only asked for, and a receiver without GLONASS not at all (the
        // OEM6 reads its model to learn whether it has it). A switch restarts the receiver (1 s,
        // then 5 s), finds it and applies the family configuration again.
        Case{"StarGAlternativeInUse", "oemstarg", {}, Select(true, true), 1, {kList}, 0, 5},
        Case{"Oem6Gps", "oem6", {}, Select(false, true), 1, {"", "log versiona once", kList}, 0, 2},
        Case{"Oem7GlonassInUse", "oem7500", {}, Select(true, false), 1, {kList}, 0, 3},
        Case{"OemvWithoutGlonass", "oemv", {}, Select(true, true), 0, {}},
        Case{"StarWithoutGlonass", "oemstar", {}, Select(false, false), 0, {}},
        Case{"Oem6Switch", "oem6", {}, [](auto& c) { return c.ApplyChannelConfig(3); },
             1, Lines{kList, "selectchanconfig 3", "echo off"} + kRate + kOem6,
             1000 + 5000 + kSweepMs + kPauseMs}),
    kCaseName);

const std::set<int> kAll;           // no PRN given: every flag set
const std::string kOn = "SBASCONTROL ENABLE";

// OEMV and OEM-Star: channels 12 and 13, half a second for each "<OK", no refusal stops them,
// and the empty first command when SBAS is off waits it out. OEM6 and OEM7 end any half command
// first and set up alike when off or given every PRN (or none in range); OEM6 takes channels 16
// to 19 and assigns 16 even when SBAS could not be enabled, OEM7 20 to 23 with a Doppler window.
INSTANTIATE_TEST_SUITE_P(
    Sbas, OnTheWire,
    testing::Values(
        Case{"OemV1Off", "oemv", {}, Sbas(kAll, false), 1, {"sbascontrol disable"}, 500},
        Case{"OemV1AllPrns", "oemstar", {}, Sbas(kAll), 1,
             {"psrdiffsource sbas", "sbascontrol enable auto 0 none", "ASSIGN 12 AUTO",
              "ASSIGN 13 AUTO"}},
        Case{"OemV1TwoHighestPrns", "oemstarg", {}, Sbas({131, 135, 138}, true, true), 1,
             {"psrdiffsource sbas", "sbascontrol enable auto 0 zerototwo", "ASSIGN 12 138 0 500",
              "ASSIGN 13 135 0 500"}},
        Case{"OemV1OnePrnThroughRefusals", "oemv",
             {NoAnswer("PSRDIFFSOURCE SBAS"), NoAnswer("ASSIGN 12 *")}, Sbas({122}), 1,
             {"psrdiffsource sbas", "sbascontrol enable auto 0 none", "ASSIGN 12 122 0 500",
              "ASSIGN 13 IDLE"},
             2L * 500},
        Case{"LaterOff", "oem6", {}, Sbas({135}, false), 1, {"", "SBASCONTROL DISABLE"}},
        Case{"LaterNoPrn", "oem7700", {}, Sbas({999}), 1, {"", "SBASCONTROL DISABLE"}},
        Case{"LaterAllPrns", "oem7700", {}, Sbas(kAll, true, true), 1,
             {"", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO", "ASSIGNALL SBAS AUTO"}},
        Case{"LaterAllPrnsStopAtARefusal", "oem6", {NoAnswer("SBASCONTROL ENABLE AUTO")},
             Sbas(kAll), 1, {"", "PSRDIFFSOURCE SBAS", "SBASCONTROL ENABLE AUTO"}, 1000},
        Case{"Oem6TwoHighestPrns", "oem6", {}, Sbas({120, 135, 150}), 1,
             {"", kOn, "ASSIGN 16 150", "ASSIGN 17 135", "ASSIGN 18 IDLE", "ASSIGN 19 IDLE"}},
        Case{"Oem6Channel16EvenWhenNotEnabled", "oem6", {NoAnswer(kOn)}, Sbas({138}), 1,
             {"", kOn, "ASSIGN 16 138"}, 1000},
        Case{"Oem6StopsAtARefusedChannel", "oem6", {NoAnswer("ASSIGN 17 *")}, Sbas({120, 135}), 1,
             {"", kOn, "ASSIGN 16 135", "ASSIGN 17 120"}, 3000},
        Case{"Oem7TwoHighestPrns", "oem7500", {}, Sbas({120, 135, 158}), 1,
             {"", kOn, "ASSIGN 20 158 0 500", "ASSIGN 21 135 0 500", "ASSIGN 22 IDLE",
              "ASSIGN 23 IDLE"}},
        Case{"Oem7NothingAssignedWhenNotEnabled", "oem7700", {NoAnswer(kOn)}, Sbas({133}), 1,
             {"", kOn}, 1000},
        Case{"Oem7OnePrnStopsAtARefusedChannel", "oem7700", {NoAnswer("ASSIGN 21 *")}, Sbas({133}),
             1, {"", kOn, "ASSIGN 20 133 0 500", "ASSIGN 21 IDLE"}, 3000}),
    kCaseName);

const std::string kIdle = "ASSIGNLBANDBEAM IDLE";
const std::string kAuto = "ASSIGNLBANDBEAM AUTO";
const std::string kPpp = "PPPDYNAMICS AUTO";
const std::string kSrc = "PSRDIFFSOURCE SBAS";
const std::string kAutoOn = "SBASCONTROL ENABLE AUTO";
const std::string kOff = "SBASCONTROL DISABLE";
const std::string kGlo = "ASSIGNALL GLONASS AUTO";
const std::string kNoGlo = "ASSIGNALL GLONASS IDLE";

// No fix configuration stops early. OEM6: a fixed sequence per combination of GLONASS, SBAS and
// PPP, the other systems set against the grain. OEM7: each system locked in or out by itself,
// GPS never. OEM-Star: a channel configuration in use is only asked for; a refused one still costs
// its restart waits (1 s, then 1 s and 5 s), and SBAS is set all the same.
INSTANTIATE_TEST_SUITE_P(
    Fix, OnTheWire,
    testing::Values(
        Case{"Oem6None", "oem6", {}, Fix("..CEJ.."), 1, {kIdle, kSrc, kOff, kNoGlo}},
        Case{"Oem6Ppp", "oem6", {}, Fix("G.....P"), 1, {kAuto, kPpp, kSrc, kOff, kNoGlo}},
        Case{"Oem6Sbas", "oem6", {}, Fix("G....S."), 1, {kIdle, kSrc, kAutoOn, kNoGlo}},
        Case{"Oem6SbasPpp", "oem6", {}, Fix("G....SP"), 1, {kAuto, kPpp, kSrc, kAutoOn, kNoGlo}},
        Case{"Oem6Glonass", "oem6", {}, Fix("GR....."), 1, {kIdle, kSrc, kOff, kGlo}},
        // The exception: the SBAS-and-PPP sequence, SBAS enabled and GLONASS idled.
        Case{"Oem6GlonassPpp", "oem6", {}, Fix("GR....P"), 1, {kAuto, kPpp, kSrc, kAutoOn, kNoGlo}},
        Case{"Oem6GlonassSbas", "oem6", {}, Fix("GR...S."), 1, {kIdle, kSrc, kAutoOn, kGlo}},
        Case{"Oem6AllButGps", "oem6", {}, Fix(".RCEJSP"), 1, {kAuto, kPpp, kSrc, kAutoOn, kGlo}},
        Case{"Oem6NoEarlyStop", "oem6", {NoAnswer(kAuto), NoAnswer(kSrc)}, Fix("GR...SP"), 0,
             {kAuto, kPpp, kSrc, kAutoOn, kGlo}, 2L * 1000},
        Case{"Oem7None", "oem7700", {}, Fix("......."), 1,
             {"LOCKOUTSYSTEM GLONASS", "LOCKOUTSYSTEM BEIDOU", "LOCKOUTSYSTEM GALILEO",
              "LOCKOUTSYSTEM QZSS", kOff, kIdle}},
        Case{"Oem7GlonassBeidouSbasPpp", "oem7500", {}, Fix("GRC..SP"), 1,
             {"UNLOCKOUTSYSTEM GLONASS", "UNLOCKOUTSYSTEM BEIDOU", "LOCKOUTSYSTEM GALILEO",
              "LOCKOUTSYSTEM QZSS", kSrc, kAutoOn, kAuto, kPpp}},
        Case{"Oem7NoEarlyStop", "oem7700", {NoAnswer("LOCKOUTSYSTEM BEIDOU")}, Fix("GR.E.S."), 0,
             {"UNLOCKOUTSYSTEM GLONASS", "LOCKOUTSYSTEM BEIDOU", "UNLOCKOUTSYSTEM GALILEO",
              "LOCKOUTSYSTEM QZSS", kSrc, kAutoOn, kIdle},
             1000},
        Case{"StarWithoutGpsNothing", "oemstarg", {}, Fix(".RCEJSP"), 1, {}},
        Case{"StarGps", "oemstar", {}, Fix("G.CEJ.P"), 1, {kList, kSrc, kOff}, 0, 2},
        Case{"StarGpsSbas", "oemstar", {}, Fix("G....S."), 1, {kList, kSrc, kAutoOn}, 0, 2},
        Case{"StarGlonassLeavesSbasAlone", "oemstarg", {}, Fix("GR....."), 1, {kList}, 0, 3},
        Case{"StarGlonassSbas", "oemstarg", {}, Fix("GR...S."), 1, {kList, kSrc, kAutoOn}, 0, 5},
        Case{"StarRefusedConfigurationStillSetsSbas", "oemstar", {NoAnswer("SELECTCHANCONFIG *")},
             Fix("G....S."), 0, {kList, "selectchanconfig 2", "echo off", kSrc, kAutoOn},
             1000 + 6000},
        Case{"OemvNotAvailable", "oemv", {}, Fix("GRCEJSP"), 0, {}}),
    kCaseName);

INSTANTIATE_TEST_SUITE_P(
    Family, OnTheWire,
    testing::Values(
        Case{"OemvGgaQuality", "oemv", {}, kFamily, 1,
             kRate + Lines{"LOG VERSIONA ONCE", "GGAQUALITY 1 WAAS 2"}, kSweepMs},
        Case{"StarAll", "oemstar", {}, kFamily, 1, kRate + kStar, kSweepMs},
        Case{"StarStopsAtARefusal", "oemstar", {NoAnswer("GGAQUALITY *")}, kFamily, 0,
             kRate + Lines(kStar.begin(), kStar.begin() + 3), kSweepMs + 1000},
        Case{"StarSilent", "oemstarg", kSilent, kFamily, 0, kRate + kAsked, kSweepMs + 5000},
        Case{"Oem6All", "oem6", {}, kFamily, 1, kRate + kOem6, kSweepMs + kPauseMs},
        Case{"Oem6StopsAtTheFilter", "oem6", {NoAnswer("PDPFILTER ENABLE")}, kFamily, 0,
             kRate + Lines(kOem6.begin(), kOem6.begin() + 3), kSweepMs + 1000 + kPauseMs},
        Case{"Oem6StopsAtARefusal", "oem6", {NoAnswer("DYNAMICS *")}, kFamily, 0,
             kRate + Lines(kOem6.begin(), kOem6.begin() + 6), kSweepMs + kPauseMs + 1000},
        // Streaming GGA at 20 Hz meanwhile.
        Case{"Oem7AllWhileStreaming", "oem7500", {},
             [](auto& c) {
                 c.SetGGAFrequency(20.0f);
                 c.OutputGGA(true);
                 return c.ApplyFamilyConfiguration();
             },
             1, Lines{"UNLOG GPGGA", "LOG GPGGALONG ONTIME 0.05"} + kRate + kOem7,
             kSweepMs + 2 * kPauseMs},
        Case{"Oem7StopsAtTheIonosphere", "oem7700", {NoAnswer("SETIONOTYPE AUTO")}, kFamily, 0,
             kRate + Lines(kOem7.begin(), kOem7.begin() + 7), kSweepMs + 2 * kPauseMs + 1000},
        Case{"Oem7StopsAtTheRadar", "oem7500", {NoAnswer("RADARCONFIG *")}, kFamily, 0,
             kRate + Lines(kOem7.begin(), kOem7.begin() + 8), kSweepMs + 2 * kPauseMs + 1000},
        Case{"Oem7Silent", "oem7700", kSilent, kFamily, 0, kRate + kAsked + Lines{""},
             kSweepMs + 5000 + 2 * kPauseMs}),
    kCaseName);

}  // namespace
