#include "Vornic/app/LatencyHistogram.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <vector>

namespace vornic {
namespace {

TEST(LatencyHistogram, countsEachLatencyInItsBin) {
    const std::vector<double> millis{0.0, 0.99, 1.0, 4.2, 4.9, 19.5, 250};
    const LatencyHistogram histogram = LatencyHistogram::of(millis);
    EXPECT_EQ(histogram.keys, 7U);
    EXPECT_EQ(histogram.bins[0], 2U);
    EXPECT_EQ(histogram.bins[1], 1U);
    EXPECT_EQ(histogram.bins[4], 2U);
    EXPECT_EQ(histogram.bins[19], 2U) << "the last bin holds everything beyond";
    EXPECT_EQ(std::accumulate(histogram.bins.begin(), histogram.bins.end(), std::size_t{0}), 7U);
}

TEST(LatencyHistogram, namesTheMedianAndTheNinetyFifthPercentile) {
    std::vector<double> millis(100);
    std::iota(millis.rbegin(), millis.rend(), 1.0);
    const LatencyHistogram histogram = LatencyHistogram::of(millis);
    EXPECT_EQ(histogram.medianMillis, 50);
    EXPECT_EQ(histogram.p95Millis, 95);
}

TEST(LatencyHistogram, isEmptyWithoutKeysAndLeavesOutWhatIsNoNumber) {
    const std::vector<double> none{std::numeric_limits<double>::quiet_NaN()};
    const LatencyHistogram histogram = LatencyHistogram::of(none);
    EXPECT_EQ(histogram.keys, 0U);
    EXPECT_EQ(histogram.p95Millis, 0);
}

} // namespace
} // namespace vornic
