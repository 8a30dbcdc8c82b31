#include "serial/CLinuxComPort.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

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

// The members sit in consecutive slots from `first` on.
template <typename... Members>
void ExpectSlots(long first, Members... members)
{
    const std::vector<long> slots = {SlotOf(members)...};
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(first + static_cast<long>(i), slots[i]) << "member " << i << " of the row from slot " << first;
    }
}

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
