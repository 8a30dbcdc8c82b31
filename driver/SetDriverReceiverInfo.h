#ifndef GNSS_DRIVER_SETDRIVERRECEIVERINFO_H
#define GNSS_DRIVER_SETDRIVERRECEIVERINFO_H

#include <string>

// Tells the kernel GPS driver which receiver type, firmware, extended version and model are
// attached. Texts longer than the driver's buffer are cut. Each failure is printed as perror does
// and the remaining requests are still made; nothing is returned, because the run's outcome does
// not depend on the driver having listened.
void SetDriverReceiverInfo(int receiverType, const std::string& firmware,
                           const std::string& extendedVersion, const std::string& model);

#endif
