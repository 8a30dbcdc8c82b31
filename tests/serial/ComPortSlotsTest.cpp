#include "serial/CComRingBuffer.h"
#include "serial/CLinuxComPort.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

// Where a virtual member sits in the vtable, read from its member pointer. Itanium C++ ABI
// (x86-64): the pointer holds 1 + the slot's byte offset. ARM C++ ABI: it holds the offset, and
// the adjustment's low bit marks it virtual.
template <typename Member>
long SlotOf(Member member)
{
    struct {
        std::uintptr_t pointer;
        std::ptrdiff_t adjustment;
    } bits;
    static_assert(sizeof(Member) == sizeof bits, "member pointers are two words");
    std::memcpy(&bits, &member, sizeof bits);
#if defined(__arm__) || defined(__aarch64__)
    return static_cast<long>(bits.pointer / sizeof(void*));
#else
    return static_cast<long>((bits.pointer - 1) / sizeof(void*));
#endif
}

#define EXPECT_SLOT(slot, member) EXPECT_EQ(slot, SlotOf(&member)) << #member

TEST(ComPortSlots, VirtualOperationsKeepTheirPlaces)
{
    EXPECT_SLOT(2, CComPort::Open);
    EXPECT_SLOT(3, CComPort::Close);
    EXPECT_SLOT(4, CComPort::IsOpen);
    EXPECT_SLOT(5, CComPort::IsOpenFlag);
    EXPECT_SLOT(6, CComPort::FlushInput);
    EXPECT_SLOT(7, CComPort::UnsupportedOperation7);
    EXPECT_SLOT(8, CComPort::UnsupportedOperation8);
    EXPECT_SLOT(9, CComPort::UnsupportedFlush9);
    EXPECT_SLOT(10, CComPort::Drain);
    EXPECT_SLOT(11, CComPort::UnsupportedOperation11);
    EXPECT_SLOT(12, CComPort::UnsupportedOperation12);
    EXPECT_SLOT(13, CComPort::ReadByte);
    EXPECT_SLOT(14, CComPort::UnsupportedRead14);
    EXPECT_SLOT(15, CComPort::Read);
    EXPECT_SLOT(16, CComPort::ReadUntil);
    EXPECT_SLOT(17, CComPort::UnsupportedWrite17);
    EXPECT_SLOT(18, CComPort::UnsupportedWrite18);
    EXPECT_SLOT(19, CComPort::WriteString);
    EXPECT_SLOT(20, CComPort::ReadChar);
    EXPECT_SLOT(21, CComPort::ReadBuffer);
    EXPECT_SLOT(22, CComPort::WriteChar);
    EXPECT_SLOT(23, CComPort::WriteBuffer);
    EXPECT_SLOT(24, CComPort::GetLineStatus);
    EXPECT_SLOT(25, CComPort::LineQueryA);
    EXPECT_SLOT(26, CComPort::UnsupportedOperation26);
    EXPECT_SLOT(27, CComPort::LineQueryB);
    EXPECT_SLOT(28, CComPort::LineQueryC);
    EXPECT_SLOT(29, CComPort::UnsupportedOperation29);
    EXPECT_SLOT(30, CComPort::GetBaudRate);
    EXPECT_SLOT(31, CComPort::SetBaudRate);
    EXPECT_SLOT(32, CComPort::UnsupportedOperation32);
    EXPECT_SLOT(33, CComPort::UnsupportedOperation33);
    EXPECT_SLOT(34, CComPort::UnsupportedOperation34);
    EXPECT_SLOT(35, CComPort::GetFrameErrorCount);
    EXPECT_SLOT(36, CComPort::MarkFrameErrorCount);
    EXPECT_SLOT(37, CComPort::FillRingBuffer);
    EXPECT_SLOT(38, CLinuxComPort::GetDeviceName);
}

std::string Extract(CComRingBuffer& ring, int max)
{
    char out[64];
    const int result = ring.ExtractLine(out, '\n', max);
    return std::to_string(result) + ":" + out;
}

void PushAll(CComRingBuffer& ring, const std::string& bytes)
{
    for (char byte : bytes) {
        ring.Push(static_cast<unsigned char>(byte));
    }
}

TEST(ComRingBuffer, ExtractsLinesDropsTheOldestWhenFullAndEndsWithClear)
{
    CComRingBuffer ring(8);
    PushAll(ring, "ab\ncdef");
    EXPECT_EQ("0:ab\n", Extract(ring, 64));
    EXPECT_EQ("1:cd", Extract(ring, 3));
    EXPECT_EQ("1:", Extract(ring, 1));
    EXPECT_EQ("1:ef", Extract(ring, 64));

    PushAll(ring, "0123456789\n");  // holds capacity - 1 bytes: the newest seven
    EXPECT_EQ("0:456789\n", Extract(ring, 64));

    ring.Clear();
    PushAll(ring, "def\n");
    EXPECT_EQ("1:", Extract(ring, 64));
}

}  // namespace
