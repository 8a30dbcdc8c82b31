// This program is linked with the control-device double, which stands in for /dev/zrgps_ctl
// while ZRGPS_CTL_RECORD names a file and records every request there.
#include "driver/SetDriverReceiverInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

using ::testing::ElementsAre;

namespace {

class DriverHandover : public testing::Test {
protected:
    void SetUp() override
    {
        char path[] = "/tmp/zrgps-record-XXXXXX";
        const int fd = mkstemp(path);
        ASSERT_GE(fd, 0);
        close(fd);
        m_recordPath = path;
        setenv("ZRGPS_CTL_RECORD", path, 1);
    }

    void TearDown() override
    {
        unsetenv("ZRGPS_CTL_RECORD");
        unlink(m_recordPath.c_str());
    }

    std::vector<std::string> Requests() const
    {
        std::ifstream record(m_recordPath);
        std::vector<std::string> lines;
        for (std::string line; std::getline(record, line);) {
            if (line.rfind("ioctl ", 0) == 0) {
                lines.push_back(line.substr(6));
            }
        }
        return lines;
    }

    std::string Record() const
    {
        std::ifstream record(m_recordPath);
        std::ostringstream text;
        text << record.rdbuf();
        return text.str();
    }

private:
    std::string m_recordPath;
};

}  // namespace

TEST_F(DriverHandover, MakesTheFourRequestsInOrderEachOnAFreshDescriptor)
{
    SetDriverReceiverInfo(7, "OM7CR0800", "OM7CR0800RN0000", "FFNRNNCBES1");
    EXPECT_EQ(Record(),
              "open O_RDWR\n"
              "ioctl ZRGPS_IOCS_SET_RECEIVER_VER \"OM7CR0800\"\n"
              "open O_RDWR\n"
              "ioctl ZRGPS_IOCS_SET_EXTENDED_VER \"OM7CR0800RN0000\"\n"
              "open O_RDWR\n"
              "ioctl ZRGPS_IOCT_SET_RECEIVER_TYPE 11\n"
              "open O_RDWR\n"
              "ioctl ZRGPS_IOCS_SET_RECEIVER_MODEL \"FFNRNNCBES1\"\n");
}

TEST_F(DriverHandover, CutsLongTextsToFiftyNineCharactersWithAClosingNul)
{
    const std::string seventy(70, 'f');
    SetDriverReceiverInfo(5, seventy, "", seventy + "m");
    EXPECT_THAT(Requests(),
                ElementsAre("ZRGPS_IOCS_SET_RECEIVER_VER \"" + seventy.substr(0, 59) + "\"",
                            "ZRGPS_IOCS_SET_EXTENDED_VER \"\"", "ZRGPS_IOCT_SET_RECEIVER_TYPE 9",
                            "ZRGPS_IOCS_SET_RECEIVER_MODEL \"" + seventy.substr(0, 59) + "\""));
}

TEST_F(DriverHandover, MapsReceiverTypesToTheDriversNumbers)
{
    const int expected[] = {4, 5, 6, 7, 8, 9, 10, 11, 3, 2, 1, 2, 2};
    for (int type = 0; type <= 12; ++type) {
        SetDriverReceiverInfo(type, "", "", "");
    }
    const std::vector<std::string> requests = Requests();
    ASSERT_EQ(requests.size(), 13u * 4u);
    for (int type = 0; type <= 12; ++type) {
        EXPECT_EQ(requests[type * 4 + 2],
                  "ZRGPS_IOCT_SET_RECEIVER_TYPE " + std::to_string(expected[type]))
            << "receiver type " << type;
    }
}

TEST(DriverHandoverWithoutDevice, ReportsEachFailedOpenAndGoesOn)
{
    unsetenv("ZRGPS_CTL_RECORD");
    testing::internal::CaptureStderr();
    SetDriverReceiverInfo(9, "", "", "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "open gps_ctl: No such file or directory\n"
              "open gps_ctl: No such file or directory\n"
              "open gps_ctl: No such file or directory\n"
              "open gps_ctl: No such file or directory\n");
}
