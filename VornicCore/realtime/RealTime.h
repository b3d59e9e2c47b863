#pragma once

/// Thread: real-time.
///
/// Marks a function of the real-time path: it may run on the audio thread, so it never allocates,
/// locks, logs, throws, blocks or makes a system call. Put it where `noexcept` stands.
///
/// Clang checks the mark from version 20 on; older compilers rely on the tests, which run the
/// marked functions under a guard that counts allocations and locks and forbids system calls.
#if defined(__clang__) && __clang_major__ >= 20
#define VORNIC_REALTIME noexcept [[clang::nonblocking]]
#else
#define VORNIC_REALTIME noexcept
#endif
