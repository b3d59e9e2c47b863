#pragma once

#include "Vornic/typing/KeystrokeDriver.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

namespace vornic {

inline constexpr std::int64_t space = 49;
inline constexpr std::int64_t letterF = 3;

/// A board of one sound "keys" that every group plays.
inline Board plainBoard() {
    Board board("test", "Test", "", "#000000", BuildParts{}, {}, {});
    board.sounds.push_back(SoundSpec("keys", "Keys", "#000000", StrokeSpec{}, std::nullopt,
                                     SwitchParts{}, Character{}));
    return board;
}

/// What one voice of a constant sample comes out as, before room, limiter and volume.
struct Heard {
    float left = 0.0f;
    float right = 0.0f;
};

/// Inverts the pan law: the gain and the pan that made these two levels of a constant.
inline double gainOf(Heard heard, float constant) {
    return std::hypot(static_cast<double>(heard.left), static_cast<double>(heard.right)) /
           (std::numbers::sqrt2 * static_cast<double>(constant));
}
inline double panOf(Heard heard) {
    return std::atan2(static_cast<double>(heard.right), static_cast<double>(heard.left)) * 4.0 /
               std::numbers::pi -
           1.0;
}

/// A driver with a board, whose voices are told apart by what comes out of the raw engine.
class KeystrokeFixture : public ::testing::Test {
  protected:
    KeystrokeFixture() {
        // Every pool holds one constant of its own, so that the output tells which one was picked.
        const auto constant = [](float value) {
            return std::vector<std::vector<float>>{std::vector<float>(4800, value)};
        };
        auto fresh = std::make_shared<VoiceBank>();
        for (const Velocity velocity : {Velocity::soft, Velocity::medium, Velocity::hard}) {
            const float step = 0.001f * static_cast<float>(1 + static_cast<int>(velocity));
            fresh->add(VoiceBank::key("keys", false, velocity), constant(step));
            fresh->add(VoiceBank::key("keys", true, velocity), constant(0.01f + step));
        }
        fresh->add(VoiceBank::releaseKey("keys"), constant(0.02f));
        bank = fresh;
    }

    void useBoard(const Board& board, bool binaural = false, bool silenced = false,
                  double gain = 1.0) {
        auto settings = std::make_shared<PlaySettings>();
        const auto shared = std::make_shared<const Board>(board);
        settings->played = {.board = shared, .rendered = shared, .bank = bank, .gain = gain};
        settings->binaural = binaural;
        settings->silenced = silenced;
        driver.apply(settings);
    }

    /// Renders one block of the raw engine and gives the 65th frame, well inside every voice.
    Heard heard() {
        const auto block = output.render(128, 0);
        return {block.left[64], block.right[64]};
    }

    /// Types `code` slowly enough that every stroke is the first after a pause, until the draw of
    /// its shape is known, and gives the level of the voice without shape and pan.
    void pressAfterPause(std::int64_t code) {
        clock.advance(10.0);
        driver.key(code, true, 0);
    }

    /// How fast the voice that plays now goes through its 4800 frames.
    double heardRate() {
        const auto block = output.render(9600, 0);
        const auto last = std::ranges::find_if(block.left.rbegin(), block.left.rend(),
                                               [](float x) { return x != 0; });
        engine.core().clear();
        return 4800.0 / static_cast<double>(block.left.rend() - last);
    }

    /// The velocity that a key of the given constant level was struck with, far from any doubt.
    Velocity heardVelocity() {
        const double level = gainOf(heard(), 0.001f);
        engine.core().clear();
        return level < 1.4 ? Velocity::soft : level < 2.4 ? Velocity::medium : Velocity::hard;
    }

    /// Types at one pace until the dynamics have settled on it; the velocity then.
    Velocity velocityAtPace(double seconds) {
        Velocity struck = Velocity::medium;
        for (int key = 0; key < 60; ++key) {
            clock.advance(seconds);
            driver.key(letterF, true, 0);
            struck = heardVelocity();
        }
        return struck;
    }

    FakeOutput output;
    ManualClock clock;
    SoundEngine engine{output,
                       clock,
                       [](const std::function<void()>& work) { work(); },
                       {.idleLimits = {}, .raw = true}};
    std::shared_ptr<const VoiceBank> bank;
    std::vector<std::string> problems;
    KeystrokeDriver driver{engine, clock, 42,
                           [this](const std::string& problem) { problems.push_back(problem); }};
};

} // namespace vornic
