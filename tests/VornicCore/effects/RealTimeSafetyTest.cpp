#include "VornicCore/effects/Limiter.h"
#include "VornicCore/effects/RoomReverb.h"
#include "VornicCore/effects/Volume.h"
#include "tests/support/ExpectRealTimeSafe.h"

#include <gtest/gtest.h>

#include <array>

namespace vornic {
namespace {

using Block = std::array<float, 128>;

TEST(EffectsOnTheAudioThread, roomIsRealTimeSafeThroughAllItsChanges) {
    RoomReverb reverb;
    Block left{};
    Block right{};
    expectRealTimeSafe([&] {
        for (const Room room : {Room::dry, Room::desk, Room::dry, Room::studio, Room::wood}) {
            reverb.setRoom(room);
            // Long enough for both fades, with sound and then with silence till it rests.
            for (int block = 0; block < 1000; ++block) {
                left.fill(block < 20 ? 0.5F : 0.0F);
                right.fill(block < 20 ? -0.5F : 0.0F);
                reverb.process(left.size(), left.data(), right.data());
            }
        }
        reverb.reset();
    });
    EXPECT_TRUE(reverb.isIdle());
}

TEST(EffectsOnTheAudioThread, limiterIsRealTimeSafe) {
    Limiter limiter;
    Block left{};
    Block right{};
    expectRealTimeSafe([&] {
        for (int block = 0; block < 300; ++block) {
            left.fill(block == 5 ? 8.0F : 0.1F);
            right.fill(0.1F);
            limiter.process(left.size(), left.data(), right.data());
        }
        limiter.reset();
    });
    EXPECT_EQ(limiter.gain(), 1.0F);
}

TEST(EffectsOnTheAudioThread, volumeIsRealTimeSafe) {
    Volume volume(0.3F);
    Block left{};
    Block right{};
    expectRealTimeSafe([&] {
        for (int block = 0; block < 20; ++block) {
            volume.set(block % 2 == 0 ? 0.2F : 1.0F);
            volume.process(left.size(), left.data(), right.data());
        }
    });
    EXPECT_EQ(volume.volume(), 1.0F);
}

} // namespace
} // namespace vornic
