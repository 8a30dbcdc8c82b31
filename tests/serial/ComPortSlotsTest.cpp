#include "serial/CLinuxComPort.h"

#include "tests/support/VirtualSlots.h"

#include <gtest/gtest.h>

namespace {

TEST(ComPortSlots, VirtualOperationsKeepTheirPlaces)
{
    using P = CComPort;
    ExpectSlots(2, &P::Open, &P::Close, &P::IsOpen, &P::IsOpenFlag, &P::FlushInput);
    ExpectSlots(7, &P::UnsupportedOperation7, &P::UnsupportedOperation8, &P::UnsupportedFlush9, &P::Drain);
    ExpectSlots(11, &P::UnsupportedOperation11, &P::UnsupportedOperation12, &P::ReadByte, &P::UnsupportedRead14);
    ExpectSlots(15, &P::Read, &P::ReadUntil, &P::UnsupportedWrite17, &P::UnsupportedWrite18, &P::WriteString);
    ExpectSlots(20, &P::ReadChar, &P::ReadBuffer, &P::WriteChar, &P::WriteBuffer, &P::GetLineStatus);
    ExpectSlots(25, &P::LineQueryA, &P::UnsupportedOperation26, &P::LineQueryB, &P::LineQueryC,
                &P::UnsupportedOperation29);
    ExpectSlots(30, &P::GetBaudRate, &P::SetBaudRate, &P::UnsupportedOperation32, &P::UnsupportedOperation33,
                &P::UnsupportedOperation34);
    ExpectSlots(35, &P::GetFrameErrorCount, &P::MarkFrameErrorCount, &P::FillRingBuffer, &CLinuxComPort::GetDeviceName);
}

}  // namespace
