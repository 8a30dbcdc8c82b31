#ifndef GNSS_TESTS_SUPPORT_VIRTUALSLOTS_H
#define GNSS_TESTS_SUPPORT_VIRTUALSLOTS_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

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
        EXPECT_EQ(first + static_cast<long>(i), slots[i])
            << "member " << i << " of the row from slot " << first;
    }
}

#endif
