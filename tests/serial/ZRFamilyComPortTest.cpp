#include "serial/CZRFamilyComPort.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

const char* const kReservedWarning =
    "Warning:  Application opened the reserved RS232 port for the IOC8051\n";

TEST(ZRFamilyComPort, PathsAndNumbersMapThroughTheTable)
{
    struct Case {
        const char* path;
        int number;
        const char* device;
    };
    const std::vector<Case> cases = {
        {"/dev/ttyO0", 0, "/dev/ttyO0"}, {"/dev/ttyO3", 3, "/dev/ttyO3"}, {"/dev/null", 4, "/dev/null"},
        {"/dev/ttyS0", 257, "BadPort"},  {"ttyO1", 257, "BadPort"},       {"/dev/ttyO1 ", 257, "BadPort"},
    };
    for (const Case& c : cases) {
        CaptureStderr();
        CZRFamilyComPort port{std::string(c.path)};
        EXPECT_EQ("", GetCapturedStderr()) << c.path;
        EXPECT_EQ(c.number, port.GetPortNumber()) << c.path;
        EXPECT_STREQ(c.device, port.GetDeviceName()) << c.path;
    }
    const std::vector<std::pair<int, const char*>> numbers = {
        {7, "/dev/null"}, {8, "BadPort"}, {257, "BadPort"}, {-1, "BadPort"}};
    for (const auto& [number, device] : numbers) {
        EXPECT_STREQ(device, CZRFamilyComPort(number).GetDeviceName()) << number;
    }
}

TEST(ZRFamilyComPort, TheReservedPortWarnsOnceAtConstruction)
{
    CaptureStderr();
    CZRFamilyComPort byPath{std::string("/dev/ttyO2")};
    EXPECT_EQ(kReservedWarning, GetCapturedStderr());

    CaptureStderr();
    CZRFamilyComPort byNumber(2);
    EXPECT_EQ(kReservedWarning, GetCapturedStderr());

    CaptureStderr();
    byNumber.SetBaudRate(115200);
    byNumber.Open();  // no such UART here: only the failure lines may follow
    EXPECT_EQ(std::string::npos, GetCapturedStderr().find("Warning"));
}

TEST(ComPortOpenFailure, PrintsThreeLinesAndStaysClosed)
{
    const std::vector<std::tuple<const char*, int, std::string>> cases = {
        {"/dev/ttyS9", COMERR_OPEN, "failed to open BadPort\niRC = 100\nerror: No such file or directory\n"},
        // Opens, but is no terminal: the rate cannot be applied.
        {"/dev/null", COMERR_UNSUPPORTED,
         "failed to open /dev/null\niRC = 110\nerror: Inappropriate ioctl for device\n"},
    };
    for (const auto& [path, code, lines] : cases) {
        CZRFamilyComPort port{std::string(path)};
        CaptureStderr();
        EXPECT_EQ(code, port.Open());
        EXPECT_EQ(lines, GetCapturedStderr());
        EXPECT_EQ(COMERR_CLOSE_NOT_OPEN, port.Close());
    }
}

}  // namespace
