#include "tests/VornicCore/sampler/SamplerFixture.h"
#include "tests/support/ExpectRealTimeSafe.h"

namespace vornic {
namespace {

class SamplerRealTimeTest : public SamplerFixture {};

INSTANTIATE_TEST_SUITE_P(Mixers, SamplerRealTimeTest, everyMixer, mixerName);

TEST_P(SamplerRealTimeTest, playRenderAndClearAreFitForTheAudioThread) {
    core.setReflection(0.2F);
    const std::vector<float> tone(3000, 0.01F);
    std::vector<float> left(512);
    std::vector<float> right(512);
    std::int64_t refused = 0;
    const VoiceStage stage = VoiceStage::binaural(0.7F, 48000.0);
    expectRealTimeSafe([&] {
        for (int i = 0; i < 600; ++i) { // overflows the queue, then steals and overwrites
            const float rate = 0.25F + static_cast<float>(i % 13) * 0.3F;
            const bool queued = core.play({.data = tone.data(), .length = 3000}, 0.5F, 0.7F, rate,
                                          1, i % 2 == 0 ? stage : VoiceStage::none);
            refused += queued ? 0 : 1;
        }
        for (int i = 0; i < 40; ++i) {
            core.render(1 + i * 13 % 512, left.data(), right.data(), 5'000);
        }
        core.play({.data = tone.data(), .length = 3000}, 0.5F, 0.7F, 0.1F, 1, stage);
        core.clear();
    });
    EXPECT_EQ(refused, 600 - 512);
    EXPECT_EQ(core.keysStarted(), 512);
    EXPECT_EQ(core.voicesStolen(), 512 - 48);
    EXPECT_EQ(core.settledEvents(), 513U);
}

} // namespace
} // namespace vornic
