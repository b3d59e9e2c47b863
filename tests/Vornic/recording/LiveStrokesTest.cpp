#include "Vornic/recording/LiveStrokes.h"

#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vornic {
namespace {

constexpr double rate = 44100;

LiveStrokes liveIn(const TypingNoise& typing) {
    return LiveStrokes::in(typing.samples(), rate, {});
}

TEST(LiveStrokes, hasNothingToSayBeforeTheFirstStroke) {
    EXPECT_EQ(LiveStrokes::in({}, rate, {}), LiveStrokes());
    EXPECT_EQ(liveIn(TypingNoise(1, rate, 1e-4F)), LiveStrokes());
}

TEST(LiveStrokes, countsAStrokeOnceItIsOver) {
    EXPECT_EQ(liveIn(TypingNoise(0.71, rate, 1e-4F).hit(0.5, 0.5F)), LiveStrokes());
    EXPECT_EQ(liveIn(TypingNoise(0.73, rate, 1e-4F).hit(0.5, 0.5F)),
              (LiveStrokes{1, StrokeVerdict::good}));
}

TEST(LiveStrokes, countsTheGoodOnesAndTellsOfTheLast) {
    TypingNoise typing(3, rate, 1e-4F);
    typing.hit(0.3, 0.5F).hit(0.8, 0.4F);
    EXPECT_EQ(liveIn(typing), (LiveStrokes{2, StrokeVerdict::good}));
    typing.hit(1.5, 1.05F);
    EXPECT_EQ(liveIn(typing), (LiveStrokes{2, StrokeVerdict::clipped}));
    typing.hit(2.0, 0.5F);
    EXPECT_EQ(liveIn(typing), (LiveStrokes{3, StrokeVerdict::good}));
}

TEST(LiveStrokes, tellsOfAStrokeThatRunsIntoTheNext) {
    const auto live = liveIn(TypingNoise(0.74, rate, 1e-4F).hit(0.5, 0.5F, 0.03).hit(0.56, 0.5F));
    EXPECT_EQ(live, (LiveStrokes{0, StrokeVerdict::tooClose}));
}

TEST(LiveStrokes, doesNotCountAStrokeWithAGap) {
    const TypingNoise typing = TypingNoise(3, rate, 1e-4F).hit(0.3, 0.5F).hit(1.0, 0.4F);
    EXPECT_EQ(LiveStrokes::in(typing.samples(), rate, std::vector<Gap>{{1.02, 0.003}}),
              (LiveStrokes{1, StrokeVerdict::torn}));
}

TEST(StrokeVerdict, followsWhatWouldBeOffered) {
    EXPECT_EQ(judge({{0.5F}, 0, 30, true}), StrokeVerdict::good);
    EXPECT_EQ(judge({{0.5F}, 0, 29.9, true}), StrokeVerdict::tooQuiet);
    EXPECT_EQ(judge({{-0.99F}, 0, 60, false}), StrokeVerdict::clipped);
    EXPECT_EQ(judge({{0.98F}, 0, 60, false}), StrokeVerdict::tooClose);
}

TEST(StrokeVerdict, saysWhatToDo) {
    EXPECT_EQ(std::string(label(StrokeVerdict::good)), "Good.");
    EXPECT_EQ(std::string(label(StrokeVerdict::tooQuiet)),
              "Too quiet: type closer to the microphone.");
    EXPECT_EQ(std::string(label(StrokeVerdict::clipped)),
              "Too loud: the microphone is overdriven. Move it away or turn it down.");
    EXPECT_EQ(std::string(label(StrokeVerdict::torn)),
              "Not whole: the computer was too busy. Press the key again.");
    EXPECT_EQ(std::string(label(StrokeVerdict::tooClose)),
              "Too close together: wait a little after each key.");
}

} // namespace
} // namespace vornic
