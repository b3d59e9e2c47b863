#include "VornicCore/render/Renderer.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/dsp/Tone.h"
#include "VornicCore/render/StrokeVariation.h"
#include "tests/VornicCore/render/MapSource.h"
#include "tests/VornicCore/render/TestStroke.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace vornic {

namespace {

// Steps 8 to 11 for medium velocity without variation.
std::vector<float> levelled(std::vector<float> samples) {
    const auto onset = DSP::onset(samples);
    samples.erase(samples.begin(), samples.begin() + std::max<std::int64_t>(onset - 48, 0));
    DSP::trimTail(samples, -60);
    DSP::level(samples, -21, -2);
    return samples;
}

double peakOf(const std::vector<float>& samples) {
    return static_cast<double>(DSP::peak(samples));
}

class RendererTest : public testing::Test {
  protected:
    MapSource library{{{"a", noiseStroke(1)}, {"b", noiseStroke(2, 8000, 700)}}};
    SoundSpec sound = plainSound({"a"});
    double variation = 0;

    RenderJob job(bool isRelease = false) {
        Board board = boardOf({sound});
        board.feel.variation = variation;
        return RenderJob(sound, board, false, isRelease);
    }
    std::vector<float> render(Velocity velocity = Velocity::medium, std::int64_t variant = 0) {
        return Renderer::render(job(), velocity, variant, library, 1);
    }
    // Without the corner of the neutral chain, what comes out can be told from what goes in.
    void SetUp() override { sound.press.chain.highPassHz = 0; }
};

TEST_F(RendererTest, aReleaseOfASoundWithoutReleaseIsEmpty) {
    EXPECT_TRUE(Renderer::render(job(true), Velocity::medium, 0, library, 1).empty());
    sound.release = sound.press;
    EXPECT_FALSE(Renderer::render(job(true), Velocity::medium, 0, library, 1).empty());
}

TEST_F(RendererTest, equalRequestsGiveEqualBits) {
    variation = 0.5;
    sound.press.chain.drive = 0.5;
    EXPECT_EQ(render(Velocity::hard, 4), render(Velocity::hard, 4));
    EXPECT_NE(render(Velocity::hard, 4), render(Velocity::hard, 5));
    EXPECT_NE(Renderer::render(job(), Velocity::soft, 0, library, 1),
              Renderer::render(job(), Velocity::soft, 0, library, 2));
}

TEST_F(RendererTest, withoutVariationAllVariantsAreEqual) {
    const auto all = Renderer::renderAll(job(), library, 1);
    for (const auto& [velocity, variations] : all) {
        ASSERT_EQ(variations.size(), 12U);
        for (const std::vector<float>& samples : variations) {
            EXPECT_EQ(samples, variations.front());
        }
    }
    EXPECT_NE(all.at(Velocity::soft).front(), all.at(Velocity::hard).front());
}

TEST_F(RendererTest, rendersEveryVelocityAndVariantAsRenderDoes) {
    variation = 0.5;
    sound.variations = 2;
    const auto all = Renderer::renderAll(job(), library, 1);
    ASSERT_EQ(all.size(), 3U);
    for (const auto& [velocity, variations] : all) {
        ASSERT_EQ(variations.size(), 2U);
        EXPECT_EQ(variations[0], render(velocity, 0));
        EXPECT_EQ(variations[1], render(velocity, 1));
    }
}

TEST_F(RendererTest, aStrokeWithoutAnyRecordingIsEmpty) {
    sound.press.layers = {layerOf({"missing"}), layerOf({})};
    EXPECT_TRUE(render().empty());
    sound.press.layers.clear();
    EXPECT_TRUE(render().empty());
}

TEST_F(RendererTest, passesOverLayersWithoutRecording) {
    const auto alone = render();
    sound.press.layers.insert(sound.press.layers.begin(), layerOf({"missing"}));
    sound.press.layers.push_back(layerOf({}));
    EXPECT_EQ(render(), alone);
}

TEST_F(RendererTest, variantThreeOfTwoRecordingsUsesTheSecond) {
    sound.press.layers = {layerOf({"a", "b"})};
    const auto third = render(Velocity::medium, 3);
    const auto second = render(Velocity::medium, 2);
    sound.press.layers = {layerOf({"b"})};
    EXPECT_EQ(third, render());
    sound.press.layers = {layerOf({"a"})};
    EXPECT_EQ(second, render());
}

TEST_F(RendererTest, neverPeaksAboveTheCeilingBeforeTheFinalLevel) {
    variation = 1;
    for (const Velocity velocity : allVelocities) {
        for (std::int64_t variant = 0; variant < 10; ++variant) {
            sound.press.chain.attackDb = variant % 2 == 0 ? 20 : 0;
            const auto drawn = StrokeVariation::draw(1, velocity, variant, 1);
            const double gain = std::pow(10, finalLevelDb(velocity, drawn) / 20);
            EXPECT_LE(peakOf(render(velocity, variant)) / gain, std::pow(10, -2 / 20.0) * 1.000001);
        }
    }
}

TEST_F(RendererTest, withANeutralChainOnlyCutsTrimsAndLevels) {
    EXPECT_EQ(render(), levelled(library.recordings["a"]));
}

TEST_F(RendererTest, processesInTheOrderToneTransientBodyDampingDrivePitch) {
    ChainParams& chain = sound.press.chain;
    chain.eq.setGain(Equalizer::Band::clack, 5);
    chain.highPassHz = 60;
    chain.lowPassHz = 9000;
    chain.attackDb = 4;
    chain.sustainDb = -3;
    chain.bodyModes = {{.frequency = 700, .decayMs = 20, .gainDb = -3}};
    chain.bodyMix = 0.5;
    chain.damping = 0.4;
    chain.dampingStartMs = 10;
    chain.drive = 0.3;
    chain.pitch = 1.5;
    std::vector<float> expected = library.recordings["a"];
    DSP::tone(expected, chain.eq, 60, 9000);
    DSP::transient(expected, 4, -3);
    DSP::body(expected, chain.bodyModes, 0.5);
    DSP::damping(expected, 0.4, 10);
    DSP::drive(expected, 0.3);
    EXPECT_EQ(render(), levelled(DSP::resample(expected, 1.5)));
}

TEST_F(RendererTest, aVariationShiftsWhatItIsDrawnFrom) {
    variation = 1;
    sound.press.chain.pitch = 1;
    for (std::int64_t variant = 0; variant < 6; ++variant) {
        const auto drawn = StrokeVariation::draw(1, Velocity::medium, variant, 1);
        std::vector<float> expected = library.recordings["a"];
        const ChainParams chain = struck(sound.press.chain, Velocity::medium, drawn);
        DSP::tone(expected, chain.eq, chain.highPassHz, chain.lowPassHz);
        expected = levelled(DSP::resample(expected, 1 + drawn.pitch));
        ASSERT_EQ(render(Velocity::medium, variant).size(), expected.size()) << variant;
        const double gain = std::pow(10, drawn.levelDb / 20);
        EXPECT_NEAR(peakOf(render(Velocity::medium, variant)), peakOf(expected) * gain, 1e-6);
    }
}

TEST_F(RendererTest, startsOneMillisecondBeforeTheAttack) {
    EXPECT_EQ(DSP::onset(render()), 48);
}

TEST_F(RendererTest, alignsAttacks) {
    // One click each, at 100 and at 300.
    std::vector<float> early(1000);
    std::vector<float> late(1000);
    early[100] = 0.5F;
    late[300] = 0.25F;
    library.recordings = {{"a", early}, {"b", late}};
    sound.press.layers = {layerOf({"a"}), layerOf({"b"})};
    sound.press.alignAttacks = true;
    const auto aligned = render();
    ASSERT_GT(aligned.size(), 49U);
    EXPECT_GT(aligned[48], 0.0F);
    EXPECT_EQ(std::ranges::count_if(aligned, [](float x) { return x != 0; }), 1);

    sound.press.alignAttacks = false;
    const auto apart = render();
    ASSERT_GT(apart.size(), 249U);
    EXPECT_FLOAT_EQ(apart[248] * 2, apart[48]);
}

TEST_F(RendererTest, placesLayersByTheirOffset) {
    std::vector<float> click(100);
    click[10] = 0.5F;
    library.recordings["a"] = click;
    sound.press.layers = {layerOf({"a"}), layerOf({"a"})};
    sound.press.layers[0].offsetMs = 2;
    sound.press.layers[1].offsetMs = -1;
    sound.press.layers[1].gainDb = -6;
    const auto rendered = render();
    ASSERT_GT(rendered.size(), std::size_t{10 + 144});
    EXPECT_NEAR(rendered[10] / rendered[10 + 144], std::pow(10, -6 / 20.0), 1e-6);
}

TEST_F(RendererTest, invertsAndShiftsLayers) {
    sound.press.layers[0].invert = true;
    auto inverted = library.recordings["a"];
    for (float& sample : inverted) {
        sample = -sample;
    }
    EXPECT_EQ(render(), levelled(inverted));
    sound.press.layers[0].invert = false;
    sound.press.layers[0].pitch = 3;
    EXPECT_EQ(render(), levelled(DSP::resample(library.recordings["a"], 3)));
}

TEST_F(RendererTest, leavesOutMutedLayers) {
    const auto alone = render();
    sound.press.layers.push_back(layerOf({"b"}));
    EXPECT_NE(render(), alone);
    sound.press.layers[1].muted = true;
    EXPECT_EQ(render(), alone);
    sound.press.layers[1].muted = false;
    sound.press.layers[0].solo = true;
    EXPECT_EQ(render(), alone);
}

TEST_F(RendererTest, silencesWhatIsNotFinite) {
    library.recordings["a"][5000] = std::numeric_limits<float>::quiet_NaN();
    library.recordings["a"][5001] = std::numeric_limits<float>::infinity();
    auto repaired = library.recordings["a"];
    repaired[5000] = repaired[5001] = 0;
    EXPECT_EQ(render(), levelled(repaired));
}

} // namespace

} // namespace vornic
