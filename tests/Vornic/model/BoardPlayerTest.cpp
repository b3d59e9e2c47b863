#include "Vornic/model/BoardPlayer.h"

#include "tests/VornicCore/render/MapSource.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>
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
        player.onPlay = [this](const std::shared_ptr<const Board>& board,
                               const std::shared_ptr<const VoiceBank>& bank) {
            EXPECT_FALSE(bank->pool(board->name).empty()) << "board and bank belong together";
            playing = board->name;
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
        return eventually([&] { return playing == name; });
    }

    ManualClock clock;
    ManualScheduler scheduler;
    std::atomic<int> builds{0};
    std::string playing;
    int plays = 0;
    BoardPlayer player{clock, scheduler, std::make_shared<MapSource>(MapSource::Recordings()),
                       [this](const Board& board, const SampleSource&) {
                           ++builds;
                           return make(board);
                       }};
};

TEST_F(BoardPlayerTest, playsABoardOnceItIsRendered) {
    player.render(named("a"), 0ms);
    EXPECT_EQ(playing, "");
    EXPECT_FALSE(player.lastRenderSeconds());
    ASSERT_TRUE(comesToPlay("a"));
    EXPECT_TRUE(player.lastRenderSeconds());
}

TEST_F(BoardPlayerTest, theReferenceComesBackAtOnceWithoutARender) {
    player.setReference(named("start"));
    player.render(named("start"), 0ms);
    ASSERT_TRUE(comesToPlay("start"));
    player.render(named("edited"), 150ms);
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
    player.render(named("start"), 0ms);
    ASSERT_TRUE(comesToPlay("start"));
    player.tryOut(named("guest"));
    EXPECT_EQ(playing, "start") << "until it is rendered";
    ASSERT_TRUE(comesToPlay("guest"));
    player.compare(true);
    EXPECT_EQ(playing, "guest");
    player.render(named("edited"), 0ms);
    scheduler.advance(0ms);
    ASSERT_TRUE(eventually([&] { return builds == 3; }));
    player.compare(false);
    EXPECT_EQ(playing, "guest");
    player.endTrial();
    EXPECT_TRUE(comesToPlay("edited"));
}

TEST_F(BoardPlayerTest, aTrialThatEndsBeforeItIsRenderedNeverPlays) {
    player.render(named("start"), 0ms);
    ASSERT_TRUE(comesToPlay("start"));
    player.tryOut(named("guest"));
    player.endTrial();
    scheduler.advance(1000ms);
    player.render(named("next"), 0ms);
    EXPECT_TRUE(comesToPlay("next"));
    EXPECT_EQ(playing, "next");
}

TEST_F(BoardPlayerTest, anEditThatOvertakesTheFirstRenderDoesNotCostTheReference) {
    player.setReference(named("start"));
    player.render(named("start"), 0ms);
    player.render(named("edited"), 0ms);
    ASSERT_TRUE(comesToPlay("edited"));
    ASSERT_TRUE(eventually([&] { return builds >= 2; }));
    player.compare(true);
    EXPECT_TRUE(comesToPlay("start"));
    player.compare(false);
    EXPECT_EQ(playing, "edited");
}

TEST_F(BoardPlayerTest, aRenderThatEndsWhileComparingWaitsItsTurn) {
    player.setReference(named("start"));
    player.render(named("start"), 0ms);
    ASSERT_TRUE(comesToPlay("start"));
    player.render(named("edited"), 150ms);
    player.compare(true);
    scheduler.advance(150ms);
    ASSERT_TRUE(eventually([&] { return builds == 2 && plays >= 3; }));
    EXPECT_EQ(playing, "start");
    player.compare(false);
    EXPECT_EQ(playing, "edited");
}

TEST_F(BoardPlayerTest, anotherReferenceEndsTheComparison) {
    player.setReference(named("start"));
    player.render(named("start"), 0ms);
    ASSERT_TRUE(comesToPlay("start"));
    player.compare(true);
    player.setReference(named("other"));
    EXPECT_FALSE(player.comparing());
}

TEST_F(BoardPlayerTest, withoutAReferenceThereIsNothingToCompareWith) {
    player.compare(true);
    EXPECT_FALSE(player.comparing());
}

} // namespace
} // namespace vornic
