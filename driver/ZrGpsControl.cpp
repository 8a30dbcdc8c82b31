#include "driver/ZrGpsControl.h"

namespace ZrGpsControl {

namespace {

// Indexed by receiver type 0 ("Novatel") to 10 ("Uninitialized").
constexpr int kDriverTypes[] = {4, 5, 6, 7, 8, 9, 10, 11, 3, 2, 1};
constexpr int kDriverTypeCount = sizeof(kDriverTypes) / sizeof(kDriverTypes[0]);
constexpr int kDriverTypeUnknown = 2;

}  // namespace

int DriverTypeFor(int receiverType)
{
    if (receiverType < 0 || receiverType >= kDriverTypeCount) {
        return kDriverTypeUnknown;
    }
    return kDriverTypes[receiverType];
}

}  // namespace ZrGpsControl
