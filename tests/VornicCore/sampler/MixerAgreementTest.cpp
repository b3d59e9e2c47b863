#include "VornicCore/base/SplitMix64.h"
#include "VornicCore/sampler/Avx2VoiceMixer.h"
#include "VornicCore/sampler/SamplerCore.h"
#include "VornicCore/sampler/VoiceSpan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace vornic {
namespace {

/// How far apart two mixers may be, as part of full scale and of the sum of the gains.
constexpr double tolerance = 1e-6;

/// A sample of noise at full scale. What lies around it is loud, so that reading beyond its ends
/// shows in builds without a sanitizer as well.
class Noise {
  public:
    Noise(SplitMix64& random, std::size_t frames)
        : frames_(frames + 2 * around, 1e6F), length_(static_cast<std::int64_t>(frames)) {
        for (std::size_t i = 0; i < frames; ++i) {
            frames_[around + i] = static_cast<float>(random.uniform(-1.0, 1.0));
        }
    }

    const float* data() const { return frames_.data() + around; }
    std::int64_t length() const { return length_; }

  private:
    static constexpr std::size_t around = 32;

    std::vector<float> frames_;
    std::int64_t length_;
};

/// What must agree to the last bit, as text.
std::string exactState(const Voice& voice) {
    if (voice.data == nullptr) {
        return "free";
    }
    return "length " + std::to_string(voice.length) + ", order " + std::to_string(voice.order) +
           ", event " + std::to_string(voice.event) + ", fade " + std::to_string(voice.fadeLeft) +
           ", position " + std::to_string(voice.position) + " + " +
           std::to_string(std::remainder(voice.position, 0x1p-20) * 0x1p60);
}

/// Renders the same voice with both mixers in buffers of the given size until it has ended, or
/// `buffers` of them.
void expectSameVoice(Voice plain, std::int64_t frames, int buffers, const FadeCurve& fade,
                     const std::string& what) {
    Voice fast = plain;
    const double gains =
        static_cast<double>(std::fabs(plain.gainLeft) + std::fabs(plain.gainRight));
    const double allowed = tolerance * std::max(1.0, gains);
    for (int buffer = 0; buffer < buffers && plain.data != nullptr; ++buffer) {
        const auto size = static_cast<std::size_t>(frames);
        std::vector<float> left(size), right(size), fastLeft(size), fastRight(size);
        mixVoicePlain(plain, fade, frames, left.data(), right.data());
        bestVoiceMixer()(fast, fade, frames, fastLeft.data(), fastRight.data());
        ASSERT_EQ(exactState(plain), exactState(fast)) << what << ", buffer " << buffer;
        ASSERT_NEAR(plain.farState, fast.farState, tolerance) << what << ", buffer " << buffer;
        for (std::size_t i = 0; i < size; ++i) {
            ASSERT_NEAR(left[i], fastLeft[i], allowed) << what << ", " << buffer << ", " << i;
            ASSERT_NEAR(right[i], fastRight[i], allowed) << what << ", " << buffer << ", " << i;
        }
    }
}

constexpr float oneSixth = 1.0F / 6.0F;
const std::vector<float> telling = {
    // The ends of the range, the recorded pitch, and where the fast mixer changes its ways.
    1.0F / 64.0F,
    1.0F / 48.0F,
    0.125F,
    1.0F / 3.0F,
    0.5F,
    0.77F,
    6.0F / 7.0F,
    0.85714287F,
    0.91F,
    std::nextafter(1.0F, 0.0F),
    1.0F,
    std::nextafter(1.0F, 2.0F),
    1.0001F,
    1.0594631F,
    8.0F / 7.0F,
    1.1428572F,
    1.0F + oneSixth,
    1.4F,
    1.75F,
    2.0F,
    7.0F / 3.0F,
    3.0F,
    3.5F,
    6.999F,
    7.0F,
    11.3F,
    64.0F,
    100.0F,
    0.001F};

TEST(MixerAgreement, holdsForEveryRateAndSampleLength) {
    SplitMix64 random(1);
    const FadeCurve fade(288);
    for (const float rate : telling) {
        for (const std::size_t length :
             {2U, 3U, 5U, 9U, 11U, 12U, 13U, 14U, 17U, 40U, 131U, 700U}) {
            const Noise sample(random, length);
            for (const std::int64_t frames : {1, 7, 8, 9, 128, 300}) {
                Voice voice{.data = sample.data(),
                            .length = static_cast<std::int64_t>(length),
                            .rate = static_cast<double>(rate),
                            .gainLeft = 1.0F,
                            .gainRight = 0.25F};
                const std::string what = "rate " + std::to_string(rate) + ", length " +
                                         std::to_string(length) + ", frames " +
                                         std::to_string(frames);
                expectSameVoice(voice, frames, 100, fade, what);
                voice.itd = random.uniform(0.0, 31.68);
                voice.farEar = 1 + static_cast<std::int32_t>(random.next(2));
                voice.farLowpass = static_cast<float>(random.uniform(0.0, 1.0));
                expectSameVoice(voice, frames, 100, fade, what + ", binaural");
            }
        }
    }
}

TEST(MixerAgreement, holdsForEveryFade) {
    SplitMix64 random(2);
    const Noise sample(random, 2000);
    for (const std::int64_t fadeFrames : {1, 2, 7, 8, 288, 1000}) {
        const FadeCurve fade(fadeFrames);
        for (std::int64_t left = 0; left <= fadeFrames; left = left * 3 / 2 + 1) {
            for (const std::int64_t frames : {1, 8, 100, 128, 513}) {
                Voice voice{.data = sample.data(),
                            .length = 2000,
                            .rate = random.uniform(0.5, 2.0) < 1.0 ? 0.75 : 1.125,
                            .gainLeft = 0.3F,
                            .gainRight = 1.0F,
                            .fadeLeft = left,
                            .itd = 12.3,
                            .farLowpass = 0.6F};
                for (const std::int32_t farEar : {0, 1, 2}) {
                    voice.farEar = farEar;
                    expectSameVoice(voice, frames, 20, fade, "fade " + std::to_string(left));
                }
            }
        }
    }
}

TEST(MixerAgreement, holdsForEveryStage) {
    SplitMix64 random(3);
    const FadeCurve fade(288);
    const Noise sample(random, 3000);
    for (const float lowpass : {0.0F, -1.0F, 1e-6F, 0.01F, 0.2499F, 0.25F, 0.544F, 0.93F, 1.0F,
                                1.5F, std::numeric_limits<float>::quiet_NaN()}) {
        for (const double itd : {0.0, 0.25, 1.0, 31.68, 500.5, 1e4, -3.5}) {
            for (const std::int32_t farEar : {1, 2, 7}) {
                const Voice voice{.data = sample.data(),
                                  .length = 3000,
                                  .rate = static_cast<double>(0.9371F),
                                  .gainLeft = 0.8F,
                                  .gainRight = 0.6F,
                                  .itd = itd,
                                  .farLowpass = lowpass,
                                  .farEar = farEar};
                expectSameVoice(voice, 125, 40, fade,
                                "low-pass " + std::to_string(lowpass) + ", delay " +
                                    std::to_string(itd) + ", far ear " + std::to_string(farEar));
            }
        }
    }
}

TEST(MixerAgreement, holdsWhereAFilterSettles) {
    // On a steady signal a filter shows the smallest error of its coefficients.
    const FadeCurve fade(288);
    const std::vector<float> steady(20'000, 1.0F);
    for (const float lowpass : {0.001F, 0.01F, 0.1F, 0.25F, 0.3F, 0.7F}) {
        const Voice voice{.data = steady.data(),
                          .length = 20'000,
                          .rate = static_cast<double>(1.03F),
                          .gainLeft = 1.0F,
                          .gainRight = 1.0F,
                          .itd = 12.0,
                          .farLowpass = lowpass,
                          .farEar = 2};
        expectSameVoice(voice, 128, 200, fade, "low-pass " + std::to_string(lowpass));
    }
}

TEST(MixerAgreement, holdsWhereAPositionOutgrowsExactArithmetic) {
    SplitMix64 random(4);
    const FadeCurve fade(288);
    const Noise sample(random, 100'000);
    const auto rate = static_cast<double>(1.0F / 65536.0F + 0x1p-39F);
    // The last frames before rate * 2^29, and the first ones behind.
    const double far = rate * (0x1p29 - 200.0);
    const Voice voice{.data = sample.data(),
                      .length = 100'000,
                      .position = far,
                      .rate = rate,
                      .gainLeft = 1.0F,
                      .gainRight = 1.0F};
    EXPECT_TRUE(VoiceSpan::isExact(voice, 199));
    EXPECT_FALSE(VoiceSpan::isExact(voice, 200));
    expectSameVoice(voice, 150, 4, fade, "slow and far");
}

/// The same random events and buffers for two samplers that differ in their mixer only.
class Scene {
  public:
    explicit Scene(std::uint64_t seed) : random_(seed) {
        for (int i = 0; i < 12; ++i) {
            samples_.emplace_back(random_, 2 + random_.next(i < 3 ? 20 : 15'000));
        }
    }

    void run(int buffers) {
        for (int buffer = 0; buffer < buffers; ++buffer) {
            // Mostly some keys, at times enough of them to steal, overwrite and overflow.
            const std::uint64_t keys = random_.next(20) == 0 ? 70 : random_.next(6);
            for (std::uint64_t key = 0; key < keys; ++key) {
                playRandom();
            }
            if (random_.next(10) == 0) {
                setReflection(random_.next(2) == 0 ? 0.0F : 0.3F);
            }
            const std::uint64_t longest = random_.next(8) == 0 ? 4096 : 300;
            renderBoth(1 + static_cast<std::int64_t>(random_.next(longest)));
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }

  private:
    void playRandom() {
        const Noise& noise = samples_[random_.next(samples_.size())];
        const float pan = static_cast<float>(random_.uniform(-1.1, 1.1));
        const float gain = static_cast<float>(random_.uniform(0.0, 0.5));
        const float rate = random_.next(4) == 0
                               ? telling[random_.next(telling.size())]
                               : static_cast<float>(std::exp2(random_.uniform(-6.0, 6.0) *
                                                              random_.uniform(0.0, 1.0)));
        VoiceStage stage;
        if (random_.next(2) == 0) {
            stage = VoiceStage::binaural(pan, 48000.0);
        } else if (random_.next(4) == 0) {
            stage = {.itdFrames = static_cast<float>(random_.uniform(0.0, 40.0)),
                     .farLowpass = static_cast<float>(random_.uniform(0.0, 1.0)),
                     .farEar = static_cast<std::int32_t>(random_.next(4))};
        }
        const Sample sample{.data = noise.data(), .length = noise.length()};
        EXPECT_EQ(plain_.play(sample, gain, pan, rate, 0, stage),
                  fast_.play(sample, gain, pan, rate, 0, stage));
    }

    void setReflection(float level) {
        plain_.setReflection(level);
        fast_.setReflection(level);
    }

    void renderBoth(std::int64_t frames) {
        const auto size = static_cast<std::size_t>(frames);
        std::vector<float> left(size), right(size), fastLeft(size), fastRight(size);
        plain_.render(frames, left.data(), right.data(), 0);
        fast_.render(frames, fastLeft.data(), fastRight.data(), 0);
        double gains = 0.0;
        for (std::size_t slot = 0; slot < plain_.voices().size(); ++slot) {
            const Voice& voice = plain_.voices()[slot];
            ASSERT_EQ(exactState(voice), exactState(fast_.voices()[slot])) << "slot " << slot;
            // Gains outlast their voice, and what has just ended was part of the sum as well.
            gains += static_cast<double>(std::max(voice.gainLeft, voice.gainRight));
        }
        const double allowed = tolerance * std::max(1.0, gains);
        for (std::size_t i = 0; i < size; ++i) {
            ASSERT_NEAR(left[i], fastLeft[i], allowed) << "frame " << i << " of " << frames;
            ASSERT_NEAR(right[i], fastRight[i], allowed) << "frame " << i << " of " << frames;
        }
        ASSERT_EQ(plain_.settledEvents(), fast_.settledEvents());
    }

    SplitMix64 random_;
    std::vector<Noise> samples_;
    SamplerCore plain_{48000.0, 64, mixVoicePlain};
    SamplerCore fast_{48000.0, 64, bestVoiceMixer()};
};

TEST(MixerAgreement, holdsOnRandomScenes) {
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Scene(seed).run(120);
        if (HasFatalFailure()) {
            return;
        }
    }
}

/// The value, or what it is instead of one.
std::string kind(float value) {
    return std::isfinite(value) ? "finite" : std::isnan(value) ? "nan" : std::to_string(value);
}

TEST(MixerAgreement, holdsBesideASampleThatIsNotFinite) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr std::int64_t frames = 64;
    SplitMix64 random(11);
    const FadeCurve fade(288);
    const Noise noise(random, 700);
    for (const float bad : {infinity, -infinity, std::nanf("")}) {
        for (const float rate : {0.3F, 0.77F, 1.0F, 1.0594631F, 2.0F, 11.3F}) {
            for (const std::int32_t farEar : {0, 1, 2}) {
                for (const std::size_t place : {0U, 1U, 65U, 300U, 301U, 698U, 699U}) {
                    std::vector<float> sample(noise.data(), noise.data() + noise.length());
                    sample[place] = bad;
                    Voice plain{.data = sample.data(),
                                .length = noise.length(),
                                .rate = static_cast<double>(rate),
                                .gainLeft = 0.8F,
                                .gainRight = 0.6F,
                                .itd = 31.68,
                                .farLowpass = 0.544F,
                                .farEar = farEar};
                    Voice fast = plain;
                    for (int buffer = 0; plain.data != nullptr; ++buffer) {
                        std::vector<float> left(frames), right(frames), fastLeft(frames),
                            fastRight(frames);
                        mixVoicePlain(plain, fade, frames, left.data(), right.data());
                        bestVoiceMixer()(fast, fade, frames, fastLeft.data(), fastRight.data());
                        for (std::size_t i = 0; i < frames; ++i) {
                            const std::string where =
                                kind(bad) + " at " + std::to_string(place) + ", rate " +
                                std::to_string(rate) + ", far ear " + std::to_string(farEar) +
                                ", " + std::to_string(buffer) + ", " + std::to_string(i);
                            ASSERT_EQ(kind(left[i]), kind(fastLeft[i])) << where;
                            ASSERT_EQ(kind(right[i]), kind(fastRight[i])) << where;
                            if (std::isfinite(left[i]) && std::isfinite(right[i])) {
                                ASSERT_NEAR(left[i], fastLeft[i], tolerance * 2.0) << where;
                                ASSERT_NEAR(right[i], fastRight[i], tolerance * 2.0) << where;
                            }
                        }
                    }
                    EXPECT_EQ(fast.data, nullptr);
                }
            }
        }
    }
}

TEST(MixerAgreement, comparesTwoDifferentMixersWhereThereAreTwo) {
#if defined(__x86_64__)
    EXPECT_EQ(bestVoiceMixer() != &mixVoicePlain, hasAvx2());
#else
    EXPECT_EQ(bestVoiceMixer(), &mixVoicePlain);
#endif
}

TEST(VoiceSpan, isNotExactForWhatNoVoiceShouldBe) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::nan("");
    for (const double rate : {0.0, -1.0, infinity, notANumber}) {
        EXPECT_FALSE(VoiceSpan::isExact({.rate = rate}, 128)) << rate;
    }
    for (const double position : {-1.0, infinity, notANumber, 0x1p29}) {
        EXPECT_FALSE(VoiceSpan::isExact({.position = position, .rate = 1.0}, 128)) << position;
    }
    EXPECT_TRUE(VoiceSpan::isExact({.position = 1000.0, .rate = 1.0}, 128));
}

TEST(VoiceSpan, aProductIsTheSumOfItsSteps) {
    SplitMix64 random(9);
    for (int i = 0; i < 200; ++i) {
        const auto rate =
            static_cast<double>(static_cast<float>(std::exp2(random.uniform(-6.0, 6.0))));
        double position = 0.0;
        for (int frame = 1; frame <= 5000; ++frame) {
            position += rate;
            ASSERT_EQ(position, frame * rate) << rate;
        }
    }
}

} // namespace
} // namespace vornic
