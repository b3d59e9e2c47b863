#pragma once

#include "VornicCore/realtime/LatencyMeter.h"
#include "VornicCore/sampler/SamplerCore.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace vornic {

struct NamedMixer {
    std::string name;
    VoiceMixer mixer;

    friend std::ostream& operator<<(std::ostream& out, const NamedMixer& named) {
        return out << named.name;
    }
};

/// The measure, and what this processor would use.
inline const auto everyMixer =
    testing::Values(NamedMixer{.name = "plain", .mixer = mixVoicePlain},
                    NamedMixer{.name = "best", .mixer = bestVoiceMixer()});

inline const auto mixerName = [](const auto& info) { return info.param.name; };

/// A sampler at 48 kHz, once with each mixer, driven from the test's own thread.
class SamplerFixture : public testing::TestWithParam<NamedMixer> {
  protected:
    SamplerFixture() { vornic_latency_reset(); }
    ~SamplerFixture() override { vornic_latency_reset(); }

    struct Buffers {
        std::vector<float> left, right;
    };

    Buffers render(std::int64_t frames, std::uint64_t nowNanos = 0) {
        // Whatever was in the buffers must be gone afterwards.
        Buffers out{std::vector<float>(static_cast<std::size_t>(frames), 99.0F),
                    std::vector<float>(static_cast<std::size_t>(frames), 99.0F)};
        core.render(frames, out.left.data(), out.right.data(), nowNanos);
        return out;
    }

    bool play(const std::vector<float>& frames, float gain = 1.0F, float pan = 0.0F,
              float rate = 1.0F, const VoiceStage& stage = VoiceStage::none) {
        return core.play({frames.data(), static_cast<std::int64_t>(frames.size())}, gain, pan, rate,
                         0, stage);
    }

    /// A temporary would be gone before it is rendered.
    bool play(std::vector<float>&& frames, float gain = 1.0F, float pan = 0.0F, float rate = 1.0F,
              const VoiceStage& stage = VoiceStage::none) = delete;

    /// The slot of the n-th voice started, or null when it is gone.
    const Voice* voice(std::uint64_t order) const {
        for (const Voice& slot : core.voices()) {
            if (slot.data != nullptr && slot.order == order) {
                return &slot;
            }
        }
        return nullptr;
    }

    SamplerCore core{48000.0, 512, GetParam().mixer};
};

} // namespace vornic
