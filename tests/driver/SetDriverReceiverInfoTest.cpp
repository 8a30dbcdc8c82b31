// This program is linked with the control-device double, which stands in for /dev/zrgps_ctl
// while ZRGPS_CTL_RECORD names a file and records every request there. The end-to-end scenarios
// compare whole records, and what a run without the device prints.
#include "driver/SetDriverReceiverInfo.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

// Texts longer than the driver's buffer keep 59 characters and a closing NUL; every type above
// 10 is "unknown" (2) to the driver.
TEST(DriverHandover, CutsTextsAndNumbersTypesTheDriversWay)
{
    char record[] = "/tmp/zrgps-record-XXXXXX";
    const int fd = mkstemp(record);
    ASSERT_GE(fd, 0);
    close(fd);
    setenv("ZRGPS_CTL_RECORD", record, 1);
    const std::string seventy(70, 'f');
    const std::string cut = "\"" + seventy.substr(0, 59) + "\"\n";
    const int driverTypes[] = {4, 5, 6, 7, 8, 9, 10, 11, 3, 2, 1, 2, 2};
    for (int type = 0; type <= 12; ++type) {
        SetDriverReceiverInfo(type, seventy, "", seventy + "m");
        std::ostringstream requests;
        requests << std::ifstream(record).rdbuf();
        std::ofstream emptied(record, std::ios::trunc);  // the next call's requests alone
        emptied.close();
        std::string expected = "open O_RDWR\nioctl ZRGPS_IOCS_SET_RECEIVER_VER " + cut;
        expected += "open O_RDWR\nioctl ZRGPS_IOCS_SET_EXTENDED_VER \"\"\n";
        expected += "open O_RDWR\nioctl ZRGPS_IOCT_SET_RECEIVER_TYPE " + std::to_string(driverTypes[type]);
        expected += "\nopen O_RDWR\nioctl ZRGPS_IOCS_SET_RECEIVER_MODEL " + cut;
        EXPECT_EQ(requests.str(), expected)
            << "receiver type " << type;
    }
    unsetenv("ZRGPS_CTL_RECORD");
    unlink(record);
}
