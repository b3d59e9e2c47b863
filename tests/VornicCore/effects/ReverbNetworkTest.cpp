#include "VornicCore/effects/ReverbNetwork.h"

#include "VornicCore/effects/RoomPreset.h"
#include "tests/VornicCore/effects/ImpulseResponse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <numbers>
#include <ostream>
#include <random>
#include <string>

namespace vornic {
namespace {

struct Expected {
    Room room;
    double mix;
    double decay500;
    double decay2000;
    double decay8000;
    double broadband;
    double firstReflectionMs;
    double denseFromMs;
};

// Names the case in the test's name.
void PrintTo(const Expected& expected, std::ostream* out) {
    *out << "decay of " << expected.decay500 << " s";
}

class RoomResponse : public testing::TestWithParam<Expected> {
  protected:
    [[nodiscard]] StereoSignal pulse(float left, float right) const {
        return impulseResponse(GetParam().room, left, right, 144000);
    }
};

std::size_t frames(double ms) {
    return static_cast<std::size_t>(std::lround(ms * 48.0));
}

const std::array rooms{
    Expected{.room = Room::desk,
             .mix = 0.06,
             .decay500 = 0.24,
             .decay2000 = 0.23,
             .decay8000 = 0.18,
             .broadband = 0.21,
             .firstReflectionMs = 2.37,
             .denseFromMs = 15.0},
    Expected{.room = Room::studio,
             .mix = 0.09,
             .decay500 = 0.42,
             .decay2000 = 0.39,
             .decay8000 = 0.27,
             .broadband = 0.37,
             .firstReflectionMs = 4.93,
             .denseFromMs = 20.0},
    Expected{.room = Room::wood,
             .mix = 0.08,
             .decay500 = 0.69,
             .decay2000 = 0.65,
             .decay8000 = 0.40,
             .broadband = 0.63,
             .firstReflectionMs = 7.49,
             .denseFromMs = 35.0},
};

std::string nameOf(const testing::TestParamInfo<Expected>& info) {
    const std::array names{"dry", "desk", "studio", "wood"};
    return names.at(static_cast<std::size_t>(info.param.room));
}

INSTANTIATE_TEST_SUITE_P(Rooms, RoomResponse, testing::ValuesIn(rooms), nameOf);

TEST_P(RoomResponse, mixesAsMuchAsTheRoomHas) {
    EXPECT_EQ(roomPreset(GetParam().room).mix, GetParam().mix);
}

TEST_P(RoomResponse, hasTheStatedShareOfItsEnergyInTheEarlyReflections) {
    const std::map<Room, double> stated{{Room::desk, 0.5}, {Room::studio, 0.4}, {Room::wood, 0.25}};
    EXPECT_EQ(roomPreset(GetParam().room).earlyShare, stated.at(GetParam().room));
}

TEST_P(RoomResponse, decaysInTheStatedTimes) {
    const StereoSignal response = pulse(1.0F, 1.0F);
    const auto decay = [&](double hz) {
        return 0.5 * (reverberationTime(octaveBand(response.left, hz)) +
                      reverberationTime(octaveBand(response.right, hz)));
    };
    EXPECT_NEAR(decay(500.0) / GetParam().decay500, 1.0, 0.05);
    EXPECT_NEAR(decay(2000.0) / GetParam().decay2000, 1.0, 0.05);
    EXPECT_NEAR(decay(8000.0) / GetParam().decay8000, 1.0, 0.05);
    EXPECT_NEAR(reverberationTime(response.left) / GetParam().broadband, 1.0, 0.05);
}

TEST_P(RoomResponse, beginsWithTheEarlyReflectionsOfEachEar) {
    // A pulse passes the low-pass with this height at its first frame, after the high-pass.
    const RoomPreset& preset = roomPreset(GetParam().room);
    constexpr double pi2 = 2.0 * std::numbers::pi;
    const double onset =
        (1.0 - std::exp(-pi2 * preset.lowPassHz / 48000.0)) * std::exp(-pi2 * 90.0 / 48000.0);
    const double gain = std::sqrt(preset.earlyShare / preset.earlyEnergy);
    const StereoSignal fromLeft = pulse(1.0F, 0.0F);
    const StereoSignal fromRight = pulse(0.0F, 1.0F);
    // The first reflection stands alone: nothing before it, and it at its exact height.
    const WallReflection first = preset.left.front();
    EXPECT_DOUBLE_EQ(first.delayMs, GetParam().firstReflectionMs);
    for (std::size_t i = 0; i < frames(first.delayMs); ++i) {
        ASSERT_EQ(fromLeft.left[i], 0.0);
        ASSERT_EQ(fromRight.right[i], 0.0);
    }
    const auto jump = [](const Signal& s, std::size_t i) { return s[i] - s[i - 1]; };
    EXPECT_NEAR(jump(fromLeft.left, frames(first.delayMs)), gain * onset * first.gain, 1e-3);
    EXPECT_NEAR(jump(fromRight.right, frames(preset.right.front().delayMs)),
                gain * onset * preset.right.front().gain, 1e-3);
    // A crossed one carries the other side's sound, and only that.
    for (const WallReflection& reflection : preset.left) {
        if (reflection.crossed) {
            EXPECT_GT(jump(fromRight.left, frames(reflection.delayMs)),
                      0.5 * gain * onset * reflection.gain);
        }
    }
}

TEST_P(RoomResponse, hasUnitEnergy) {
    const StereoSignal response = pulse(1.0F, 1.0F);
    EXPECT_NEAR(0.5 * (energy(response.left) + energy(response.right)), 1.0, 0.01);
    // Neither ear is favoured by more than 0.3 dB.
    EXPECT_NEAR(10.0 * std::log10(energy(response.left) / energy(response.right)), 0.0, 0.3);
}

TEST_P(RoomResponse, soundsDifferentAtTheTwoEars) {
    const StereoSignal response = pulse(1.0F, 1.0F);
    EXPECT_LT(std::abs(correlation(response.left, response.right, 1440, 14400)), 0.15);
}

TEST_P(RoomResponse, keepsASoundOnItsSideAtFirst) {
    const StereoSignal response = pulse(1.0F, 0.0F);
    const auto early = [](const Signal& s) { return energy(Signal(s.begin(), s.begin() + 1200)); };
    EXPECT_GT(early(response.left), 1.5 * early(response.right));
    EXPECT_GT(energy(response.right), 0.1 * energy(response.left));
}

TEST_P(RoomResponse, becomesDense) {
    const StereoSignal response = pulse(1.0F, 1.0F);
    const std::size_t from = frames(GetParam().denseFromMs);
    EXPECT_GT(echoDensity(response.left, from, from + 960), 0.85);
    EXPECT_GT(echoDensity(response.right, from, from + 960), 0.85);
}

TEST_P(RoomResponse, doesNotFlutter) {
    // Echoes that come back regularly would show as a peak of the tail's autocorrelation.
    const StereoSignal response = pulse(1.0F, 1.0F);
    const double growth = 3.0 * std::log(10.0) / (GetParam().broadband * 48000.0);
    Signal even;
    for (std::size_t i = 1440; i < 13440 + 4800; ++i) {
        even.push_back(response.left[i] * std::exp(growth * static_cast<double>(i)));
    }
    const double all = energy(Signal(even.begin(), even.begin() + 12000));
    for (std::size_t lag = 120; lag < 4800; ++lag) {
        double product = 0.0;
        for (std::size_t i = 0; i < 12000; ++i) {
            product += even[i] * even[i + lag];
        }
        ASSERT_LT(std::abs(product) / all, 0.35) << "lag " << lag;
    }
}

TEST_P(RoomResponse, carriesNoConstantOffset) {
    const StereoSignal response = pulse(1.0F, 1.0F);
    double sum = 0.0;
    for (const double x : response.left) {
        sum += x;
    }
    EXPECT_NEAR(sum, 0.0, 1e-3);
}

TEST_P(RoomResponse, isTheSameForAnyDivisionIntoChunks) {
    const StereoSignal whole = pulse(0.5F, -1.0F);
    ReverbNetwork network;
    network.load(GetParam().room);
    std::mt19937 random(1);
    std::size_t done = 0;
    while (done < 9600) {
        std::array<float, ReverbNetwork::chunk> left{};
        std::array<float, ReverbNetwork::chunk> right{};
        std::array<float, ReverbNetwork::chunk> leftWet{};
        std::array<float, ReverbNetwork::chunk> rightWet{};
        left[0] = done == 0 ? 0.5F : 0.0F;
        right[0] = done == 0 ? -1.0F : 0.0F;
        const std::size_t count = 1 + random() % ReverbNetwork::chunk;
        network.process(count, left.data(), right.data(), leftWet.data(), rightWet.data());
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(static_cast<double>(leftWet[i]), whole.left[done + i]);
            ASSERT_EQ(static_cast<double>(rightWet[i]), whole.right[done + i]);
        }
        done += count;
    }
}

TEST(ReverbNetwork, ringsOutInTheOrderOfTheRooms) {
    const auto time = [](Room room) {
        return reverberationTime(impulseResponse(room, 1.0F, 1.0F, 144000).left);
    };
    EXPECT_GT(time(Room::studio), 1.4 * time(Room::desk));
    EXPECT_GT(time(Room::wood), 1.4 * time(Room::studio));
}

TEST(ReverbNetwork, fallsSilentOnlyAfterItsMemory) {
    ReverbNetwork network;
    EXPECT_TRUE(network.isSilent());
    std::array<float, ReverbNetwork::chunk> sound{1.0F};
    std::array<float, ReverbNetwork::chunk> wetLeft{};
    std::array<float, ReverbNetwork::chunk> wetRight{};
    std::size_t passed = 0;
    float last = 1.0F;
    do {
        network.process(sound.size(), sound.data(), sound.data(), wetLeft.data(), wetRight.data());
        last = 0.0F;
        for (std::size_t i = 0; i < sound.size(); ++i) {
            last = std::max({last, std::abs(wetLeft[i]), std::abs(wetRight[i])});
        }
        sound[0] = 0.0F;
        passed += sound.size();
    } while (!network.isSilent() && passed < 480000);
    EXPECT_LT(last, 1e-6F);
    // 140 dB at 60 dB in 0.24 s take 0.56 s.
    EXPECT_GT(passed, 20000U);
    EXPECT_LT(passed, 48000U);
}

} // namespace
} // namespace vornic
