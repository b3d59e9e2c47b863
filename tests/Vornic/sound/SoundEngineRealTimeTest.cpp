#include "Vornic/sound/SoundEngine.h"
#include "tests/support/ExpectRealTimeSafe.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace vornic {
namespace {

TEST(SoundEngineRealTime, renderingInEveryRoomWithEveryVoiceIsRealTimeSafe) {
    FakeOutput output;
    ManualClock clock;
    SoundEngine engine(output, clock, [](const auto& work) { work(); });
    auto bank = std::make_shared<VoiceBank>();
    bank->add("key", {std::vector<float>(1000, 0.9F)});
    engine.setBank(bank);
    engine.setReflection(0.1F, 0.35F);
    engine.setVolume(0.9);
    const Sample sample = bank->pool("key").front();
    const VoiceStage stage = VoiceStage::binaural(0.7F, 48000.0);

    std::array<float, 128> left{};
    std::array<float, 128> right{};
    for (const Room room : {Room::dry, Room::desk, Room::studio, Room::wood}) {
        engine.setRoom(room);
        for (int voice = 0; voice < 60; ++voice) {
            engine.core().play(sample, 1.0F, 0.7F, 1.1F, clock.nanos(), stage);
        }
        // Long enough for the fades between rooms, loud at first, and ending in a tail.
        expectRealTimeSafe([&] {
            for (std::uint64_t block = 0; block < 50; ++block) {
                engine.render(128, left.data(), right.data(), clock.nanos() + block * 2'666'667);
            }
        });
    }
}

TEST(SoundEngineRealTime, droppingStaleKeysIsRealTimeSafe) {
    FakeOutput output;
    ManualClock clock;
    SoundEngine engine(output, clock, [](const auto& work) { work(); });
    const std::vector<float> frames(100, 0.5F);
    std::array<float, 128> left{};
    std::array<float, 128> right{};
    engine.render(128, left.data(), right.data(), clock.nanos());
    for (int key = 0; key < 20; ++key) {
        engine.core().play({frames.data(), 100}, 1.0F, 0.0F, 1.0F, clock.nanos(), VoiceStage::none);
    }
    clock.advance(1.0);
    expectRealTimeSafe([&] { engine.render(128, left.data(), right.data(), clock.nanos()); });
    EXPECT_EQ(engine.core().eventsDropped(), 20);
}

} // namespace
} // namespace vornic
