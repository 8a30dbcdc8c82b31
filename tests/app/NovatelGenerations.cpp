#include "tests/app/NovatelGenerations.h"

#include <stdexcept>
#include <string>

#include "tests/app/InProcessRun.h"

GnssSim::ReceiverIdentity NovatelGeneration::Identity() const
{
    GnssSim::ReceiverIdentity identity;
    identity.components.push_back(main);
    identity.SetPackageVersion(packageVersion);
    return identity;
}

std::vector<GnssSim::ValidModel> NovatelGeneration::ValidModels() const
{
    return {{main.model, 0, 0, 0}, {otherModel, 2031, 6, 30}};
}

GnssSim::SimOptions NovatelGeneration::Options() const
{
    GnssSim::SimOptions options = ShortRestartOptions(receiver);
    options.identity = Identity();
    options.validModels = ValidModels();
    return options;
}

void PrintTo(const NovatelGeneration& generation, std::ostream* os)
{
    *os << generation.receiver;
}

const std::vector<NovatelGeneration>& RecognisedNovatelGenerations()
{
    // Identities as these receivers report them; each generation is told apart by its software
    // version (L6X01, OEM06), its model (a G on the StarG) or its hardware version (OEM7500,
    // OEM7700).
    static const std::vector<NovatelGeneration> generations{
        {"oemstar", 3, "OEM-Star",
         {"GPSCARD", "S1R0R0TT0", "SBN11050023", "OEMSTAR-1.01", "L6X010100RN0000",
          "L6X010000RB0000", "2011/Mar/14", "14:12:07"},
         "L6X010100RP0000", "010100", "S1R0R0TTR"},
        {"oemstarg", 4, "OEM-StarG",
         {"GPSCARD", "S1GR0RTT0", "SBN12080141", "OEMSTAR-2.00", "L6X010101RN0000",
          "L6X010000RB0000", "2012/Aug/02", "09:31:55"},
         "L6X010101RP0000", "010101", "S1GR0RTTR"},
        {"oem6", 5, "OEM6",
         {"GPSCARD", "D2LRPGTTN", "BFN11340108", "OEM615-1.01", "OEM060610RN0000",
          "OEM060200RB0000", "2015/Jan/28", "13:39:17"},
         "OEM060610RP0000", "060610", "D2L0PG0T0"},
        {"oem7500", 6, "OEM 7500",
         {"GPSCARD", "FFNRNNCBN", "DMKE19010011W", "OEM7500-0.00H", "OEM070700RN0000",
          "OEM070400RB0000", "2020/Jun/02", "10:21:05"},
         "EP0707000000", "070700", "FFNRNNCBES1"},
        {"oem7700", 7, "OEM 7700",
         {"GPSCARD", "FFNRNNCBES1", "BMHR17140001X", "OEM7700-1.01", "OEM070600RN0000",
          "OEM070400RB0000", "2019/Mar/22", "16:47:21"},
         "EP0706000000", "070600", "FFNRNNCBN"},
    };
    return generations;
}

const NovatelGeneration& RecognisedNovatelGeneration(const char* receiver)
{
    for (const NovatelGeneration& generation : RecognisedNovatelGenerations()) {
        if (std::string(generation.receiver) == receiver) {
            return generation;
        }
    }
    throw std::invalid_argument(std::string("no such generation: ") + receiver);
}
