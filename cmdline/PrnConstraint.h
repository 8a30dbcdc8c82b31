#ifndef GNSS_CMDLINE_PRNCONSTRAINT_H
#define GNSS_CMDLINE_PRNCONSTRAINT_H

#include <tclap/Constraint.h>

#include <string>

namespace InitGpsParseCmdLine {

// Accepts the SBAS PRNs, 120 to 158.
class PrnConstraint : public TCLAP::Constraint<int> {
public:
    std::string description() const override;
    std::string shortID() const override;
    bool check(const int& value) const override;
};

}  // namespace InitGpsParseCmdLine

#endif
