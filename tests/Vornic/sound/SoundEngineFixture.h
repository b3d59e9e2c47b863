#pragma once

#include "Vornic/sound/SoundEngine.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vornic {

inline std::shared_ptr<VoiceBank> bankOf(std::size_t frames, float level = 0.5F) {
    auto bank = std::make_shared<VoiceBank>();
    bank->add("key", {std::vector<float>(frames, level)});
    return bank;
}

/// The largest magnitude in a block.
inline float loudest(const FakeOutput::Block& block) {
    float result = 0.0F;
    for (std::size_t i = 0; i < block.left.size(); ++i) {
        result = std::max({result, std::abs(block.left[i]), std::abs(block.right[i])});
    }
    return result;
}

/// An engine that plays into a fake output, by a clock that is set by hand.
class SoundEngineFixture : public ::testing::Test {
  protected:
    /// What a key does.
    bool key(float rate = 1.0F) { return key(engine.bank(), rate); }
    bool key(const std::shared_ptr<const VoiceBank>& bank, float rate = 1.0F) {
        if (bank == nullptr || !engine.ensureRunning()) {
            return false;
        }
        return engine.core().play(bank->pool("key").front(), 1.0F, 0.0F, rate, clock.nanos(),
                                  VoiceStage::none);
    }
    FakeOutput::Block render(std::int64_t frames = 128) {
        return output.render(frames, clock.nanos());
    }
    void tickAfter(double seconds) {
        clock.advance(seconds);
        engine.tick();
    }

    FakeOutput output;
    ManualClock clock;
    SoundEngine engine{output, clock, [](const auto& work) { work(); }};
};

} // namespace vornic
