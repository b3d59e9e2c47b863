#include "VornicCore/render/LaneRenderer.h"

#include "VornicCore/render/PartSamples.h"
#include "VornicCore/render/Renderer.h"
#include "tests/VornicCore/render/MapSource.h"
#include "tests/VornicCore/render/TestStroke.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

namespace {

MapSource source() {
    MapSource::Recordings recordings;
    for (std::uint64_t n = 0; n < 5; ++n) {
        recordings["key-" + std::to_string(n)] = noiseStroke(n, 7000 + 613 * n, 100 + 37 * n);
    }
    recordings[std::string(PartSamples::clickKey)] = noiseStroke(20, 960, 0);
    recordings[std::string(PartSamples::springKey)] = noiseStroke(21, 3360, 0);
    recordings[std::string(PartSamples::rattleKey)] = noiseStroke(22, 1680, 0);
    return MapSource(std::move(recordings));
}

template <typename Choice>
Choice anyOf(SplitMix64& generator, std::uint64_t count) {
    return static_cast<Choice>(generator.next(count));
}

/// Every setting drawn, some of them left out, others at their ends.
class JobMaker {
  public:
    explicit JobMaker(std::uint64_t seed) : generator_(seed) {}

    RenderJob make() {
        SoundSpec sound = plainSound({"key-0", "key-1", "key-2"});
        sound.variations = 5;
        StrokeSpec& press = sound.press;
        for (std::uint64_t extra = generator_.next(3); extra > 0; --extra) {
            press.layers.push_back(layerOf({"key-3", "key-4"}));
        }
        for (LayerSpec& layer : press.layers) {
            layer.offsetMs = maybe(-6, 6);
            layer.gainDb = maybe(-12, 6);
            layer.pitch = maybe(-5, 5);
            layer.invert = generator_.next(2) == 0;
        }
        press.alignAttacks = generator_.next(2) == 0;
        chain(press.chain);
        sound.switchParts.type = anyOf<SwitchType>(generator_, 5);
        sound.switchParts.lube = anyOf<Lube>(generator_, 3);
        sound.character = {.depth = maybe(-1, 1),
                           .snap = maybe(-1, 1),
                           .ring = maybe(-1, 1),
                           .size = maybe(-1, 1)};
        Board board = boardOf({sound});
        board.build.plate = anyOf<Plate>(generator_, 7);
        board.build.caseMaterial = anyOf<CaseMaterial>(generator_, 4);
        board.build.mount = anyOf<Mount>(generator_, 4);
        board.feel.variation = maybe(0, 1);
        return RenderJob(sound, board, generator_.next(2) == 0, false);
    }

  private:
    double maybe(double lowest, double highest) {
        return generator_.next(4) == 0 ? 0 : generator_.uniform(lowest, highest);
    }

    void chain(ChainParams& params) {
        for (const auto band :
             {Equalizer::Band::bass, Equalizer::Band::body, Equalizer::Band::clack,
              Equalizer::Band::click, Equalizer::Band::air}) {
            params.eq.setGain(band, static_cast<float>(maybe(-13, 13)));
        }
        params.highPassHz = maybe(5, 400);
        params.lowPassHz = generator_.uniform(3000, 22000);
        params.attackDb = maybe(-9, 9);
        params.sustainDb = maybe(-12, 12);
        for (std::uint64_t modes = generator_.next(7); modes > 0; --modes) {
            params.bodyModes.push_back({.frequency = generator_.uniform(80, 6000),
                                        .decayMs = generator_.uniform(1, 90),
                                        .gainDb = generator_.uniform(-12, 3)});
        }
        params.bodyMix = maybe(0, 1);
        params.damping = maybe(0, 1);
        params.dampingStartMs = maybe(-2, 40);
        params.drive = maybe(0, 1);
        params.pitch = maybe(-7, 7);
    }

    SplitMix64 generator_;
};

double peakOf(const std::vector<float>& samples) {
    double peak = 0;
    for (const float sample : samples) {
        peak = std::max(peak, std::abs(static_cast<double>(sample)));
    }
    return peak;
}

double largestDifference(const std::vector<float>& a, const std::vector<float>& b) {
    double most = 0;
    for (std::size_t n = 0; n < a.size(); ++n) {
        most = std::max(most, std::abs(static_cast<double>(a[n]) - static_cast<double>(b[n])));
    }
    return most;
}

void expectAgreement(const LaneKernels& kernels, std::uint64_t seed) {
    const MapSource library = source();
    JobMaker maker(seed);
    for (int round = 0; round < 12; ++round) {
        const RenderJob job = maker.make();
        const auto plain = Renderer::renderAll(job, library, 1);
        const auto fast = LaneRenderer::renderAll(job, library, 1, kernels);
        ASSERT_EQ(plain.size(), fast.size());
        for (const auto& [velocity, variations] : plain) {
            const auto& others = fast.at(velocity);
            ASSERT_EQ(variations.size(), others.size());
            for (std::size_t n = 0; n < variations.size(); ++n) {
                ASSERT_FALSE(variations[n].empty());
                ASSERT_EQ(variations[n].size(), others[n].size()) << round << ", " << n;
                const double relative =
                    largestDifference(variations[n], others[n]) / peakOf(variations[n]);
                EXPECT_LT(relative, 1e-5) << round << ", " << n;
            }
        }
    }
}

TEST(LaneRenderer, agreesWithThePlainChainWithinMinus100Decibels) {
    expectAgreement(laneKernels(), 7);
}

TEST(LaneRenderer, agreesOnEveryProcessor) {
    expectAgreement(portableLaneKernels(), 8);
}

TEST(LaneRenderer, rendersAStrokeAloneAsAmongOthersToTheBit) {
    const MapSource library = source();
    JobMaker maker(3);
    for (int round = 0; round < 10; ++round) {
        const RenderJob job = maker.make();
        const auto all = LaneRenderer::renderAll(job, library, 1);
        for (const auto& [velocity, variations] : all) {
            for (std::size_t n = 0; n < variations.size(); ++n) {
                const auto alone =
                    LaneRenderer::render(job, velocity, static_cast<std::int64_t>(n), library, 1);
                EXPECT_EQ(alone, variations[n]) << round << ", " << n;
            }
        }
    }
}

} // namespace

} // namespace vornic
