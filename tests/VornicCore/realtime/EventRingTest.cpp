#include "VornicCore/realtime/EventRing.h"

#include "VornicCore/realtime/EventRingLayout.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <thread>

namespace vornic {
namespace {

using Ring = std::unique_ptr<vornic_ring, decltype([](vornic_ring* r) { vornic_ring_destroy(r); })>;

Ring makeRing(std::uint32_t capacity, std::uint32_t firstCount = 0) {
    Ring ring(vornic_ring_create(capacity));
    ring->head.store(firstCount);
    ring->tail.store(firstCount);
    return ring;
}

/// Every field follows from the number, so that an event put together from two shows itself.
vornic_event eventNumber(std::uint64_t number) {
    std::uint64_t z = number * 0x9e3779b97f4a7c15;
    z ^= z >> 31;
    const auto low = static_cast<std::uint32_t>(z);
    const auto single = [&](unsigned bit) { return static_cast<float>((z >> bit) & 0xffff); };
    static const float frames[64] = {};
    return {.samples = &frames[z & 63],
            .length = low,
            .gain_left = single(3),
            .gain_right = single(7),
            .rate = single(11),
            .nanos = number,
            .itd_frames = single(17),
            .far_lowpass = single(23),
            .far_ear = static_cast<std::int32_t>(z & 0x7fff)};
}

bool same(const vornic_event& a, const vornic_event& b) {
    return a.samples == b.samples && a.length == b.length && a.gain_left == b.gain_left &&
           a.gain_right == b.gain_right && a.rate == b.rate && a.nanos == b.nanos &&
           a.itd_frames == b.itd_frames && a.far_lowpass == b.far_lowpass && a.far_ear == b.far_ear;
}

bool push(const Ring& ring, std::uint64_t number) {
    const vornic_event event = eventNumber(number);
    return vornic_ring_push(ring.get(), &event);
}

TEST(EventRing, remembersNothingThatItHasHandedOver) {
    const Ring ring = makeRing(4);
    vornic_event out{};
    for (std::uint64_t number = 1; number <= 6; ++number) {
        ASSERT_TRUE(push(ring, number));
        ASSERT_TRUE(vornic_ring_pop(ring.get(), &out));
        ASSERT_TRUE(same(out, eventNumber(number)));
    }
    for (std::uint32_t slot = 0; slot <= ring->mask; ++slot) {
        EXPECT_TRUE(same(ring->slots[slot], vornic_event{})) << slot;
    }
}

TEST(EventRing, capacityIsTheNextPowerOfTwoAndAtLeastTwo) {
    struct Case {
        std::uint32_t request, capacity;
    };
    for (const auto [request, capacity] : {Case{0, 2},
                                           {1, 2},
                                           {2, 2},
                                           {3, 4},
                                           {4, 4},
                                           {5, 8},
                                           {511, 512},
                                           {512, 512},
                                           {513, 1024}}) {
        const Ring ring = makeRing(request);
        std::uint32_t accepted = 0;
        while (push(ring, accepted)) {
            ++accepted;
        }
        EXPECT_EQ(accepted, capacity) << "requested " << request;
        EXPECT_EQ(ring->mask, capacity - 1) << "requested " << request;
    }
}

TEST(EventRing, aCapacityBeyond32BitsIsRefused) {
    EXPECT_EQ(vornic_ring_create(0x80000001), nullptr);
}

TEST(EventRing, aFullRingRefusesUntilOneIsPopped) {
    const Ring ring = makeRing(512);
    for (std::uint64_t i = 0; i < 512; ++i) {
        ASSERT_TRUE(push(ring, i));
    }
    EXPECT_FALSE(push(ring, 512));
    vornic_event out{};
    ASSERT_TRUE(vornic_ring_pop(ring.get(), &out));
    EXPECT_TRUE(same(out, eventNumber(0)));
    EXPECT_TRUE(push(ring, 513));
    EXPECT_FALSE(push(ring, 514));
    for (std::uint64_t i = 1; i < 512; ++i) {
        ASSERT_TRUE(vornic_ring_pop(ring.get(), &out));
        ASSERT_TRUE(same(out, eventNumber(i))) << i;
    }
    ASSERT_TRUE(vornic_ring_pop(ring.get(), &out));
    EXPECT_TRUE(same(out, eventNumber(513))) << "a refused event left its mark";
    EXPECT_FALSE(vornic_ring_pop(ring.get(), &out));
}

TEST(EventRing, popOnANewRingLeavesTheOutputUntouched) {
    const Ring ring = makeRing(512);
    vornic_event out = eventNumber(77);
    EXPECT_FALSE(vornic_ring_pop(ring.get(), &out));
    EXPECT_TRUE(same(out, eventNumber(77)));
}

TEST(EventRing, slotsAreZeroAtCreation) {
    const Ring ring = makeRing(8);
    for (std::uint32_t i = 0; i < 8; ++i) {
        EXPECT_TRUE(same(ring->slots[i], vornic_event{})) << i;
    }
}

TEST(EventRing, destroyIgnoresNull) {
    vornic_ring_destroy(nullptr);
}

TEST(EventRing, keepsOrderAndCapacityAcrossTheCountersEnd) {
    const Ring ring = makeRing(4, 0xfffffffd);
    std::uint64_t pushed = 0;
    std::uint64_t popped = 0;
    for (int round = 0; round < 5; ++round) { // passes the end when full, empty and in between
        while (push(ring, pushed)) {
            ++pushed;
        }
        EXPECT_EQ(pushed - popped, 4U);
        vornic_event out{};
        for (int i = 0; i < 3; ++i) {
            ASSERT_TRUE(vornic_ring_pop(ring.get(), &out));
            ASSERT_TRUE(same(out, eventNumber(popped))) << popped;
            ++popped;
        }
    }
    EXPECT_LT(ring->head.load(), 0x100U) << "the counters never reached their end";
}

TEST(EventRing, twoThreadsAtFullSpeedAcrossTheCountersEndLoseAndTearNothing) {
    constexpr std::uint64_t events = 400'000;
    const Ring ring = makeRing(16, 0U - static_cast<std::uint32_t>(events / 2));
    std::thread producer([&] {
        for (std::uint64_t number = 0; number < events; ++number) {
            const vornic_event event = eventNumber(number);
            while (!vornic_ring_push(ring.get(), &event)) {
                std::this_thread::yield();
            }
        }
    });
    std::uint64_t wrong = 0;
    for (std::uint64_t number = 0; number < events; ++number) {
        vornic_event out{};
        while (!vornic_ring_pop(ring.get(), &out)) {
            std::this_thread::yield();
        }
        wrong += same(out, eventNumber(number)) ? 0U : 1U;
    }
    producer.join();
    EXPECT_EQ(wrong, 0U);
    EXPECT_EQ(ring->tail.load(), static_cast<std::uint32_t>(events / 2));
}

} // namespace
} // namespace vornic
