#include "sim/model/ReceiverIdentity.h"

#include <algorithm>

namespace GnssSim {

namespace {

bool IsPackage(const Component& component)
{
    return component.type == "PACKAGE";
}

}

Component* ReceiverIdentity::Package()
{
    const auto found = std::find_if(components.begin(), components.end(), IsPackage);
    return found == components.end() ? nullptr : &*found;
}

const Component* ReceiverIdentity::Package() const
{
    const auto found = std::find_if(components.begin(), components.end(), IsPackage);
    return found == components.end() ? nullptr : &*found;
}

void ReceiverIdentity::SetPackageVersion(const std::string& version)
{
    if (version.empty()) {
        components.erase(std::remove_if(components.begin(), components.end(), IsPackage), components.end());
        return;
    }
    Component* package = Package();
    if (package == nullptr) {
        Component added;
        added.type = "PACKAGE";
        added.date = components.empty() ? std::string() : components.front().date;
        added.time = components.empty() ? std::string() : components.front().time;
        components.push_back(added);
        package = &components.back();
    }
    package->swVersion = version;
}

}
