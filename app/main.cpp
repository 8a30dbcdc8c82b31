#include <iostream>
#include <memory>
#include <string>

#include "app/RunDriver.h"
#include "driver/SetDriverReceiverInfo.h"
#include "serial/CZRFamilyComPort.h"

int main(int argc, char** argv)
{
    const RunCollaborators console{
        [](const std::string& devicePath) -> std::unique_ptr<CComPort> {
            return std::make_unique<CZRFamilyComPort>(devicePath);
        },
        SetDriverReceiverInfo,
        std::cout,
        std::cerr,
    };
    return RunGnssSetup(argc, argv, console);
}
