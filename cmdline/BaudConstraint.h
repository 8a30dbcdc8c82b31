#ifndef GNSS_CMDLINE_BAUDCONSTRAINT_H
#define GNSS_CMDLINE_BAUDCONSTRAINT_H

#include <tclap/Constraint.h>

#include <string>

namespace InitGpsParseCmdLine {

// Accepts the two line speeds the console's GPS driver reads the receiver at.
class BaudConstraint : public TCLAP::Constraint<int> {
public:
    std::string description() const override;
    std::string shortID() const override;
    bool check(const int& value) const override;
};

}  // namespace InitGpsParseCmdLine

#endif
