#ifndef GNSS_DRIVER_ZRGPSCONTROL_H
#define GNSS_DRIVER_ZRGPSCONTROL_H

// The console's kernel GPS driver is told what is attached through its control device. The
// request numbers and the text buffer are the driver's ABI: they must not change.

#include <sys/ioctl.h>

namespace ZrGpsControl {

constexpr const char* kDevicePath = "/dev/zrgps_ctl";

// Text arguments travel in a fixed buffer; the driver relies on its last byte being NUL.
constexpr int kTextBufferSize = 60;
constexpr int kMaxTextLength = kTextBufferSize - 1;

constexpr unsigned long kSetReceiverVersion = 0x403CBC6DUL;   // write, type 0xBC, nr 109, text
constexpr unsigned long kSetReceiverType = 0x0000BC6CUL;      // none, type 0xBC, nr 108, by value
constexpr unsigned long kSetReceiverModel = 0x403CBC70UL;     // write, type 0xBC, nr 112, text
constexpr unsigned long kSetExtendedVersion = 0x403CBC71UL;   // write, type 0xBC, nr 113, text

static_assert(kSetReceiverVersion == _IOC(_IOC_WRITE, 0xBC, 109, kTextBufferSize), "ABI");
static_assert(kSetReceiverType == _IOC(_IOC_NONE, 0xBC, 108, 0), "ABI");
static_assert(kSetReceiverModel == _IOC(_IOC_WRITE, 0xBC, 112, kTextBufferSize), "ABI");
static_assert(kSetExtendedVersion == _IOC(_IOC_WRITE, 0xBC, 113, kTextBufferSize), "ABI");

// The driver numbers receivers its own way; every receiver type above 10 is "unknown" to it.
int DriverTypeFor(int receiverType);

}  // namespace ZrGpsControl

#endif
