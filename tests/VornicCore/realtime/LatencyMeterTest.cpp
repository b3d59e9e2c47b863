#include "VornicCore/realtime/LatencyMeter.h"

#include "VornicCore/realtime/Latency.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace vornic {
namespace {

class LatencyMeter : public testing::Test {
  protected:
    LatencyMeter() { vornic_latency_reset(); }
    ~LatencyMeter() override { vornic_latency_reset(); }
};

TEST_F(LatencyMeter, keepsTheLastTheLargestAndTheCount) {
    vornic_latency_record(5);
    vornic_latency_record(3);
    EXPECT_EQ(vornic_latency_last(), 3U);
    EXPECT_EQ(vornic_latency_max(), 5U);
    EXPECT_EQ(vornic_latency_count(), 2U);
    vornic_latency_reset();
    EXPECT_EQ(vornic_latency_last(), 0U);
    EXPECT_EQ(vornic_latency_max(), 0U);
    EXPECT_EQ(vornic_latency_count(), 0U);
}

TEST_F(LatencyMeter, keepsTheLastHundredOneByOne) {
    EXPECT_TRUE(Latency::recentMillis().empty());
    for (std::uint32_t millis = 1; millis <= 103; ++millis) {
        vornic_latency_record(millis * 1000);
    }
    std::vector<double> kept = Latency::recentMillis();
    ASSERT_EQ(kept.size(), 100U);
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(kept.front(), 4);
    EXPECT_EQ(kept.back(), 103);
    vornic_latency_reset();
    EXPECT_TRUE(Latency::recentMillis().empty());
}

TEST_F(LatencyMeter, holdsTheLargestValueOfItsType) {
    vornic_latency_record(0xffffffff);
    vornic_latency_record(1);
    EXPECT_EQ(vornic_latency_max(), 0xffffffffU);
}

TEST_F(LatencyMeter, theFacadeSpeaksInMilliseconds) {
    vornic_latency_record(2250);
    vornic_latency_record(1500);
    EXPECT_EQ(Latency::lastMillis(), 1.5);
    EXPECT_EQ(Latency::maxMillis(), 2.25);
    EXPECT_EQ(Latency::count(), 2);
    Latency::reset();
    EXPECT_EQ(Latency::lastMillis(), 0.0);
    EXPECT_EQ(Latency::maxMillis(), 0.0);
    EXPECT_EQ(Latency::count(), 0);
}

TEST_F(LatencyMeter, twoThreadsLoseNoRecordingAndNoMaximum) {
    constexpr std::uint32_t recordings = 50'000;
    const auto recordEverySecond = [](std::uint32_t first) {
        for (std::uint32_t i = first; i <= recordings; i += 2) {
            vornic_latency_record(i);
        }
    };
    std::thread odd(recordEverySecond, 1);
    recordEverySecond(2);
    odd.join();
    EXPECT_EQ(vornic_latency_count(), recordings);
    EXPECT_EQ(vornic_latency_max(), recordings);
}

} // namespace
} // namespace vornic
