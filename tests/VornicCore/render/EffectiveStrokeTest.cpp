#include "VornicCore/render/EffectiveStroke.h"

#include "VornicCore/parts/Parts.h"
#include "VornicCore/render/RenderJob.h"
#include "tests/VornicCore/render/TestStroke.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace vornic {

namespace {

using Band = Equalizer::Band;

class Effective : public testing::Test {
  protected:
    SoundSpec sound = plainSound({"a"});
    Board board = boardOf({sound});

    EffectiveStroke stroke(bool stabilised = false) {
        return Renderer::effective(sound.press, RenderJob(sound, board, stabilised, false));
    }
    ChainParams chain() { return stroke().chain; }
    float gain(Band band) { return chain().eq.gain(band); }
};

TEST_F(Effective, isTheStrokeItselfWhereNothingDiffersFromTheRecording) {
    sound.press.chain.damping = 0.25;
    sound.press.chain.eq.setGain(Band::clack, 3);
    EXPECT_EQ(chain(), sound.press.chain);
    EXPECT_EQ(stroke().layers, sound.press.layers);
    EXPECT_EQ(stroke(true).layers.size(), 2U); // the rattle of the stabilisers
}

TEST_F(Effective, addsTheDifferenceOfWantedAndRecordedSwitch) {
    sound.recordedAs.type = SwitchType::silent; // click -9, clack -4, air -6, attack -6, ...
    EXPECT_EQ(gain(Band::click), 9.0F);
    EXPECT_EQ(gain(Band::clack), 4.0F);
    EXPECT_EQ(gain(Band::air), 6.0F);
    EXPECT_EQ(chain().attackDb, 6);
    EXPECT_EQ(chain().sustainDb, 4);
    EXPECT_EQ(chain().damping, 0); // -0.5, below the range
}

TEST_F(Effective, addsTheDifferenceOfWantedAndRecordedBuild) {
    board.build.keycapProfile = KeycapProfile::sa; // bass +2, body +1.5, sustain +1, pitch -0.8
    board.recordedBuild.keycapProfile = KeycapProfile::oem; // bass +0.5, pitch -0.2
    EXPECT_EQ(gain(Band::bass), 1.5F);
    EXPECT_EQ(gain(Band::body), 1.5F);
    EXPECT_EQ(chain().sustainDb, 1);
    EXPECT_DOUBLE_EQ(chain().pitch, -0.6);
}

TEST_F(Effective, keepsBandsWithinTheRangeOfTheEqualiser) {
    sound.press.chain.eq.setGain(Band::click, 11);
    sound.switchParts.type = SwitchType::clicky; // click +3
    EXPECT_EQ(gain(Band::click), 12.0F);
    sound.press.chain.eq.gains[Band::body] = 40; // as only a file can say
    EXPECT_EQ(gain(Band::body), 12.0F);
}

TEST_F(Effective, ringBringsInTheModesOfTheWantedBuild) {
    board.build.plate = Plate::brass;
    board.recordedBuild.plate = Plate::fr4;
    const ChainParams result = chain();
    EXPECT_EQ(result.bodyModes, Parts::modes(board.build));
    EXPECT_DOUBLE_EQ(result.bodyMix, 0.6 * 0.5);
    EXPECT_EQ(result.damping, 0);
}

TEST_F(Effective, ringAddsItsModesToTheStrokesOwn) {
    board.build.plate = Plate::brass;
    board.recordedBuild.plate = Plate::fr4;
    const DSP::Mode own{.frequency = 700, .decayMs = 20, .gainDb = -3};
    sound.press.chain.bodyModes = {own};
    sound.press.chain.bodyMix = 0.25;
    std::vector<DSP::Mode> expected = Parts::modes(board.build);
    expected.insert(expected.begin(), own);
    EXPECT_EQ(chain().bodyModes, expected);
    EXPECT_DOUBLE_EQ(chain().bodyMix, 0.25 + 0.6 * 0.5);
}

TEST_F(Effective, lackOfRingDampsInstead) {
    board.build.foams = {Foam::caseFoam, Foam::plateFoam};
    sound.press.chain.bodyMix = 0.2;
    const ChainParams result = chain();
    EXPECT_TRUE(result.bodyModes.empty());
    EXPECT_EQ(result.bodyMix, 0.2);
    EXPECT_DOUBLE_EQ(result.damping, 0.5 * 0.6);
}

TEST_F(Effective, addsTheCharactersOfSoundAndBoard) {
    sound.character = {.depth = 0.5, .snap = 0, .ring = 0, .size = 0.25};
    board.character = {.depth = 0.25, .snap = 0.5, .ring = 0.5, .size = 0};
    sound.press.chain.damping = 0.5;
    const ChainParams result = chain();
    EXPECT_EQ(result.eq.gain(Band::bass), 4.5F);
    EXPECT_EQ(result.eq.gain(Band::body), 1.5F);
    EXPECT_DOUBLE_EQ(result.pitch, -0.7 * 0.75 - 2.5 * 0.25);
    EXPECT_EQ(result.attackDb, 3);
    EXPECT_EQ(result.eq.gain(Band::click), 2.0F);
    EXPECT_EQ(result.eq.gain(Band::air), 1.0F);
    EXPECT_EQ(result.eq.gain(Band::clack), 0.0F);
    EXPECT_EQ(result.sustainDb, 3);
    EXPECT_DOUBLE_EQ(result.damping, 0.5 - 0.3 * 0.5);
}

TEST_F(Effective, lessRingDampsMoreThanMoreRingUndamps) {
    sound.character.ring = -0.5;
    EXPECT_DOUBLE_EQ(chain().damping, 0.25);
    EXPECT_EQ(chain().sustainDb, -3);
}

TEST_F(Effective, keepsAmountsBetweenZeroAndOne) {
    sound.press.chain.damping = 3;
    sound.press.chain.drive = -1;
    sound.press.chain.bodyMix = 7;
    EXPECT_EQ(chain().damping, 1);
    EXPECT_EQ(chain().drive, 0);
    EXPECT_EQ(chain().bodyMix, 1);
}

TEST_F(Effective, appendsClickSpringAndRattleInThisOrder) {
    sound.recordedAs.lube = Lube::thick; // no spring to be heard
    sound.switchParts.type = SwitchType::clicky;
    sound.switchParts.lube = Lube::none;
    board.stabs = {.tuning = StabTuning::stock, .rattle = 1};
    const std::vector<LayerSpec> layers = stroke(true).layers;
    ASSERT_EQ(layers.size(), 4U);
    EXPECT_EQ(layers[1].samples, std::vector<std::string>{"part/click"});
    EXPECT_EQ(layers[1].offsetMs, 0);
    EXPECT_EQ(layers[1].gainDb, -8);
    EXPECT_EQ(layers[2].samples, std::vector<std::string>{"part/spring"});
    EXPECT_EQ(layers[2].offsetMs, 3);
    EXPECT_EQ(layers[2].gainDb, -16);
    EXPECT_EQ(layers[3].samples, std::vector<std::string>{"part/rattle"});
    EXPECT_EQ(layers[3].offsetMs, 8);
    EXPECT_EQ(layers[3].gainDb, -12);
    for (const LayerSpec& layer : layers) {
        EXPECT_EQ(layer.pitch, 0);
    }
    EXPECT_EQ(stroke(false).layers.size(), 3U);
}

TEST_F(Effective, hasNoRattleBelowOnePercent) {
    board.stabs.rattle = 0.01;
    EXPECT_EQ(stroke(true).layers.size(), 1U);
}

TEST_F(Effective, isAValueThatComparesEqualForEqualJobs) {
    sound.switchParts.type = SwitchType::clicky;
    EXPECT_EQ(stroke(true), stroke(true));
}

TEST(HeardLayers, areThoseNotMuted) {
    std::vector<LayerSpec> layers{layerOf({"a"}), layerOf({"b"})};
    EXPECT_EQ(heard(layers), layers);
    layers[0].muted = true;
    EXPECT_EQ(heard(layers), std::vector{layers[1]});
}

TEST(HeardLayers, areTheSoloOnesIfThereAreAny) {
    std::vector<LayerSpec> layers{layerOf({"a"}), layerOf({"b"}), layerOf({"c"})};
    layers[1].solo = true;
    layers[2].solo = true;
    layers[2].muted = true;
    EXPECT_EQ(heard(layers), std::vector{layers[1]});
}

TEST(RenderJob, takesItsFieldsFromSoundAndBoard) {
    const SoundSpec sound = plainSound({"a"});
    Board board = boardOf({sound});
    board.build.plate = Plate::brass;
    board.recordedBuild.plate = Plate::pom;
    board.character.snap = 0.5;
    board.feel.variation = 0.75;
    board.stabs.rattle = 0.5;
    const RenderJob plain(sound, board, false, true);
    EXPECT_EQ(plain.sound, sound);
    EXPECT_EQ(plain.build.plate, Plate::brass);
    EXPECT_EQ(plain.recordedBuild.plate, Plate::pom);
    EXPECT_EQ(plain.boardCharacter.snap, 0.5);
    EXPECT_EQ(plain.variation, 0.75);
    EXPECT_TRUE(plain.isRelease);
    EXPECT_FALSE(plain.stabs.has_value());
    EXPECT_EQ(RenderJob(sound, board, true, false).stabs, board.stabs);
}

TEST(RenderJob, equalJobsHaveEqualHashes) {
    const SoundSpec sound = plainSound({"a"});
    const Board board = boardOf({sound});
    const std::hash<RenderJob> hash;
    const RenderJob job(sound, board, false, false);
    EXPECT_EQ(job, RenderJob(sound, board, false, false));
    EXPECT_EQ(hash(job), hash(RenderJob(sound, board, false, false)));
    EXPECT_NE(job, RenderJob(sound, board, true, false));
    EXPECT_NE(job, RenderJob(sound, board, false, true));
    EXPECT_NE(hash(job), hash(RenderJob(sound, board, true, false)));
}

} // namespace

} // namespace vornic
