#include "VornicCore/realtime/IntegerPart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vornic {
namespace {

TEST(IntegerPart, truncatesTowardZero) {
    EXPECT_EQ(integerPart(2.9), 2);
    EXPECT_EQ(integerPart(-0.68), 0);
    EXPECT_EQ(integerPart(-31.68), -31);
    EXPECT_EQ(integerPart(-0x1p63), std::numeric_limits<std::int64_t>::min());
}

TEST(IntegerPart, isAbsentForWhatDoesNotFit) {
    EXPECT_FALSE(integerPart(0x1p63));
    EXPECT_FALSE(integerPart(std::nextafter(-0x1p63, -0x1p64)));
    EXPECT_FALSE(integerPart(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(integerPart(-std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(integerPart(std::numeric_limits<double>::quiet_NaN()));
}

} // namespace
} // namespace vornic
