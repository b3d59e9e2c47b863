#include "VornicCore/render/JobLimits.h"

#include "VornicCore/render/LaneRenderer.h"
#include "VornicCore/render/Renderer.h"
#include "tests/VornicCore/render/MapSource.h"
#include "tests/VornicCore/render/TestStroke.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

/// A field of a board and how to reach it.
struct Field {
    const char* name;
    std::function<double&(RenderJob&)> at;
};

std::vector<Field> fields() {
    return {
        {"highPassHz", [](RenderJob& job) -> double& { return job.sound.press.chain.highPassHz; }},
        {"lowPassHz", [](RenderJob& job) -> double& { return job.sound.press.chain.lowPassHz; }},
        {"attackDb", [](RenderJob& job) -> double& { return job.sound.press.chain.attackDb; }},
        {"sustainDb", [](RenderJob& job) -> double& { return job.sound.press.chain.sustainDb; }},
        {"bodyModes frequency",
         [](RenderJob& job) -> double& { return job.sound.press.chain.bodyModes[0].frequency; }},
        {"bodyModes decayMs",
         [](RenderJob& job) -> double& { return job.sound.press.chain.bodyModes[0].decayMs; }},
        {"bodyModes gainDb",
         [](RenderJob& job) -> double& { return job.sound.press.chain.bodyModes[0].gainDb; }},
        {"bodyMix", [](RenderJob& job) -> double& { return job.sound.press.chain.bodyMix; }},
        {"damping", [](RenderJob& job) -> double& { return job.sound.press.chain.damping; }},
        {"dampingStartMs",
         [](RenderJob& job) -> double& { return job.sound.press.chain.dampingStartMs; }},
        {"drive", [](RenderJob& job) -> double& { return job.sound.press.chain.drive; }},
        {"pitch", [](RenderJob& job) -> double& { return job.sound.press.chain.pitch; }},
        {"layer 1 offsetMs",
         [](RenderJob& job) -> double& { return job.sound.press.layers[0].offsetMs; }},
        {"layer 1 gainDb",
         [](RenderJob& job) -> double& { return job.sound.press.layers[0].gainDb; }},
        {"layer 1 pitch",
         [](RenderJob& job) -> double& { return job.sound.press.layers[0].pitch; }},
        {"the sound's character depth",
         [](RenderJob& job) -> double& { return job.sound.character.depth; }},
        {"the sound's character snap",
         [](RenderJob& job) -> double& { return job.sound.character.snap; }},
        {"the board's character ring",
         [](RenderJob& job) -> double& { return job.boardCharacter.ring; }},
        {"the board's character size",
         [](RenderJob& job) -> double& { return job.boardCharacter.size; }},
        {"variation", [](RenderJob& job) -> double& { return job.variation; }},
        {"rattle", [](RenderJob& job) -> double& { return job.stabs->rattle; }},
    };
}

RenderJob ordinaryJob() {
    SoundSpec sound = plainSound({"a"});
    sound.variations = 2;
    sound.press.layers.push_back(layerOf({"a"}));
    ChainParams& chain = sound.press.chain;
    chain.bodyModes = {{.frequency = 700, .decayMs = 20, .gainDb = -3}};
    chain.bodyMix = 0.5;
    chain.damping = 0.3;
    chain.drive = 0.3;
    chain.attackDb = 2;
    return RenderJob(sound, boardOf({sound}), true, false);
}

const MapSource& library() {
    static const MapSource source({{"a", noiseStroke(1, 4000)}});
    return source;
}

void expectPlayable(const RenderJob& job, const std::string& name) {
    const auto plain = Renderer::render(job, Velocity::hard, 1, library(), 1);
    const auto fast = LaneRenderer::render(job, Velocity::hard, 1, library(), 1);
    for (const auto& samples : {plain, fast}) {
        EXPECT_LE(samples.size(), JobLimits::mostStrokeFrames) << name;
        for (const float sample : samples) {
            ASSERT_TRUE(std::isfinite(sample)) << name;
        }
    }
}

TEST(JobLimits, leaveAnOrdinaryJobAlone) {
    const RenderJob job = ordinaryJob();
    const LimitedJob within = limited(job);
    EXPECT_TRUE(within.job == job);
    EXPECT_TRUE(within.messages.empty());
}

TEST(JobLimits, nameTheFieldThatIsNotANumber) {
    for (const Field& field : fields()) {
        RenderJob job = ordinaryJob();
        field.at(job) = noNumber;
        LimitedJob within = limited(job);
        ASSERT_THAT(within.messages,
                    ElementsAre("Sound \"Keys\", press: " + std::string(field.name) +
                                " is not a number, rendered as 0"));
        EXPECT_EQ(field.at(within.job), 0) << field.name;
        expectPlayable(job, field.name);
    }
}

TEST(JobLimits, nameTheFieldThatIsBeyondAllReason) {
    for (const Field& field : fields()) {
        RenderJob zero = ordinaryJob();
        field.at(zero) = -0.0;
        expectPlayable(zero, std::string(field.name) + " -0");
        for (const double value : {1e300, -1e300, std::numeric_limits<double>::infinity()}) {
            RenderJob job = ordinaryJob();
            field.at(job) = value;
            LimitedJob within = limited(job);
            ASSERT_EQ(within.messages.size(), 1U) << field.name;
            EXPECT_THAT(within.messages[0], HasSubstr(std::string(": ") + field.name + " is "));
            EXPECT_LE(std::abs(field.at(within.job)), 1e6) << field.name;
            expectPlayable(job, field.name);
        }
    }
}

TEST(JobLimits, holdForTheReleaseOfAReleaseJob) {
    SoundSpec sound = plainSound({"a"});
    sound.release = sound.press;
    sound.release->chain.drive = noNumber;
    const Board board = boardOf({sound});
    EXPECT_TRUE(limited(RenderJob(sound, board, false, false)).messages.empty());
    EXPECT_THAT(limited(RenderJob(sound, board, false, true)).messages,
                ElementsAre("Sound \"Keys\", release: drive is not a number, rendered as 0"));
}

TEST(JobLimits, replaceGainsOfTheEqualiserThatAreNotNumbers) {
    RenderJob job = ordinaryJob();
    job.sound.press.chain.eq.gains[Equalizer::Band::click] =
        std::numeric_limits<float>::quiet_NaN();
    job.sound.press.chain.eq.gains[Equalizer::Band::air] = std::numeric_limits<float>::infinity();
    EXPECT_THAT(limited(job).messages,
                ElementsAre("Sound \"Keys\", press: eq click is not a number, rendered as 0"));
    expectPlayable(job, "eq");
}

TEST(JobLimits, boundTheNumberOfVariations) {
    RenderJob job = ordinaryJob();
    job.sound.variations = -3;
    EXPECT_THAT(limited(job).messages,
                ElementsAre("Sound \"Keys\", press: variations is -3, rendered as 0"));
    for (const auto& [velocity, variations] : Renderer::renderAll(job, library(), 1)) {
        EXPECT_TRUE(variations.empty());
    }
    job.sound.variations = 1'000'000;
    EXPECT_THAT(limited(job).messages,
                ElementsAre("Sound \"Keys\", press: variations is 1000000, rendered as 64"));
    for (const auto& [velocity, variations] : LaneRenderer::renderAll(job, library(), 1)) {
        EXPECT_EQ(variations.size(), 64U);
    }
    job.sound.variations = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(limited(job).job.sound.variations, 0);
}

TEST(JobLimits, boundTheNumberOfLayersAndModes) {
    RenderJob job = ordinaryJob();
    job.sound.press.layers.resize(1000, layerOf({"a"}));
    job.sound.press.chain.bodyModes.resize(100'000, {.frequency = 500, .decayMs = 1, .gainDb = 0});
    const LimitedJob within = limited(job);
    EXPECT_EQ(within.job.sound.press.layers.size(), JobLimits::mostLayers);
    EXPECT_EQ(within.job.sound.press.chain.bodyModes.size(), JobLimits::mostModes);
    EXPECT_THAT(
        within.messages,
        ElementsAre("Sound \"Keys\", press: layers is 1000 long, rendered as 32 long",
                    "Sound \"Keys\", press: bodyModes is 100000 long, rendered as 32 long"));
    expectPlayable(job, "many");
}

TEST(JobLimits, aDecayOfMinusZeroIsOneOfZero) {
    RenderJob job = ordinaryJob();
    job.sound.press.chain.bodyModes[0].decayMs = 0.0;
    const auto plain = Renderer::render(job, Velocity::hard, 1, library(), 1);
    const auto fast = LaneRenderer::render(job, Velocity::hard, 1, library(), 1);
    ASSERT_FALSE(plain.empty());
    job.sound.press.chain.bodyModes[0].decayMs = -0.0;
    EXPECT_EQ(Renderer::render(job, Velocity::hard, 1, library(), 1), plain);
    EXPECT_EQ(LaneRenderer::render(job, Velocity::hard, 1, library(), 1), fast);
    expectPlayable(job, "decayMs -0");
}

TEST(JobLimits, whatIsTooLongEndsInAFadeAndNotInAnEdge) {
    std::vector<float> hum(400'000);
    for (std::size_t n = 0; n < hum.size(); ++n) {
        hum[n] =
            static_cast<float>(0.5 * std::sin(static_cast<double>(n) * 104.19 / 48000 * 6.283));
    }
    const MapSource source({{"a", hum}});
    RenderJob job = ordinaryJob();
    job.sound.press.layers.resize(1);
    ChainParams& chain = job.sound.press.chain;
    chain = ChainParams::neutral();
    // As it is, the stroke is cut; an octave up the recording is, and the body rings on behind it.
    for (const double pitch : {0.0, 12.0}) {
        chain.pitch = pitch;
        chain.bodyModes = {{.frequency = 300, .decayMs = 100, .gainDb = 0}};
        chain.bodyMix = pitch == 0.0 ? 0.0 : 0.2;
        for (const auto& samples : {Renderer::render(job, Velocity::medium, 0, source, 1),
                                    LaneRenderer::render(job, Velocity::medium, 0, source, 1)}) {
            ASSERT_GT(samples.size(), 100'000U);
            EXPECT_LE(samples.size(), JobLimits::mostStrokeFrames);
            EXPECT_EQ(samples.back(), 0.0F);
            float largest = 0.0F; // step
            for (std::size_t n = 48'000; n < samples.size(); ++n) {
                largest = std::max(largest, std::abs(samples[n] - samples[n - 1]));
            }
            EXPECT_LT(largest, 0.02F) << pitch;
        }
    }
}

TEST(JobLimits, keepEverythingAtItsLimitPlayable) {
    RenderJob job = ordinaryJob();
    for (const Field& field : fields()) {
        field.at(job) = -1e300;
    }
    expectPlayable(job, "all lowest");
    for (const Field& field : fields()) {
        field.at(job) = 1e300;
    }
    expectPlayable(job, "all highest");
}

} // namespace

} // namespace vornic
