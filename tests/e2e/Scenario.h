#ifndef GNSS_TESTS_E2E_SCENARIO_H
#define GNSS_TESTS_E2E_SCENARIO_H

#include <string>
#include <vector>

// One end-to-end scenario, as its folder's scenario.txt describes it:
//
//   # what the scenario shows (comment lines are for people)
//   receiver oemstar --restart-ms 1     gnss-sim's receiver and any further gnss-sim options
//   port /dev/ttyO1                     the console port that the scenario owns
//   arguments --reset-receiver /dev/ttyO1
//   control-device missing              leave the driver's control device missing
//
// Values are split at blanks; double quotes keep a value with blanks together ("OEM 7700:1").
struct Scenario {
    std::string name;    // the folder's name
    std::string folder;  // where the description and the golden files are

    // gnss-sim's receiver, empty for a scenario without one (its port then stays missing).
    std::string receiver;
    std::vector<std::string> simulatorOptions;
    // The /dev/ttyO* device that the scenario links to the simulator or keeps missing; empty when
    // the tool opens no port.
    std::string port;
    std::vector<std::string> arguments;
    // Whether the control device double records the driver hand-over; otherwise the device is
    // missing, as on a console whose driver did not load.
    bool controlDevice = true;

    bool HasReceiver() const { return !receiver.empty(); }
};

// Reads root/name/scenario.txt; false with the reason when it cannot be read or makes no sense.
bool ReadScenario(const std::string& root, const std::string& name, Scenario& scenario,
                  std::string& error);

#endif
