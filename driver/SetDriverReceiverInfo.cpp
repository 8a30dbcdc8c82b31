#include "driver/SetDriverReceiverInfo.h"

#include <fcntl.h>
#include <sys/ioctl.h>

#include <cstdio>
#include <cstring>

#include "driver/ZrGpsControl.h"

namespace {

// Every request gets a descriptor of its own, opened just before it, so that a missing control
// device is reported for each request ("open gps_ctl"): four lines that field engineers know. The
// descriptors are left for the process exit to close.
int OpenControlDevice()
{
    const int fd = open(ZrGpsControl::kDevicePath, O_RDWR);
    if (fd < 0) {
        perror("open gps_ctl");
    }
    return fd;
}

void FillTextBuffer(char (&buffer)[ZrGpsControl::kTextBufferSize], const std::string& text)
{
    strncpy(buffer, text.c_str(), ZrGpsControl::kMaxTextLength);
    buffer[ZrGpsControl::kMaxTextLength] = '\0';
}

void SendText(unsigned long request, const char* failurePrefix, const std::string& text,
              char (&buffer)[ZrGpsControl::kTextBufferSize])
{
    FillTextBuffer(buffer, text);
    const int fd = OpenControlDevice();
    if (fd >= 0 && ioctl(fd, request, buffer) < 0) {
        perror(failurePrefix);
    }
}

void SendType(int receiverType)
{
    const int fd = OpenControlDevice();
    if (fd >= 0 &&
        ioctl(fd, ZrGpsControl::kSetReceiverType, ZrGpsControl::DriverTypeFor(receiverType)) < 0) {
        perror("ioctl ZRGPS_IOCT_SET_RECEIVER_TYPE");
    }
}

}  // namespace

void SetDriverReceiverInfo(int receiverType, const std::string& firmware,
                           const std::string& extendedVersion, const std::string& model)
{
    char buffer[ZrGpsControl::kTextBufferSize] = {};
    SendText(ZrGpsControl::kSetReceiverVersion, "ioctl ZRGPS_IOCS_SET_RECEIVER_VER", firmware,
             buffer);
    SendText(ZrGpsControl::kSetExtendedVersion, "ioctl ZRGPS_IOCS_SET_EXTENDED_VER",
             extendedVersion, buffer);
    SendType(receiverType);
    SendText(ZrGpsControl::kSetReceiverModel, "ioctl ZRGPS_IOCS_SET_RECEIVER_MODEL", model,
             buffer);
}
