#pragma once

#include <cstdint>

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace vornic {

/// Makes this thread treat denormal numbers as zero while the object lives, on x86-64 and 64-bit
/// ARM; elsewhere it does nothing. Filters that decay into silence end in denormals, and those cost
/// the processor a hundred times the work of a normal number. Thread: any.
class ScopedFlushDenormals {
  public:
#if defined(__x86_64__)
    ScopedFlushDenormals() noexcept : before_(_mm_getcsr()) {
        constexpr unsigned flushResults = 0x8000; // FTZ
        constexpr unsigned zeroOperands = 0x0040; // DAZ
        _mm_setcsr(before_ | flushResults | zeroOperands);
    }
    ~ScopedFlushDenormals() { _mm_setcsr(before_); }
#elif defined(__aarch64__)
    ScopedFlushDenormals() noexcept {
        constexpr std::uint64_t flushToZero = std::uint64_t{1} << 24; // FPCR.FZ
        asm volatile("mrs %0, fpcr" : "=r"(before_));
        asm volatile("msr fpcr, %0" : : "r"(before_ | flushToZero));
    }
    ~ScopedFlushDenormals() { asm volatile("msr fpcr, %0" : : "r"(before_)); }
#else
    ScopedFlushDenormals() noexcept {}
    ~ScopedFlushDenormals() {}
#endif

    ScopedFlushDenormals(const ScopedFlushDenormals&) = delete;
    ScopedFlushDenormals& operator=(const ScopedFlushDenormals&) = delete;

#if defined(__x86_64__)
  private:
    unsigned before_;
#elif defined(__aarch64__)
  private:
    std::uint64_t before_;
#endif
};

} // namespace vornic
