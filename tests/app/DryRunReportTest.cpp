#include "app/DryRunReport.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace {

std::string Report(const std::function<void(GpsSettings&)>& change)
{
    GpsSettings settings;
    settings.bParsedOk = 1;
    settings.strPort = "/dev/ttyO1";
    change(settings);
    std::ostringstream out;
    PrintDryRunReport(settings, out);
    return out.str();
}

}  // namespace

TEST(DryRunReport, DefaultSettingsPrintTheWholeSettingsList)
{
    EXPECT_EQ(Report([](GpsSettings&) {}),
              "Need to configure GPS on port /dev/ttyO1 with settings:\n"
              "  bUseGps             Yes\n"
              "  bUseGlonass         No\n"
              "  bUseBeidou          No\n"
              "  bUseGalileo         No\n"
              "  bUseQzss            No\n"
              "  bUseSbas            No\n"
              "  bUsePpp             No\n"
              "  bAllowType0         No\n"
              "  bOutputGSA          No\n"
              "  fGSAFrequency       0\n"
              "  fGGAFrequency       5\n"
              "  PRNs                All\n"
              "  bOutputVTG    No\n"
              "  fVTGFrequency 5\n"
              "  bOutputGSV    No\n"
              "  fGSVFrequency 0\n"
              "  bOutputZDA    No\n"
              "  fZDAFrequency 0.2\n"
              "  fix           No\n"
              " Save Configuration No\n");
}

TEST(DryRunReport, PrintsPrnsAscendingEachFollowedByABlank)
{
    const std::string report = Report([](GpsSettings& s) {
        s.PRNs = {138, 120, 133};
        s.bNoUseGps = true;
        s.fGGAFrequency = 20.0f;
        s.bSaveConfig = true;
    });
    EXPECT_NE(report.find("  PRNs                120 133 138 \n"), std::string::npos) << report;
    EXPECT_NE(report.find("  bUseGps             No\n"), std::string::npos);
    EXPECT_NE(report.find("  fGGAFrequency       20\n"), std::string::npos);
    EXPECT_NE(report.find(" Save Configuration Yes\n"), std::string::npos);
}

TEST(DryRunReport, TheFirstModeThatAppliesDecidesTheLine)
{
    struct Case {
        std::function<void(GpsSettings&)> change;
        const char* line;
    };
    const Case cases[] = {
        {[](GpsSettings& s) { s.bParsedOk = 0; }, "Print Help\n"},
        {[](GpsSettings& s) {
             s.bQueryOnly = true;
             s.bListModels = true;
         },
         "Not initializing GPS or driver.  Querying GPS on port /dev/ttyO1\n"},
        {[](GpsSettings& s) {
             s.bListModels = true;
             s.bListCurrentModel = true;
         },
         "Listing models for your Novatel GPS\n"},
        {[](GpsSettings& s) { s.bListCurrentModel = true; },
         "List current model for your Novatel GPS\n"},
        // With both resets the dry run names the PDP filter, though a real run resets the
        // receiver.
        {[](GpsSettings& s) {
             s.bResetReceiver = true;
             s.bResetPdpFilter = true;
         },
         "Reseting PDP filter\n"},
        {[](GpsSettings& s) { s.bResetReceiver = true; }, "Reseting receiver\n"},
        {[](GpsSettings& s) { s.bConfigure = false; },
         "Initializing driver without configuring GPS for port /dev/ttyO1\n"},
        {[](GpsSettings& s) { s.nReceiverType = 5; }, "Setting driver receiver type to OEM6\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Report(c.change), c.line);
    }
}
