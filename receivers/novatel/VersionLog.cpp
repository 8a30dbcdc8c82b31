#include "receivers/novatel/VersionLog.h"

#include "receivers/ReceiverType.h"
#include "receivers/novatel/NovatelExchange.h"
#include "serial/CComPort.h"
#include "util/Sleep.h"
#include "util/Strings.h"

#include <vector>

namespace NovatelCommon {

const char* const kVersionLogRequest = "log versiona once\r\n";

namespace {

const char* const kVersionLinePrefixes[] = {"#VERSIONA", "[COM1]#VERSIONA", "[COM2]#VERSIONA",
                                            "[COM3]#VERSIONA"};

// Body fields of the log's first component (0 is the component count).
constexpr size_t kComponentTypeField = 1;
constexpr size_t kModelField = 2;
constexpr size_t kPsnField = 3;
constexpr size_t kHwVersionField = 4;
constexpr size_t kSwVersionField = 5;
constexpr size_t kBootVersionField = 6;
// A whole first component: the count and eight fields (the last two are compile date and time).
constexpr size_t kFullComponentFields = 9;
// The firmware version needs the fields up to the boot version, though it reads only the software
// version.
constexpr size_t kFirmwareFields = kBootVersionField + 1;
// The "PACKAGE" search needs at least a count, a type and something after it.
constexpr size_t kPackageSearchFields = 4;
// From a component's type to its software version.
constexpr size_t kTypeToSwVersion = 4;
// The firmware version sits after the opening quote and the three-letter family name.
constexpr int kFirmwareFirstChar = 4;
constexpr int kFirmwareLastChar = 9;

const char* const kQuote = "\"";

// A receiver that answers sends its log well within a second, even at 9600 baud.
constexpr int kVersionReadWindowMs = 1000;
constexpr int kVersionReadSliceMs = 500;
// A receiver busy with something else can miss one request, so it is asked twice.
constexpr int kVersionRequestAttempts = 2;
// The line needs a moment at a new rate before the probe is worth sending.
constexpr int kProbeRateSettleMs = 100;
// The console's usual rate first; 9600 is where a receiver fresh from the factory listens.
const int kProbeRates[] = {115200, 19200, 9600};

// The body fields of a version line: empty unless the line has exactly one ";".
std::vector<std::string> BodyFieldsOfRecord(const std::string& line)
{
    const std::vector<std::string> parts = SplitFields(line, ";");
    if (parts.size() != 2) {
        return {};
    }
    return SplitFields(parts[1], ",");
}

// The body fields as the classification reads them: anything after the first ";".
std::vector<std::string> BodyFieldsAfterHeader(const std::string& line)
{
    const std::vector<std::string> parts = SplitFields(line, ";");
    if (parts.size() < 2) {
        return {};
    }
    return SplitFields(parts[1], ",");
}

// The body fields as the firmware and package searches read them: none unless the line is a
// version line.
std::vector<std::string> BodyFieldsOfVersionLine(const std::string& line)
{
    return IsVersionLine(line) ? BodyFieldsAfterHeader(line) : std::vector<std::string>();
}

std::string Unquoted(const std::string& field)
{
    return TrimChars(field, kQuote);
}

}  // namespace

bool IsVersionLine(const std::string& line)
{
    for (const char* prefix : kVersionLinePrefixes) {
        if (StartsWith(line, prefix)) {
            return true;
        }
    }
    return false;
}

VersionRecord ParseVersionRecord(const std::string& line)
{
    const std::vector<std::string> fields = BodyFieldsOfRecord(line);
    if (fields.size() < kFullComponentFields) {
        return VersionRecord();
    }
    VersionRecord record;
    record.strComponentType = Unquoted(fields[kComponentTypeField]);
    record.strModel = Unquoted(fields[kModelField]);
    record.strPsn = Unquoted(fields[kPsnField]);
    record.strHwVersion = Unquoted(fields[kHwVersionField]);
    record.strSwVersion = Unquoted(fields[kSwVersionField]);
    record.strBootVersion = Unquoted(fields[kBootVersionField]);
    return record;
}

std::string FirmwareVersionFromLine(const std::string& line)
{
    const std::vector<std::string> fields = BodyFieldsOfVersionLine(line);
    if (fields.size() < kFirmwareFields) {
        return "";
    }
    return SubstrRange(fields[kSwVersionField], kFirmwareFirstChar, kFirmwareLastChar);
}

std::string ExtendedVersionFromLine(const std::string& line)
{
    const std::vector<std::string> fields = BodyFieldsOfVersionLine(line);
    if (fields.size() < kPackageSearchFields) {
        return "";
    }
    std::string packageVersion;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (fields[i] != "PACKAGE" || i + kTypeToSwVersion > fields.size()) {
            continue;
        }
        // A component cut short right before its software version still counts as the last
        // package seen, with no version.
        const size_t swVersion = i + kTypeToSwVersion;
        packageVersion = swVersion < fields.size() ? Unquoted(fields[swVersion]) : std::string();
    }
    return packageVersion;
}

int ClassifyVersionLine(const std::string& line)
{
    const std::vector<std::string> fields = BodyFieldsAfterHeader(line);
    if (fields.size() < kFullComponentFields) {
        return ReceiverType::Unknown;
    }
    // The quotes are part of each test, so an unquoted field never matches.
    const std::string& model = fields[kModelField];
    const std::string& hw = fields[kHwVersionField];
    const std::string& sw = fields[kSwVersionField];
    if (StartsWith(sw, "\"L6X01")) {
        return model.find('G') != std::string::npos ? ReceiverType::OemStarG : ReceiverType::OemStar;
    }
    if (StartsWith(sw, "\"OEM06")) {
        return ReceiverType::Oem6;
    }
    if (StartsWith(hw, "\"OEM7500")) {
        return ReceiverType::Oem7500;
    }
    if (StartsWith(hw, "\"OEM7700")) {
        return ReceiverType::Oem7700;
    }
    return ReceiverType::Unknown;
}

int SendVersionLogRequest(CComPort& port)
{
    // Unlike a command exchange, stale input goes before pending output here; the first line end
    // ends whatever partial command the receiver may be holding.
    port.FlushInput();
    port.Drain();
    int written = 0;
    port.WriteString("\r\n", &written);
    return port.WriteString(kVersionLogRequest, &written);
}

namespace {

// The generation of the first recognised version line within one request's window, or Unknown.
int ProbeOnce(CComPort& port)
{
    SendVersionLogRequest(port);
    int type = ReceiverType::Unknown;
    ReadMatchingLine(port, kVersionReadWindowMs, kVersionReadSliceMs, kReplyBufferSize,
                     [&type](const std::string& line) {
                         if (IsVersionLine(line)) {
                             type = ClassifyVersionLine(line);
                         }
                         return type != ReceiverType::Unknown ? line : std::string();
                     });
    return type;
}

}  // namespace

std::string ReadVersionLine(CComPort& port)
{
    for (int attempt = 0; attempt < kVersionRequestAttempts; ++attempt) {
        if (SendVersionLogRequest(port) != 0) {
            continue;
        }
        std::string line = ReadMatchingLine(
            port, kVersionReadWindowMs, kVersionReadSliceMs, kReplyBufferSize,
            [](const std::string& reply) { return IsVersionLine(reply) ? reply : std::string(); });
        if (!line.empty()) {
            return line;
        }
    }
    return "";
}

int IdentifyNovatelReceiver(CComPort& port)
{
    const int entryRate = port.GetBaudRate();
    for (const int rate : kProbeRates) {
        port.SetBaudRate(rate);
        SleepMs(kProbeRateSettleMs);
        for (int attempt = 0; attempt < kVersionRequestAttempts; ++attempt) {
            const int type = ProbeOnce(port);
            if (type != ReceiverType::Unknown) {
                return type;
            }
        }
    }
    port.SetBaudRate(entryRate);
    return ReceiverType::Unknown;
}

}  // namespace NovatelCommon
