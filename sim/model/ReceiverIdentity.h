#ifndef GNSS_SIM_MODEL_RECEIVERIDENTITY_H
#define GNSS_SIM_MODEL_RECEIVERIDENTITY_H

#include <string>
#include <vector>

namespace GnssSim {

// One component of a receiver's version log, in the order the log lists its eight fields.
struct Component {
    std::string type;    // "GPSCARD", "PACKAGE" ...; written without quotes
    std::string model;
    std::string psn;     // product serial number
    std::string hwVersion;
    std::string swVersion;
    std::string bootVersion;
    std::string date;    // compile date, "2016/Nov/30"
    std::string time;    // compile time, "10:04:36"
};

// Who the receiver says it is. The first component is the receiver itself; a "PACKAGE"
// component, when there is one, carries the firmware package version in its software field.
struct ReceiverIdentity {
    std::vector<Component> components;

    Component& Main() { return components.front(); }
    const Component& Main() const { return components.front(); }

    // The "PACKAGE" component, or null.
    Component* Package();
    const Component* Package() const;

    // Sets the package version, adding a "PACKAGE" component when there is none; an empty version
    // removes the component.
    void SetPackageVersion(const std::string& version);
};

// One entry of the models list: a model name and its expiry date (all zero: never expires).
struct ValidModel {
    std::string model;
    int expiryYear = 0;
    int expiryMonth = 0;
    int expiryDay = 0;

    bool operator==(const ValidModel& other) const
    {
        return model == other.model && expiryYear == other.expiryYear && expiryMonth == other.expiryMonth &&
               expiryDay == other.expiryDay;
    }
};

}

#endif
