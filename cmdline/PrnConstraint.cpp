#include "cmdline/PrnConstraint.h"

#include "receivers/SbasPrnFlags.h"

namespace InitGpsParseCmdLine {

std::string PrnConstraint::description() const
{
    return "PRN# must be between in the valid range of PRNs";
}

std::string PrnConstraint::shortID() const
{
    return "prn";
}

bool PrnConstraint::check(const int& value) const
{
    return value >= kFirstSbasPrn && value <= kLastSbasPrn;
}

}  // namespace InitGpsParseCmdLine
