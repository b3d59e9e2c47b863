#include "Vornic/sound/BoardPlayer.h"

#include "VornicCore/dsp/EQPreset.h"
#include "VornicCore/render/BoardLoudness.h"
#include "tests/VornicCore/render/MapSource.h"
#include "tests/VornicCore/render/NoiseStroke.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <vector>

namespace vornic {
namespace {

using namespace std::chrono_literals;

Board named(const std::string& name) {
    Board board;
    board.name = name;
    return board;
}

/// A player whose banks say which board they were made of.
class BoardPlayerTest : public ::testing::Test {
  protected:
    BoardPlayerTest() {
        player.onPlay = [this](const PlayedBoard& played) {
            EXPECT_FALSE(played.bank->pool(played.rendered->name).empty())
                << "the bank is that of the rendered board";
            playing = played.board->name;
            sounds = played.rendered->name;
            gain = played.gain;
            ++plays;
        };
    }

    static RenderedBoard make(const Board& board) {
        auto bank = std::make_shared<VoiceBank>();
        bank->add(board.name, {std::vector<float>(4, 0.5F)});
        return {std::move(bank), {}};
    }

    bool eventually(const std::function<bool()>& condition) {
        return waitFor([&] {
            scheduler.run();
            return condition();
        });
    }
    bool comesToPlay(const std::string& name) {
        scheduler.advance(1000ms);
        return eventually([&] { return playing == name && sounds == name; });
    }

    ManualClock clock;
    ManualScheduler scheduler;
    std::atomic<int> builds{0};
    std::string playing;
    std::string sounds;
    double gain = 0.0;
    int plays = 0;
    BoardPlayer player{clock, scheduler, std::make_shared<MapSource>(MapSource::Recordings()),
                       [this](const Board& board, const SampleSource&) {
                           ++builds;
                           return make(board);
                       }};
};

TEST_F(BoardPlayerTest, playsABoardOnceItIsRendered) {
    player.choose(named("a"));
    EXPECT_EQ(playing, "");
    EXPECT_FALSE(player.lastRenderSeconds());
    ASSERT_TRUE(comesToPlay("a"));
    EXPECT_TRUE(player.lastRenderSeconds());
}

TEST_F(BoardPlayerTest, theReferenceComesBackAtOnceWithoutARender) {
    player.setReference(named("start"));
    player.choose(named("start"));
    ASSERT_TRUE(comesToPlay("start"));
    player.edit(named("edited"), 150ms);
    ASSERT_TRUE(comesToPlay("edited"));
    const int before = builds;
    for (int times = 0; times < 3; ++times) {
        player.compare(true);
        EXPECT_EQ(playing, "start");
        player.compare(false);
        EXPECT_EQ(playing, "edited");
    }
    EXPECT_EQ(builds, before);
    EXPECT_EQ(builds, 2);
}

TEST_F(BoardPlayerTest, aBoardThatIsTriedOutPlaysUntilTheTrialEnds) {
    player.setReference(named("start"));
    player.choose(named("start"));
    ASSERT_TRUE(comesToPlay("start"));
    player.tryOut(named("guest"));
    EXPECT_EQ(playing, "start") << "until it is rendered";
    ASSERT_TRUE(comesToPlay("guest"));
    player.compare(true);
    EXPECT_EQ(playing, "guest");
    player.edit(named("edited"), 0ms);
    scheduler.advance(0ms);
    ASSERT_TRUE(eventually([&] { return builds == 3; }));
    player.compare(false);
    EXPECT_EQ(playing, "guest");
    player.endTrial();
    EXPECT_TRUE(comesToPlay("edited"));
}

TEST_F(BoardPlayerTest, aTrialThatEndsBeforeItIsRenderedNeverPlays) {
    player.choose(named("start"));
    ASSERT_TRUE(comesToPlay("start"));
    player.tryOut(named("guest"));
    player.endTrial();
    scheduler.advance(1000ms);
    player.choose(named("next"));
    EXPECT_TRUE(comesToPlay("next"));
    EXPECT_EQ(playing, "next");
}

TEST_F(BoardPlayerTest, anEditThatOvertakesTheFirstRenderDoesNotCostTheReference) {
    player.setReference(named("start"));
    player.choose(named("start"));
    player.edit(named("edited"), 0ms);
    ASSERT_TRUE(comesToPlay("edited"));
    ASSERT_TRUE(eventually([&] { return builds >= 2; }));
    player.compare(true);
    EXPECT_TRUE(comesToPlay("start"));
    player.compare(false);
    EXPECT_EQ(playing, "edited");
}

TEST_F(BoardPlayerTest, anEditIsHeardAtOnceWithTheSoundsThereAre) {
    player.choose(named("start"));
    ASSERT_TRUE(comesToPlay("start"));
    player.edit(named("edited"), 150ms);
    EXPECT_EQ(playing, "edited");
    EXPECT_EQ(sounds, "start");
    EXPECT_TRUE(player.rendering());
    player.edit(named("edited again"), 150ms);
    EXPECT_EQ(playing, "edited again");
    EXPECT_EQ(sounds, "start");
    ASSERT_TRUE(comesToPlay("edited again"));
    EXPECT_EQ(builds, 2);
}

TEST_F(BoardPlayerTest, aBoardChosenAnewIsHeardOnceItIsRendered) {
    player.choose(named("start"));
    ASSERT_TRUE(comesToPlay("start"));
    player.choose(named("next"));
    EXPECT_EQ(playing, "start");
    // It is not played from the sounds of another board because it was edited either.
    player.edit(named("edited"), 150ms);
    EXPECT_EQ(playing, "start");
    ASSERT_TRUE(comesToPlay("edited"));
    player.edit(named("edited again"), 150ms);
    EXPECT_EQ(playing, "edited again");
}

TEST_F(BoardPlayerTest, anEditBeforeAnythingIsRenderedWaitsForIt) {
    player.edit(named("edited"), 150ms);
    EXPECT_EQ(plays, 0);
    EXPECT_TRUE(comesToPlay("edited"));
}

TEST_F(BoardPlayerTest, aRenderThatEndsWhileComparingWaitsItsTurn) {
    player.setReference(named("start"));
    player.choose(named("start"));
    ASSERT_TRUE(comesToPlay("start"));
    player.edit(named("edited"), 150ms);
    player.compare(true);
    scheduler.advance(150ms);
    ASSERT_TRUE(eventually([&] { return builds == 2 && !player.rendering(); }));
    EXPECT_EQ(playing, "start");
    player.compare(false);
    EXPECT_EQ(playing, "edited");
    EXPECT_EQ(sounds, "edited");
}

TEST_F(BoardPlayerTest, anotherReferenceEndsTheComparison) {
    player.setReference(named("start"));
    player.choose(named("start"));
    ASSERT_TRUE(comesToPlay("start"));
    player.compare(true);
    player.setReference(named("other"));
    EXPECT_FALSE(player.comparing());
}

TEST_F(BoardPlayerTest, withoutAReferenceThereIsNothingToCompareWith) {
    player.compare(true);
    EXPECT_FALSE(player.comparing());
}

/// Two versions of a board: what the parts of its sound do to its loudness is to be evened out.
class ComparedLoudnessTest : public ::testing::Test {
  protected:
    ComparedLoudnessTest() {
        player.onPlay = [this](const PlayedBoard& played) {
            playing = played.board->name;
            rendered = played.rendered == played.board;
            gain = played.gain;
            measured = boardLoudness(*played.board, *played.bank).value_or(-100.0) +
                       20.0 * std::log10(played.gain);
        };
    }

    static Board boardOf(const std::string& name, const Equalizer& eq, double groupDb) {
        StrokeSpec stroke({LayerSpec(LayerPart::bottomOut, {"a"}, 0, 0, 0)});
        stroke.chain.eq = eq;
        SoundSpec sound("s", "S", "#000000", stroke, std::nullopt, {}, {});
        sound.variations = 3;
        Board board(name, name, "", "#000000", {}, {sound}, {});
        for (const KeyGroup group : allCases<KeyGroup>()) {
            board.groups[group].gainDb = groupDb;
        }
        return board;
    }
    /// The loudness at which `board` plays.
    double playedLoudness(const Board& board, bool comparing) {
        player.compare(comparing);
        EXPECT_TRUE(waitFor([&] {
            scheduler.advance(1000ms);
            scheduler.run();
            return playing == board.name && rendered;
        }));
        return measured;
    }

    ManualClock clock;
    ManualScheduler scheduler;
    std::string playing;
    bool rendered = false;
    double gain = 0.0;
    double measured = 0.0;
    BoardPlayer player{clock, scheduler,
                       std::make_shared<MapSource>(MapSource::Recordings{{"a", noiseStroke(1)}})};
};

TEST_F(ComparedLoudnessTest, bothVersionsAreEquallyLoudWithinHalfADecibel) {
    for (const EQPreset& preset : EQPreset::all()) {
        const Board start = boardOf("start", Equalizer::flat(), 0);
        const Board edited = boardOf("edited " + std::string(preset.id), preset.eq, -4);
        player.setReference(start);
        player.choose(start);
        playedLoudness(start, false);
        player.edit(edited, 0ms);
        const double now = playedLoudness(edited, false);
        EXPECT_EQ(gain, 1.0) << "what is edited plays as it is";
        EXPECT_NEAR(playedLoudness(start, true), now, 0.5) << preset.id;
        EXPECT_LT(gain, 0.8) << "the group's 4 dB alone are more";
    }
}

TEST_F(ComparedLoudnessTest, aVersionThatIsNoneAnyMoreIsNotMadeUnbearable) {
    const Board start = boardOf("start", Equalizer::flat(), -60);
    const Board edited = boardOf("edited", Equalizer::flat(), 0);
    player.setReference(start);
    player.choose(start);
    playedLoudness(start, false);
    player.edit(edited, 0ms);
    playedLoudness(edited, false);
    playedLoudness(start, true);
    EXPECT_NEAR(20.0 * std::log10(gain), 12.0, 1e-9);
}

} // namespace
} // namespace vornic
