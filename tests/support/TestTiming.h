#ifndef GNSS_TESTS_SUPPORT_TESTTIMING_H
#define GNSS_TESTS_SUPPORT_TESTTIMING_H

// How late control may come back after a wait: on a loaded two-core machine, under the sanitizers,
// and several times more under qemu-arm, where every system call goes through the emulator. It is
// added to upper bounds only; a wait that ends early is always a fault.
#ifdef GNSS_TEST_UNDER_EMULATOR
constexpr long kSchedulingSlackMs = 1500;
#else
constexpr long kSchedulingSlackMs = 400;
#endif

#endif
