#include "serial/CZRFamilyComPort.h"
#include "tests/support/PathComPort.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

const char* const kReservedWarning =
    "Warning:  Application opened the reserved RS232 port for the IOC8051\n";

TEST(ZRFamilyComPort, PathsMapThroughTheTableInRowOrder)
{
    struct Case {
        const char* path;
        int number;
        const char* device;
    };
    const std::vector<Case> cases = {
        {"/dev/ttyO0", 0, "/dev/ttyO0"}, {"/dev/ttyO1", 1, "/dev/ttyO1"},
        {"/dev/ttyO3", 3, "/dev/ttyO3"}, {"/dev/null", 4, "/dev/null"},
        {"/dev/ttyS0", 257, "BadPort"},  {"ttyO1", 257, "BadPort"},
        {"/dev/ttyO1 ", 257, "BadPort"}, {"", 257, "BadPort"},
    };
    for (const Case& c : cases) {
        CaptureStderr();
        CZRFamilyComPort port{std::string(c.path)};
        EXPECT_EQ("", GetCapturedStderr()) << c.path;
        EXPECT_EQ(c.number, port.GetPortNumber()) << c.path;
        EXPECT_STREQ(c.device, port.GetDeviceName()) << c.path;
    }
}

TEST(ZRFamilyComPort, NumbersOutsideTheTableNameBadPort)
{
    const std::vector<std::pair<int, const char*>> cases = {
        {0, "/dev/ttyO0"}, {3, "/dev/ttyO3"}, {4, "/dev/null"}, {7, "/dev/null"},
        {8, "BadPort"},    {9, "BadPort"},    {257, "BadPort"}, {-1, "BadPort"},
    };
    for (const auto& [number, device] : cases) {
        EXPECT_STREQ(device, CZRFamilyComPort(number).GetDeviceName()) << number;
    }
}

TEST(ZRFamilyComPort, TheReservedPortWarnsOnceAtConstruction)
{
    CaptureStderr();
    CZRFamilyComPort byPath{std::string("/dev/ttyO2")};
    EXPECT_EQ(kReservedWarning, GetCapturedStderr());
    EXPECT_EQ(2, byPath.GetPortNumber());

    CaptureStderr();
    CZRFamilyComPort byNumber(2);
    EXPECT_EQ(kReservedWarning, GetCapturedStderr());

    CaptureStderr();
    byNumber.SetBaudRate(115200);
    byNumber.Open();  // no such UART here: only the failure lines may follow
    EXPECT_EQ(std::string::npos, GetCapturedStderr().find("Warning"));
}

TEST(ComPortOpenFailure, PrintsThreeLinesAndLeavesThePortClosed)
{
    struct Case {
        std::shared_ptr<CLinuxComPort> port;
        int code;
        std::string lines;
    };
    const std::vector<Case> cases = {
        {std::make_shared<PathComPort>("/nonexistent/tty"), COMERR_OPEN,
         "failed to open /nonexistent/tty\niRC = 100\nerror: No such file or directory\n"},
        {std::make_shared<CZRFamilyComPort>(std::string("/dev/ttyS9")), COMERR_OPEN,
         "failed to open BadPort\niRC = 100\nerror: No such file or directory\n"},
        // Opens, but is no terminal: the rate cannot be applied.
        {std::make_shared<CZRFamilyComPort>(4), COMERR_UNSUPPORTED,
         "failed to open /dev/null\niRC = 110\nerror: Inappropriate ioctl for device\n"},
    };
    for (const Case& c : cases) {
        CaptureStderr();
        EXPECT_EQ(c.code, c.port->Open());
        EXPECT_EQ(c.lines, GetCapturedStderr());
        EXPECT_EQ(0, c.port->IsOpen());
        EXPECT_EQ(COMERR_CLOSE_NOT_OPEN, c.port->Close());
    }
}

}  // namespace
