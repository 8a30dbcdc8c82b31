#include "sim/receivers/NovatelLogs.h"

#include "sim/text/Checksums.h"

#include <cstdio>

namespace GnssSim {

namespace {

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

std::string HeaderFields(const NovatelLogHeader& header)
{
    char text[160];
    (void)std::snprintf(text, sizeof text, "%s,%d,%.1f,%s,%d,%.3f,%s,%s,%d", header.port.c_str(), header.sequence,
                  header.idlePercent, header.timeStatus.c_str(), header.week, header.seconds,
                  header.receiverStatus.c_str(), header.reserved.c_str(), header.softwareBuild);
    return text;
}

std::string ComponentFields(const Component& component)
{
    return component.type + "," + Quoted(component.model) + "," + Quoted(component.psn) + "," +
           Quoted(component.hwVersion) + "," + Quoted(component.swVersion) + "," + Quoted(component.bootVersion) +
           "," + Quoted(component.date) + "," + Quoted(component.time);
}

// The sets a receiver offers, from GPS with SBAS to GPS, SBAS and GLONASS; the GLONASS sets are
// the third and the fifth, as the configurations that include GLONASS are numbered.
const char* const kChannelSets[] = {
    "2,12,GPSL1,2,SBASL1",
    "2,14,GPSL1,2,SBASL1",
    "3,12,GPSL1,2,SBASL1,12,GLOL1",
    "2,14,GPSL1,12,GLOL1",
    "3,14,GPSL1,2,SBASL1,12,GLOL1",
};

}

std::string FormatNovatelLog(const std::string& name, const NovatelLogHeader& header, const std::string& body)
{
    const std::string checked = name + "," + HeaderFields(header) + ";" + body;
    return "#" + checked + "*" + NovatelCrcText(NovatelCrc32(checked)) + "\r\n";
}

std::string VersionLogBody(const ReceiverIdentity& identity)
{
    std::string body = std::to_string(identity.components.size());
    for (const Component& component : identity.components) {
        body += "," + ComponentFields(component);
    }
    return body;
}

std::string ValidModelsLogBody(const std::vector<ValidModel>& models)
{
    std::string body = std::to_string(models.size());
    for (const ValidModel& model : models) {
        body += "," + Quoted(model.model) + "," + std::to_string(model.expiryYear) + "," +
                std::to_string(model.expiryMonth) + "," + std::to_string(model.expiryDay);
    }
    return body;
}

std::string ChanConfigListLogBody(int inUse, int count)
{
    const int kinds = static_cast<int>(sizeof kChannelSets / sizeof kChannelSets[0]);
    std::string body = std::to_string(inUse) + "," + std::to_string(count);
    for (int set = 0; set < count; ++set) {
        body += ",";
        body += kChannelSets[set % kinds];
    }
    return body;
}

}
