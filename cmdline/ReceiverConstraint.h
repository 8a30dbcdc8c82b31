#ifndef GNSS_CMDLINE_RECEIVERCONSTRAINT_H
#define GNSS_CMDLINE_RECEIVERCONSTRAINT_H

#include <tclap/Constraint.h>

#include <string>

namespace InitGpsParseCmdLine {

// Accepts a receiver-type override "NAME:FIRMWARE" whose name is a known receiver type other than
// "Unknown" and "Uninitialized". The result of the last parse is kept, because the settings are
// filled from the same parse.
class ReceiverConstraint : public TCLAP::Constraint<std::string> {
public:
    std::string description() const override;
    std::string shortID() const override;
    bool check(const std::string& value) const override;

    // Splits value at every ':'. Exactly two pieces are accepted, so the extended version (a
    // third piece) always stays empty: a value with three pieces is rejected. The name is looked
    // up case-sensitively; an unknown name gives type 9. false when the piece count is wrong.
    bool Parse(const std::string& value) const;

    int Type() const { return m_receiverType; }
    const std::string& Firmware() const { return m_firmware; }
    const std::string& ExtendedVersion() const { return m_extendedVersion; }

private:
    mutable int m_receiverType = 10;
    mutable std::string m_firmware;
    mutable std::string m_extendedVersion;
};

}  // namespace InitGpsParseCmdLine

#endif
