#include "cmdline/BaudConstraint.h"

namespace InitGpsParseCmdLine {

std::string BaudConstraint::description() const
{
    return "Baudrate must be either 115200 or 19200";
}

std::string BaudConstraint::shortID() const
{
    return "baudrate";
}

bool BaudConstraint::check(const int& value) const
{
    return value == 115200 || value == 19200;
}

}  // namespace InitGpsParseCmdLine
