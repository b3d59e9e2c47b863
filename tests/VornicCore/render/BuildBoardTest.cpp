#include "VornicCore/render/BuildBoard.h"

#include "VornicCore/base/SplitMix64.h"
#include "VornicCore/render/BoardJobs.h"
#include "VornicCore/render/LaneRenderer.h"
#include "tests/VornicCore/render/MapSource.h"
#include "tests/VornicCore/render/TestStroke.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace vornic {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const MapSource& library() {
    static const MapSource source({{"a", noiseStroke(1, 3000)}, {"b", noiseStroke(2, 4000)}});
    return source;
}

SoundSpec sound(const std::string& id, const std::string& recording, std::int64_t variations = 2) {
    SoundSpec result = plainSound({recording});
    result.id = id;
    result.name = id;
    result.variations = variations;
    return result;
}

/// Space plays "space", every other key "keys".
Board board() {
    Board result = boardOf({sound("keys", "a"), sound("space", "b")});
    Assignment space;
    space.sound = "space";
    result.groups[KeyGroup::space] = space;
    return result;
}

std::vector<std::string> poolNames(const VoiceBank& bank) {
    std::vector<std::string> names;
    for (const auto& [name, pool] : bank.pools()) {
        names.push_back(name);
    }
    return names;
}

std::vector<float> framesOf(const Sample& sample) {
    return {sample.data, sample.data + sample.length};
}

TEST(BuildBoard, fillsAPoolPerSoundStabiliserAndVelocity) {
    const RenderedBoard rendered = buildBoard(board(), library(), 1);
    // Both sounds are on stabilised keys: return, delete and shift play "keys".
    EXPECT_THAT(poolNames(*rendered.bank),
                ElementsAre("keys|key|0", "keys|key|1", "keys|key|2", "keys|stab|0", "keys|stab|1",
                            "keys|stab|2", "space|key|0", "space|key|1", "space|key|2",
                            "space|stab|0", "space|stab|1", "space|stab|2"));
    for (const auto& [name, pool] : rendered.bank->pools()) {
        EXPECT_EQ(pool.size(), 2U) << name;
    }
    EXPECT_THAT(rendered.messages, IsEmpty());
}

TEST(BuildBoard, rendersStabilisedOnlyWhatStabilisedKeysPlay) {
    Board all = board();
    all.sounds.push_back(sound("unused", "a"));
    const auto names = poolNames(*buildBoard(all, library(), 1).bank);
    EXPECT_THAT(names, testing::Contains("unused|key|1"));
    EXPECT_THAT(names, testing::Not(testing::Contains("unused|stab|1")));
}

TEST(BuildBoard, withoutReleaseStrokesHasNoReleaseVoices) {
    for (const std::string& name : poolNames(*buildBoard(board(), library(), 1).bank)) {
        EXPECT_THAT(name, testing::Not(HasSubstr("release")));
    }
}

TEST(BuildBoard, rendersReleasesAtMediumVelocity) {
    Board withRelease = board();
    withRelease.sounds[1].release = withRelease.sounds[0].press;
    const auto bank = buildBoard(withRelease, library(), 1).bank;
    const auto pool = bank->pool(VoiceBank::releaseKey("space"));
    ASSERT_EQ(pool.size(), 2U);
    const RenderJob job(withRelease.sounds[1], withRelease, false, true);
    EXPECT_EQ(framesOf(pool[1]), LaneRenderer::render(job, Velocity::medium, 1, library(), 1));
    EXPECT_TRUE(bank->pool(VoiceBank::releaseKey("keys")).empty());
}

TEST(BuildBoard, holdsWhatTheRendererRendersWithSeedOne) {
    const Board plain = board();
    const auto bank = buildBoard(plain, library(), 2).bank;
    const RenderJob job(plain.sounds[1], plain, true, false);
    for (const Velocity velocity : allVelocities) {
        const auto pool = bank->pool(VoiceBank::key("space", true, velocity));
        ASSERT_EQ(pool.size(), 2U);
        for (std::size_t n = 0; n < pool.size(); ++n) {
            EXPECT_EQ(
                framesOf(pool[n]),
                LaneRenderer::render(job, velocity, static_cast<std::int64_t>(n), library(), 1));
        }
    }
}

TEST(BuildBoard, isTheSameToTheBitOnAnyNumberOfThreads) {
    Board many = board();
    for (int n = 0; n < 9; ++n) {
        many.sounds.push_back(sound("more-" + std::to_string(n), n % 2 == 0 ? "a" : "b", 1 + n));
    }
    const auto one = buildBoard(many, library(), 1).bank;
    const auto four = buildBoard(many, library(), 4).bank;
    ASSERT_EQ(poolNames(*one), poolNames(*four));
    for (const auto& [name, pool] : one->pools()) {
        const auto other = four->pool(name);
        ASSERT_EQ(pool.size(), other.size()) << name;
        for (std::size_t n = 0; n < pool.size(); ++n) {
            EXPECT_EQ(framesOf(pool[n]), framesOf(other[n])) << name;
        }
    }
}

TEST(BuildBoard, isEmptyForABoardWithoutSounds) {
    const RenderedBoard rendered = buildBoard(boardOf({}), library(), 2);
    EXPECT_TRUE(rendered.bank->pools().empty());
}

TEST(BoardJobs, ofEqualSoundsAreRenderedOnce) {
    const SoundSpec keys = sound("keys", "a");
    const BoardJobs jobs(boardOf({keys, keys}));
    EXPECT_EQ(jobs.jobs.size(), 2U); // stabilised and not
    EXPECT_EQ(jobs.uses.size(), 4U);
}

TEST(BoardJobs, listPressReleaseAndStabilisedPressOfEverySound) {
    Board withRelease = board();
    withRelease.sounds[0].release = withRelease.sounds[0].press;
    const BoardJobs jobs(withRelease);
    ASSERT_EQ(jobs.jobs.size(), 5U);
    EXPECT_FALSE(jobs.jobs[0].isRelease);
    EXPECT_TRUE(jobs.jobs[1].isRelease);
    EXPECT_TRUE(jobs.jobs[2].stabs.has_value());
    EXPECT_EQ(jobs.jobs[3].sound.id, "space");
    EXPECT_EQ(jobs.jobs[4].stabs, withRelease.stabs);
}

TEST(BuildBoard, saysWhichFieldOfAHostileBoardItChanged) {
    Board hostile = board();
    hostile.sounds[0].press.chain.pitch = std::numeric_limits<double>::quiet_NaN();
    hostile.sounds[1].variations = -1;
    hostile.feel.variation = 1e300;
    const RenderedBoard rendered = buildBoard(hostile, library(), 2);
    EXPECT_THAT(rendered.messages,
                ElementsAre("Sound \"keys\", press: pitch is not a number, rendered as 0",
                            "Sound \"keys\", press: variation is 1e+300, rendered as 4",
                            "Sound \"space\", press: variation is 1e+300, rendered as 4",
                            "Sound \"space\", press: variations is -1, rendered as 0"));
    EXPECT_FALSE(rendered.bank->pool("keys|key|1").empty());
    EXPECT_TRUE(rendered.bank->pool("space|key|1").empty());
}

std::size_t sizeOf(const VoiceBank& bank) {
    std::size_t frames = 0;
    for (const auto& [name, pool] : bank.pools()) {
        for (const Sample& sample : pool) {
            frames += static_cast<std::size_t>(sample.length);
        }
    }
    return frames;
}

TEST(BuildBoard, cutsStrokesWhereOneVariationOfEachExceedsTheBank) {
    constexpr std::size_t mostFrames = 12000;
    const RenderedBoard rendered = buildBoard(board(), library(), 2, {.mostFrames = mostFrames});
    for (const auto& [name, pool] : rendered.bank->pools()) {
        ASSERT_EQ(pool.size(), 1U) << name;
        EXPECT_EQ(pool.front().length, 1000); // of 12 strokes
    }
    EXPECT_EQ(sizeOf(*rendered.bank), mostFrames);
    EXPECT_THAT(rendered.messages,
                ElementsAre("Sound \"keys\" gets 1 of its 2 variations: its board is too long",
                            "Sound \"keys\" is too long for its board and cut",
                            "Sound \"space\" gets 1 of its 2 variations: its board is too long",
                            "Sound \"space\" is too long for its board and cut"));
}

TEST(BuildBoard, givesSoundsThatNoKeyPlaysFewerVariationsFirst) {
    Board large = board();
    large.sounds[0].variations = 12;
    large.sounds[1].variations = 12;
    for (int n = 0; n < 10; ++n) {
        large.sounds.push_back(sound("spare-" + std::to_string(n), n % 2 == 0 ? "a" : "b", 12));
    }
    const RenderedBoard whole = buildBoard(large, library(), 2);
    EXPECT_THAT(whole.messages, IsEmpty());
    const std::size_t most = sizeOf(*whole.bank) / 2;
    const RenderedBoard fitted = buildBoard(large, library(), 2, {.mostFrames = most});
    EXPECT_LE(sizeOf(*fitted.bank), most);
    EXPECT_GT(sizeOf(*fitted.bank), most * 8 / 10) << "what there is room for is used";
    for (const auto& [name, pool] : whole.bank->pools()) {
        const auto left = fitted.bank->pool(name);
        if (name.starts_with("spare")) {
            EXPECT_LT(left.size(), 12U) << name;
            EXPECT_GE(left.size(), 1U) << name;
        } else {
            EXPECT_EQ(left.size(), 12U) << name;
        }
        for (std::size_t n = 0; n < left.size(); ++n) {
            EXPECT_EQ(framesOf(left[n]), framesOf(pool[n])) << name << ": as without the limit";
        }
    }
    EXPECT_EQ(fitted.messages.size(), 10U);
    EXPECT_THAT(fitted.messages.front(), HasSubstr("\"spare-0\" gets "));
    const RenderedBoard again = buildBoard(large, library(), 4, {.mostFrames = most});
    EXPECT_EQ(again.messages, fitted.messages);
}

TEST(BuildBoard, aBoardOfManyLongSoundsFitsIntoABank) {
    // As many sounds as a user makes who records a keyboard key by key, in strokes of a second.
    const MapSource recordings({{"a", noiseStroke(1, 48'000)}});
    std::vector<SoundSpec> sounds;
    for (int n = 0; n < 57; ++n) {
        sounds.push_back(sound("sound-" + std::to_string(n), "a", 12));
        sounds.back().press.chain.sustainDb = 24; // a tail that stays above the floor
    }
    const RenderedBoard rendered = buildBoard(boardOf(sounds), recordings, 2);
    EXPECT_LE(sizeOf(*rendered.bank), mostBankFrames);
    EXPECT_EQ(rendered.bank->pool("sound-0|key|1").size(), 12U) << "the one that keys play";
    EXPECT_FALSE(rendered.bank->pool("sound-56|key|1").empty());
}

TEST(BuildBoard, saysWhichRecordingsAndStrokesAreTooLong) {
    std::vector<float> hiss(300'000);
    SplitMix64 random(1);
    std::ranges::generate(hiss, [&] { return static_cast<float>(random.uniform(-0.5, 0.5)); });
    const MapSource recordings({{"long", hiss}, {"short", {hiss.begin(), hiss.begin() + 9000}}});
    const RenderedBoard rendered =
        buildBoard(boardOf({sound("long", "long", 1), sound("short", "short", 1)}), recordings, 2);
    EXPECT_THAT(rendered.messages,
                ElementsAre("Sound \"long\" is longer than 4 s and cut there",
                            "Sound \"long\" has a recording longer than 5 s, cut there: long"));
}

TEST(BuildBoard, leavesOutSoundsBeyondItsBudgetWhateverTheNumberOfThreads) {
    Board many = boardOf({});
    for (int n = 0; n < 30; ++n) {
        many.sounds.push_back(sound("sound-" + std::to_string(n), n % 2 == 0 ? "a" : "b", 2));
        many.sounds.back().character.depth = n * 0.01;
    }
    const RenderedBoard whole = buildBoard(many, library(), 1);
    std::size_t frames = 0;
    for (const Sample& sample : whole.bank->pool("sound-1|key|0")) {
        frames += static_cast<std::size_t>(sample.length);
    }
    const BuildOptions few{.mostRenderedFrames = frames * 20};
    const RenderedBoard alone = buildBoard(many, library(), 1, few);
    const RenderedBoard helped = buildBoard(many, library(), 4, few);
    EXPECT_GT(alone.bank->pools().size(), 3U);
    EXPECT_LT(alone.bank->pools().size(), whole.bank->pools().size() / 2);
    EXPECT_EQ(poolNames(*alone.bank), poolNames(*helped.bank));
    EXPECT_EQ(alone.messages, helped.messages);
    EXPECT_THAT(alone.messages.back(), HasSubstr("\"sound-29\" is left out"));
    EXPECT_THAT(whole.messages, IsEmpty());
}

TEST(BoardJobs, ofABoardWithTooManyStrokesAreLeftOut) {
    Board hostile = boardOf({});
    for (int n = 0; n < 200; ++n) {
        hostile.sounds.push_back(sound("sound-" + std::to_string(n), "a", 1'000'000));
    }
    const BoardJobs jobs(hostile);
    std::int64_t strokes = 0;
    for (const RenderJob& job : jobs.jobs) {
        strokes += BoardJobs::strokes(job);
    }
    EXPECT_LE(strokes, BoardJobs::mostStrokes);
    EXPECT_GT(strokes, BoardJobs::mostStrokes - 200);
    EXPECT_THAT(jobs.messages.back(), HasSubstr("not rendered"));
    EXPECT_LE(jobs.messages.size(), 41U);
}

} // namespace

} // namespace vornic
