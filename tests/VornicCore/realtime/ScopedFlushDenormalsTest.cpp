#include "VornicCore/realtime/ScopedFlushDenormals.h"

#include <gtest/gtest.h>

#include <limits>

namespace vornic {
namespace {

#if defined(__x86_64__) || defined(__aarch64__)
constexpr bool flushes = true;
#else
constexpr bool flushes = false;
#endif

// Volatile, so that the compiler leaves the arithmetic to the processor.
template <typename Number>
Number half(Number value) {
    const volatile Number operand = value;
    return operand * Number{0.5};
}

TEST(ScopedFlushDenormals, flushesResultsInItsScopeOnly) {
    constexpr float smallest = std::numeric_limits<float>::min();
    constexpr double smallestDouble = std::numeric_limits<double>::min();
    EXPECT_GT(half(smallest), 0.0F);
    {
        const ScopedFlushDenormals flush;
        EXPECT_EQ(half(smallest) == 0.0F, flushes);
        EXPECT_EQ(half(smallestDouble) == 0.0, flushes);
        {
            const ScopedFlushDenormals nested;
            EXPECT_EQ(half(smallest) == 0.0F, flushes);
        }
        EXPECT_EQ(half(smallest) == 0.0F, flushes) << "the inner scope ended the outer one";
    }
    EXPECT_GT(half(smallest), 0.0F);
    EXPECT_GT(half(smallestDouble), 0.0);
}

TEST(ScopedFlushDenormals, takesDenormalOperandsAsZero) {
    volatile float denormal = std::numeric_limits<float>::denorm_min();
    const ScopedFlushDenormals flush;
    EXPECT_EQ(denormal * 0x1p100F == 0.0F, flushes);
}

TEST(ScopedFlushDenormals, leavesNormalNumbersAlone) {
    const ScopedFlushDenormals flush;
    EXPECT_EQ(half(0.3F), 0.15F);
}

} // namespace
} // namespace vornic
