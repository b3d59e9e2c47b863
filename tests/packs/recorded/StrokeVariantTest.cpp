#include "packs/recorded/StrokeVariant.h"

#include "tests/packs/recorded/SyntheticStroke.h"

#include "packs/recorded/StrokeShape.h"
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace vornic::packs {
namespace {

double likeness(const std::vector<float>& a, const std::vector<float>& b) {
    const auto product = [](const std::vector<float>& x, const std::vector<float>& y) {
        return std::inner_product(x.begin(), x.end(), y.begin(), 0.0);
    };
    return product(a, b) / std::sqrt(product(a, a) * product(b, b));
}

std::vector<float> recording() {
    return cutStroke(synthesise({}), 20 * millisecond);
}

TEST(StrokeVariant, isAsLongAndAboutAsLoudAsTheRecording) {
    const auto stroke = recording();
    for (std::uint64_t seed = 1; seed < 10; ++seed) {
        const auto variant = variantOf(stroke, seed);
        EXPECT_EQ(variant.size(), stroke.size());
        EXPECT_NEAR(strokeLevel(variant), strokeLevel(stroke), 4);
        EXPECT_LT(std::abs(variant.back()), 1e-4F);
    }
}

TEST(StrokeVariant, isNoCopyOfTheRecordingOrOfAnotherVariant) {
    const auto stroke = recording();
    for (std::uint64_t seed = 1; seed < 6; ++seed) {
        EXPECT_LT(likeness(variantOf(stroke, seed), stroke), 0.95);
        EXPECT_LT(likeness(variantOf(stroke, seed), variantOf(stroke, seed + 1)), 0.95);
    }
}

TEST(StrokeVariant, isTheSameForTheSameSeed) {
    EXPECT_EQ(variantOf(recording(), 3), variantOf(recording(), 3));
}

TEST(StrokeVariant, leavesATooShortStrokeAlone) {
    const std::vector<float> stroke(100, 0.1F);
    EXPECT_EQ(variantOf(stroke, 1), stroke);
}

} // namespace
} // namespace vornic::packs
