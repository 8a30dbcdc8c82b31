#include "receivers/other/CAutonomousCSI.h"

#include "receivers/other/CsiCommands.h"
#include "receivers/other/PacedLineRead.h"
#include "receivers/other/StreamMatcher.h"
#include "serial/CComPort.h"
#include "util/Stopwatch.h"
#include "util/Strings.h"

namespace {

// A CSI receiver answers "$JAPP" at once; 3 s leaves room for a receiver busy with its output.
constexpr long kProbeBudgetMs = 3000;
// The "$JI" reply comes straight back: once 200 ms have passed without it (more than 199 whole
// milliseconds), the receiver does not have it.
constexpr long kFirmwareBudgetMs = 199;

constexpr char kProbeAnswer[] = "$>JAPP";
constexpr char kFirmwareReplyStart[] = "$>JI";
// The reply's field that holds the firmware version.
constexpr std::size_t kFirmwareField = 7;

// How the receiver names each sentence, and whether it can send it at 5 Hz and every 5 s as well
// as once a second (rate class A), in the order of OtherFamilyConfigurer::Sentence.
struct CsiSentence {
    const char* name;
    bool classA;
};
constexpr CsiSentence kCsiSentences[] = {
    {"GPGGA", true}, {"GPGSA", false}, {"GPGSV", false}, {"GPVTG", true}, {"GPZDA", true}};

}  // namespace

bool ProbeCsiReceiver(CComPort& port)
{
    const Stopwatch clock;
    port.FlushInput();
    int written = 0;
    if (port.WriteString("$JAPP\r\n", &written) != 0) {
        return false;
    }
    StreamMatcher matcher(kProbeAnswer);
    return ReadForAnswer(port, clock, kProbeBudgetMs,
                         [&matcher](int /*code*/, const char* bytes, int count) {
                             return matcher.Feed(bytes, count);
                         });
}

std::string CsiFirmwareFromReply(const std::string& line)
{
    if (!StartsWith(line, kFirmwareReplyStart)) {
        return "";
    }
    const std::vector<std::string> fields = SplitFields(line, ",");
    return fields.size() > kFirmwareField ? fields[kFirmwareField] : "";
}

CAutonomousCSI::CAutonomousCSI(CComPort* port) : OtherFamilyConfigurer(port) {}

bool CAutonomousCSI::SupportsSbas()
{
    return true;
}

std::string CAutonomousCSI::GetFirmwareVersion()
{
    m_pPort->FlushInput();
    Send("$JI\r\n");
    std::string line;
    const bool replied = ReadForAnswer(*m_pPort, Stopwatch(), kFirmwareBudgetMs,
                                       [&line](int code, const char* bytes, int count) {
                                           line = LineOf(code, bytes, count);
                                           return StartsWith(line, kFirmwareReplyStart);
                                       });
    return replied ? CsiFirmwareFromReply(line) : "";
}

int CAutonomousCSI::SetBaudRate(int baud)
{
    m_nBaudRate = baud;
    return 0;
}

void CAutonomousCSI::Output(Sentence sentence, bool on)
{
    const CsiSentence& csi = kCsiSentences[static_cast<int>(sentence)];
    Send(BuildCsiOutputCommand(csi.name, FieldsOf(sentence).rate, on, csi.classA));
    FieldsOf(sentence).on = on;
}

void CAutonomousCSI::SetFrequency(Sentence sentence, float hz)
{
    const bool classA = kCsiSentences[static_cast<int>(sentence)].classA;
    OtherFamilyConfigurer::SetFrequency(
        sentence, classA ? QuantiseCsiRateClassA(hz) : QuantiseCsiRateClassB(hz));
}

bool CAutonomousCSI::ConfigureSbas(const SbasPrnFlags& prnEnabled, bool useSbas,
                                   bool /*allowType0*/)
{
    SetDiffSource(useSbas ? 1 : 0);
    Send(BuildCsiSbasPrnCommand(prnEnabled));
    return true;
}

void CAutonomousCSI::SetDiffSource(int source)
{
    const std::string command = BuildCsiDiffSourceCommand(source);
    if (!command.empty()) {
        Send(command);
    }
}
