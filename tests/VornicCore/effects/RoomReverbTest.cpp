#include "VornicCore/effects/RoomReverb.h"

#include "VornicCore/effects/RoomPreset.h"
#include "tests/VornicCore/effects/ImpulseResponse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <random>
#include <thread>
#include <vector>

namespace vornic {
namespace {

constexpr std::array wetRooms{Room::desk, Room::studio, Room::wood};
constexpr std::size_t block = 128;
constexpr std::size_t second = 48000;

struct Stereo {
    explicit Stereo(std::size_t frames) : left(frames), right(frames) {}
    std::vector<float> left;
    std::vector<float> right;
};

bool sameBits(const std::vector<float>& a, const std::vector<float>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](float x, float y) {
        return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
    });
}

Stereo noise(std::size_t frames, float level) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> value(-level, level);
    Stereo sound(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        sound.left[i] = value(random);
        sound.right[i] = value(random);
    }
    return sound;
}

Stereo sine(std::size_t frames, double hz, double level) {
    Stereo sound(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const double phase = 2.0 * std::numbers::pi * hz * static_cast<double>(i) / 48000.0;
        sound.left[i] = static_cast<float>(level * std::sin(phase));
        sound.right[i] = static_cast<float>(level * std::cos(phase));
    }
    return sound;
}

void run(RoomReverb& reverb, Stereo& sound, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; i += block) {
        reverb.process(std::min(block, to - i), sound.left.data() + i, sound.right.data() + i);
    }
}

float largest(const std::vector<float>& sound, std::size_t from) {
    float result = 0.0F;
    for (std::size_t i = from; i < sound.size(); ++i) {
        result = std::max(result, std::abs(sound[i]));
    }
    return result;
}

float largestStep(const std::vector<float>& sound) {
    float result = 0.0F;
    for (std::size_t i = 1; i < sound.size(); ++i) {
        result = std::max(result, std::abs(sound[i] - sound[i - 1]));
    }
    return result;
}

TEST(RoomReverb, dryPassesEverythingToTheBit) {
    RoomReverb reverb;
    Stereo sound = noise(4800, 3.0F);
    sound.left[5] = std::numeric_limits<float>::quiet_NaN();
    sound.left[6] = -std::numeric_limits<float>::infinity();
    sound.left[7] = -0.0F;
    sound.left[8] = std::numeric_limits<float>::denorm_min();
    const Stereo before = sound;
    run(reverb, sound, 0, 4800);
    EXPECT_TRUE(sameBits(sound.left, before.left));
    EXPECT_TRUE(sameBits(sound.right, before.right));
    EXPECT_TRUE(reverb.isBypassed());
}

TEST(RoomReverb, mixesDryAndWetByTheMixOfTheRoom) {
    for (const Room room : wetRooms) {
        RoomReverb reverb(room);
        Stereo sound(48000);
        sound.left[0] = sound.right[0] = 1.0F;
        run(reverb, sound, 0, 48000);
        const double mix = roomPreset(room).mix;
        const StereoSignal wet = impulseResponse(room, 1.0F, 1.0F, 48000);
        // The dry sound comes at once.
        EXPECT_FLOAT_EQ(sound.left[0], static_cast<float>(1.0 - mix));
        double wetEnergy = 0.0;
        for (std::size_t i = 1; i < 48000; ++i) {
            const auto left = static_cast<double>(sound.left[i]);
            const auto right = static_cast<double>(sound.right[i]);
            ASSERT_NEAR(left, mix * wet.left[i], 1e-7) << "frame " << i;
            wetEnergy += 0.5 * (left * left + right * right);
        }
        EXPECT_NEAR(wetEnergy / (mix * mix), 1.0, 0.01);
    }
}

TEST(RoomReverb, theRoomChosenBeforehandIsThereFromTheFirstFrame) {
    RoomReverb reverb;
    reverb.setRoom(Room::studio);
    Stereo sound(block);
    sound.left[0] = 1.0F;
    run(reverb, sound, 0, block);
    EXPECT_FLOAT_EQ(sound.left[0], 0.91F);
    EXPECT_FALSE(reverb.isBypassed());
}

TEST(RoomReverb, diesDownToExactZeroAndRests) {
    for (const Room room : wetRooms) {
        RoomReverb reverb(room);
        Stereo sound(4 * second);
        const Stereo burst = noise(4800, 1.0F);
        std::copy(burst.left.begin(), burst.left.end(), sound.left.begin());
        std::copy(burst.right.begin(), burst.right.end(), sound.right.begin());
        run(reverb, sound, 0, sound.left.size());
        EXPECT_TRUE(reverb.isIdle());
        EXPECT_EQ(largest(sound.left, 3 * second), 0.0F);
        EXPECT_EQ(largest(sound.right, 3 * second), 0.0F);
        // Nothing so small that it costs time was ever put out.
        for (const float x : sound.left) {
            ASSERT_TRUE(x == 0.0F || std::isnormal(x));
        }
    }
}

TEST(RoomReverb, restingKeepsNothingOfWhatWas) {
    RoomReverb used(Room::wood);
    Stereo sound = noise(9600, 1.0F);
    run(used, sound, 0, 9600);
    Stereo silence(4 * second);
    run(used, silence, 0, silence.left.size());
    ASSERT_TRUE(used.isIdle());
    RoomReverb fresh(Room::wood);
    Stereo a = noise(9600, 0.5F);
    Stereo b = a;
    run(used, a, 0, 9600);
    run(fresh, b, 0, 9600);
    EXPECT_TRUE(sameBits(a.left, b.left));
    EXPECT_TRUE(sameBits(a.right, b.right));
}

TEST(RoomReverb, staysBoundedForMinutes) {
    const Stereo once = noise(second, 1.0F);
    for (const Room room : wetRooms) {
        RoomReverb reverb(room);
        float loudest = 0.0F;
        // The longest tail would build up most; its room gets two minutes.
        const int seconds = room == Room::wood ? 120 : 20;
        for (int passed = 0; passed < seconds; ++passed) {
            Stereo sound = once;
            run(reverb, sound, 0, second);
            if (passed % 10 == 9) {
                loudest = std::max({loudest, largest(sound.left, 0), largest(sound.right, 0)});
            }
        }
        EXPECT_LT(loudest, 1.6F);
        EXPECT_GT(loudest, 0.9F);
    }
}

TEST(RoomReverb, aConstantOffsetDoesNotBuildUp) {
    RoomReverb reverb(Room::wood);
    Stereo sound(5 * second);
    std::fill(sound.left.begin(), sound.left.end(), 1.0F);
    std::fill(sound.right.begin(), sound.right.end(), 1.0F);
    run(reverb, sound, 0, sound.left.size());
    EXPECT_NEAR(sound.left.back(), 0.92F, 1e-4F);
}

TEST(RoomReverb, wildSamplesNeverStayInTheRoom) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const float wild : {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 3e38F}) {
        RoomReverb reverb(Room::studio);
        Stereo sound = noise(48000, 0.5F);
        Stereo clean = sound;
        sound.left[1000] = wild;
        clean.left[1000] = 0.0F;
        run(reverb, sound, 0, 48000);
        RoomReverb other(Room::studio);
        run(other, clean, 0, 48000);
        sound.left[1000] = clean.left[1000] = 0.0F;
        EXPECT_TRUE(sameBits(sound.left, clean.left));
        EXPECT_TRUE(sameBits(sound.right, clean.right));
    }
}

// With a sine, the largest step from frame to frame says whether a switch clicks.
TEST(RoomReverb, switchingMakesNoStepLargerThanTheSoundHas) {
    constexpr std::array rooms{Room::dry, Room::desk, Room::studio, Room::wood};
    const Stereo plain = sine(48000, 300.0, 0.8);
    std::array<float, 4> steps{};
    std::transform(rooms.begin(), rooms.end(), steps.begin(), [&](Room room) {
        RoomReverb reverb(room);
        Stereo sound = plain;
        run(reverb, sound, 0, 48000);
        return largestStep(sound.left);
    });
    for (const Room from : rooms) {
        for (const Room to : rooms) {
            Stereo sound = plain;
            const float before = std::max({steps[0], steps.at(static_cast<std::size_t>(from)),
                                           steps.at(static_cast<std::size_t>(to))});
            RoomReverb reverb(from);
            run(reverb, sound, 0, 24064);
            reverb.setRoom(to);
            run(reverb, sound, 24064, 48000);
            EXPECT_LT(largestStep(sound.left), 1.01F * before);
            // Within the switch the second difference shows a kink ten times smaller than a step.
            float kink = 0.0F;
            for (std::size_t i = 23000; i < 28000; ++i) {
                kink = std::max(
                    kink, std::abs(sound.left[i + 1] - 2.0F * sound.left[i] + sound.left[i - 1]));
            }
            EXPECT_LT(kink, 0.1F * before) << static_cast<int>(from) << static_cast<int>(to);
        }
    }
}

TEST(RoomReverb, dryIsBitExactAgainOnceTheFadeIsOver) {
    RoomReverb reverb(Room::wood);
    Stereo sound = noise(48000, 0.5F);
    const Stereo before = sound;
    run(reverb, sound, 0, 12800);
    reverb.setRoom(Room::dry);
    run(reverb, sound, 12800, 48000);
    EXPECT_TRUE(reverb.isBypassed());
    const std::size_t exact = 12800 + RoomReverb::fadeFrames + ReverbNetwork::chunk;
    for (std::size_t i = exact; i < 48000; ++i) {
        ASSERT_EQ(sound.left[i], before.left[i]);
    }
}

TEST(RoomReverb, theTailOfTheOldRoomIsGoneAfterASwitch) {
    RoomReverb reverb(Room::wood);
    Stereo loud = noise(12800, 1.0F);
    run(reverb, loud, 0, 12800);
    reverb.setRoom(Room::dry);
    Stereo fade(1280);
    run(reverb, fade, 0, 1280);
    EXPECT_GT(largest(fade.left, 0), 1e-3F);
    EXPECT_EQ(largest(fade.left, RoomReverb::fadeFrames + ReverbNetwork::chunk), 0.0F);
    reverb.setRoom(Room::wood);
    Stereo silence(4800);
    run(reverb, silence, 0, 4800);
    EXPECT_EQ(largest(silence.left, 0), 0.0F);
}

TEST(RoomReverb, quickChangesEndInTheLastRoom) {
    RoomReverb reverb(Room::desk);
    Stereo sound = sine(48000, 300.0, 0.8);
    const float before = largestStep(sound.left);
    constexpr std::array rooms{Room::wood, Room::dry, Room::desk, Room::studio, Room::desk};
    for (std::size_t i = 0; i < 24064; i += block) {
        reverb.setRoom(rooms[(i / block) % rooms.size()]);
        run(reverb, sound, i, i + block);
    }
    reverb.setRoom(Room::studio);
    run(reverb, sound, 24064, 48000);
    EXPECT_LT(largestStep(sound.left), 1.1F * before);
    Stereo silence(4 * second);
    run(reverb, silence, 0, silence.left.size());
    Stereo pulse(48000);
    pulse.left[0] = pulse.right[0] = 1.0F;
    run(reverb, pulse, 0, 48000);
    EXPECT_NEAR(pulse.left[237], 0.09 * impulseResponse(Room::studio, 1, 1, 4800).left[237], 1e-6);
}

TEST(RoomReverb, takesBlocksOfAnyLength) {
    RoomReverb a(Room::desk);
    RoomReverb b(Room::desk);
    Stereo whole = noise(20000, 0.5F);
    Stereo parts = whole;
    run(a, whole, 0, 20000);
    std::mt19937 random(3);
    for (std::size_t i = 0; i < 20000;) {
        const std::size_t count = std::min<std::size_t>(random() % 700, 20000 - i);
        b.process(count, parts.left.data() + i, parts.right.data() + i);
        i += count;
    }
    EXPECT_TRUE(sameBits(whole.left, parts.left));
    EXPECT_TRUE(sameBits(whole.right, parts.right));
}

TEST(RoomReverb, resetMakesItAsNew) {
    RoomReverb used(Room::desk);
    Stereo sound = noise(4800, 1.0F);
    run(used, sound, 0, 4800);
    used.reset();
    used.setRoom(Room::studio);
    RoomReverb fresh(Room::studio);
    Stereo a = noise(4800, 0.5F);
    Stereo b = a;
    run(used, a, 0, 4800);
    run(fresh, b, 0, 4800);
    EXPECT_TRUE(sameBits(a.left, b.left));
}

TEST(RoomReverb, followsAnotherThread) {
    RoomReverb reverb;
    std::atomic<bool> done = false;
    std::thread other([&] {
        for (int i = 0; i < 20000; ++i) {
            reverb.setRoom(static_cast<Room>(i % 4));
        }
        reverb.setRoom(Room::wood);
        done = true;
    });
    float loudest = 0.0F;
    while (!done) {
        Stereo sound = sine(1280, 300.0, 0.5);
        run(reverb, sound, 0, 1280);
        loudest = std::max(loudest, largest(sound.left, 0));
    }
    other.join();
    Stereo sound = sine(4800, 300.0, 0.5);
    run(reverb, sound, 0, 4800);
    EXPECT_LT(loudest, 0.8F);
    EXPECT_EQ(reverb.room(), Room::wood);
    EXPECT_FALSE(reverb.isBypassed());
}

} // namespace
} // namespace vornic
