#include "cmdline/ReceiverConstraint.h"

#include "receivers/ReceiverType.h"
#include "util/Strings.h"

namespace InitGpsParseCmdLine {

namespace {

constexpr size_t kOverridePieces = 2;  // name and firmware

}  // namespace

std::string ReceiverConstraint::description() const
{
    return "Type of receiver";
}

std::string ReceiverConstraint::shortID() const
{
    return "gps";
}

bool ReceiverConstraint::Parse(const std::string& value) const
{
    const std::vector<std::string> pieces = SplitFields(value, ":");
    if (pieces.size() != kOverridePieces) {
        return false;
    }
    m_receiverType = ReceiverTypeFromName(pieces[0]);
    m_firmware = pieces[1];
    // Only a third piece could carry the extended version, and three pieces are refused above.
    m_extendedVersion.clear();
    return true;
}

bool ReceiverConstraint::check(const std::string& value) const
{
    return Parse(value) && m_receiverType != ReceiverType::Unknown &&
           m_receiverType != ReceiverType::Uninitialized;
}

}  // namespace InitGpsParseCmdLine
