#include "VornicCore/realtime/EventRing.h"
#include "VornicCore/realtime/LatencyMeter.h"
#include "VornicCore/realtime/ScopedFlushDenormals.h"
#include "tests/support/ExpectRealTimeSafe.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(RealTimeSafety, ringFunctionsAreFitForTheAudioThread) {
    vornic_ring* const ring = vornic_ring_create(4);
    int accepted = 0;
    int taken = 0;
    expectRealTimeSafe([&] {
        vornic_event event{};
        for (int i = 0; i < 6; ++i) { // two are refused
            accepted += vornic_ring_push(ring, &event) ? 1 : 0;
        }
        for (int i = 0; i < 6; ++i) {
            taken += vornic_ring_pop(ring, &event) ? 1 : 0;
        }
    });
    EXPECT_EQ(accepted, 4);
    EXPECT_EQ(taken, 4);
    vornic_ring_destroy(ring);
}

TEST(RealTimeSafety, latencyMeterIsFitForTheAudioThread) {
    expectRealTimeSafe([] {
        vornic_latency_reset();
        vornic_latency_record(5);
        vornic_latency_record(vornic_latency_max() + vornic_latency_last());
    });
    EXPECT_EQ(vornic_latency_count(), 2U);
    vornic_latency_reset();
}

TEST(RealTimeSafety, flushingDenormalsIsFitForTheAudioThread) {
    expectRealTimeSafe([] { const ScopedFlushDenormals flush; });
}

} // namespace
} // namespace vornic
