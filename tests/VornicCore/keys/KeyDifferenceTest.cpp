#include "VornicCore/keys/KeyDifference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

namespace vornic {
namespace {

TEST(KeyDifference, levelsSpreadAsOnARealKeyboard) {
    std::vector<double> levels;
    for (std::int64_t code = 0; code < 2000; ++code) {
        levels.push_back(KeyDifference::levelDb(code));
        EXPECT_EQ(KeyDifference::levelDb(code), levels.back());
        EXPECT_LE(std::abs(levels.back()), 6.0);
    }
    double mean = 0;
    double square = 0;
    for (const double level : levels) {
        mean += level / 2000;
        square += level * level / 2000;
    }
    EXPECT_NEAR(mean, 0.0, 0.15);
    EXPECT_NEAR(std::sqrt(square - mean * mean), 2.4, 0.15);
    // A normal distribution: two of three within one deviation.
    EXPECT_NEAR(static_cast<double>(
                    std::ranges::count_if(levels, [](double x) { return std::abs(x) < 2.4; })),
                2000 * 0.683, 80);
}

TEST(KeyDifference, theKeysOfAKeyboardDiffer) {
    std::set<double> levels;
    for (std::int64_t code = 0; code < 128; ++code) {
        levels.insert(KeyDifference::levelDb(code));
    }
    EXPECT_EQ(levels.size(), 128U);
}

TEST(KeyDifference, withoutAmountThePickIsTheVariation) {
    for (std::size_t pick = 0; pick < 12; ++pick) {
        EXPECT_EQ(KeyDifference::variation(4, 0.0, 0.0, pick, 12), pick);
        EXPECT_EQ(KeyDifference::variation(4, 0.5, 0.5, pick, 12), pick);
    }
}

TEST(KeyDifference, fullyAKeyPlaysAQuarterOfItsVariations) {
    for (const auto& [count, own] :
         {std::pair<std::size_t, std::size_t>{12, 3}, {13, 4}, {1, 1}, {2, 1}, {64, 16}}) {
        std::set<std::size_t> first;
        for (std::int64_t code = 0; code < 1000; ++code) {
            std::set<std::size_t> heard;
            for (std::size_t pick = 0; pick < count; ++pick) {
                const auto variation = KeyDifference::variation(code, 1.0, 0.999, pick, count);
                EXPECT_LT(variation, count);
                heard.insert(variation);
            }
            EXPECT_EQ(heard.size(), own) << count;
            first.insert(KeyDifference::variation(code, 1.0, 0.0, 0, count));
        }
        // No variation is nobody's.
        EXPECT_EQ(first.size(), count);
    }
}

} // namespace
} // namespace vornic
