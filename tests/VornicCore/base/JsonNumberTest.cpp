#include "VornicCore/base/JsonNumber.h"

#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/base/JsonReader.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace vornic {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(JsonNumber, isWrittenInItsShortestForm) {
    EXPECT_EQ(numberText(5), "5");
    EXPECT_EQ(numberText(-12.5), "-12.5");
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(1e300), "1e+300");
    EXPECT_EQ(numberText(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(-0.0), "-0.0");
}

TEST(JsonNumber, readsBackTheSame) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (std::isfinite(value)) {
            const nlohmann::json document = parseJson(numberText(value));
            EXPECT_EQ(std::bit_cast<std::uint64_t>(JsonReader(document).number()),
                      std::bit_cast<std::uint64_t>(value))
                << numberText(value);
        }
    }
    for (const double value :
         {0.0, -0.0, 0x1p63, 0x1p64, -0x1p63, 9007199254740993.0, 1e23,
          std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max()}) {
        const nlohmann::json document = parseJson(numberText(value));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(JsonReader(document).number()),
                  std::bit_cast<std::uint64_t>(value))
            << numberText(value);
    }
}

TEST(JsonNumber, aSingleIsWrittenAsASingle) {
    EXPECT_EQ(numberText(fromSingle(0.1F)), "0.1");
    EXPECT_EQ(numberText(fromSingle(-3.3F)), "-3.3");
    EXPECT_EQ(numberText(fromSingle(16777216.0F)), "16777216");
    EXPECT_EQ(numberText(fromSingle(-0.0F)), "-0.0");
    EXPECT_EQ(numberText(fromSingle(std::numeric_limits<float>::max())), "3.4028235e+38");
}

TEST(JsonNumber, aSingleReadsBackTheSame) {
    std::mt19937_64 random(2);
    for (int i = 0; i < 200000; ++i) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isfinite(value)) {
            const std::optional<float> back = toSingle(fromSingle(value));
            ASSERT_TRUE(back.has_value()) << value;
            EXPECT_EQ(std::bit_cast<std::uint32_t>(*back), std::bit_cast<std::uint32_t>(value));
        }
    }
}

TEST(JsonNumber, aSingleHasALargestValue) {
    constexpr float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(toSingle(3.4028235e38), largest);
    EXPECT_EQ(toSingle(-3.4028235e38), -largest);
    EXPECT_FALSE(toSingle(3.4028236e38).has_value());
    EXPECT_FALSE(toSingle(1e300).has_value());
    EXPECT_FALSE(toSingle(infinity).has_value());
    EXPECT_FALSE(toSingle(-infinity).has_value());
    EXPECT_FALSE(toSingle(notANumber).has_value());
    EXPECT_EQ(toSingle(1e-300), 0.0F);
    EXPECT_TRUE(std::isinf(fromSingle(std::numeric_limits<float>::infinity())));
}

TEST(JsonNumber, anIntegerHasALargestValue) {
    EXPECT_EQ(toInteger(-0x1p63), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(toInteger(-1.9), -1);
    EXPECT_FALSE(toInteger(0x1p63).has_value());
    EXPECT_FALSE(toInteger(-0x1.0000000000001p63).has_value());
    EXPECT_FALSE(toInteger(infinity).has_value());
    EXPECT_FALSE(toInteger(notANumber).has_value());
}

} // namespace
} // namespace vornic
