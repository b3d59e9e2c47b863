#include "VornicCore/strokes/StrokeCuts.h"

#include "VornicCore/strokes/Slicer.h"
#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vornic {
namespace {

using Range = StrokeCuts::Range;

constexpr double rate = 48000;

class StrokeCutsTest : public testing::Test {
  protected:
    /// Two strokes, the second of which is the better.
    std::vector<float> recording_ =
        TypingNoise(2, rate, 1e-4F).hit(0.5, 0.25F).hit(1.0, 0.5F).samples();
    std::vector<Stroke> strokes_ = Slicer::best(Slicer::strokes(recording_, rate), 16, 30);
    StrokeCuts cuts_{recording_, rate, strokes_};
};

TEST_F(StrokeCutsTest, beginWhereTheSlicerHasCut) {
    ASSERT_EQ(cuts_.count(), 2U);
    EXPECT_EQ(cuts_.onset(0), 48000);
    EXPECT_EQ(cuts_.onset(1), 24000);
    EXPECT_EQ(cuts_.cut(0), (Range{48000 - 144, 48000 + 10560}));
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(cuts_.samples(i), strokes_[i].samples);
    }
}

TEST_F(StrokeCutsTest, moveAndCanBeReset) {
    EXPECT_EQ(cuts_.moveBegin(0, 47000), 47000);
    EXPECT_EQ(cuts_.moveEnd(0, 50000), 50000);
    EXPECT_EQ(cuts_.samples(0).size(), 3000U);
    EXPECT_EQ(cuts_.samples(0)[1000 - 144], strokes_[0].samples[0]);
    EXPECT_EQ(cuts_.samples(1), strokes_[1].samples);
    cuts_.reset(0);
    EXPECT_EQ(cuts_.samples(0), strokes_[0].samples);
}

TEST_F(StrokeCutsTest, keepTheOnsetInsideAndTheirLengthWithinLimits) {
    EXPECT_EQ(cuts_.moveBegin(0, 48001), 48000) << "not past the onset";
    EXPECT_EQ(cuts_.moveEnd(0, 0), 48000 + 1440) << "30 ms at least";
    EXPECT_EQ(cuts_.moveBegin(0, 0), 48000 + 1440 - 48000) << "a second at most";
    EXPECT_EQ(cuts_.moveEnd(0, 10), 48001);
    EXPECT_EQ(cuts_.moveEnd(0, 1'000'000), 1440 + 48000);
    EXPECT_EQ(cuts_.moveBegin(0, 48000), 48000);
    EXPECT_EQ(cuts_.moveEnd(0, 1'000'000), 96000) << "not past the recording";
    cuts_.reset(1);
    EXPECT_EQ(cuts_.moveBegin(1, -5), 0);
}

TEST_F(StrokeCutsTest, stayPossibleAtTheEdgesOfTheRecording) {
    const std::vector<float> shortOne =
        TypingNoise(0.055, rate, 1e-4F).hit(0.001, 0.5F, 0.01).samples();
    const auto strokes = Slicer::strokes(shortOne, rate);
    ASSERT_EQ(strokes.size(), 1U);
    StrokeCuts cuts(shortOne, rate, strokes);
    for (const std::int64_t place : {-100, 0, 40, 2000, 3000}) {
        cuts.moveBegin(0, place);
        cuts.moveEnd(0, place);
        EXPECT_GE(cuts.cut(0).begin, 0);
        EXPECT_LE(cuts.cut(0).begin, cuts.onset(0));
        EXPECT_GE(cuts.cut(0).end - cuts.cut(0).begin, 1440);
        EXPECT_LE(cuts.cut(0).end, 2640);
    }
}

TEST_F(StrokeCutsTest, areDrawnAsTheExtremesOfEachColumn) {
    const auto columns = cuts_.waveform(cuts_.cut(0), 100);
    ASSERT_EQ(columns.size(), 100U);
    float highest = 0;
    float lowest = 0;
    for (const auto& column : columns) {
        EXPECT_LE(column.lowest, 0.0F);
        EXPECT_GE(column.highest, 0.0F);
        highest = std::max(highest, column.highest);
        lowest = std::min(lowest, column.lowest);
    }
    EXPECT_EQ(highest, *std::ranges::max_element(strokes_[0].samples));
    EXPECT_EQ(lowest, *std::ranges::min_element(strokes_[0].samples));
    EXPECT_LT(columns.back().highest, 1e-3F);
}

TEST_F(StrokeCutsTest, areDrawnWhereverThePartLies) {
    EXPECT_TRUE(cuts_.waveform({0, 100}, 0).empty());
    EXPECT_EQ(cuts_.waveform({-100, 0}, 2), std::vector<StrokeCuts::Column>(2));
    EXPECT_EQ(cuts_.waveform({96000, 97000}, 2), std::vector<StrokeCuts::Column>(2));
    // More columns than samples: each shows the sample that it lies in.
    const auto narrow = cuts_.waveform({48000, 48002}, 4);
    EXPECT_GT(narrow[0].highest, 0.4F);
    const std::vector<float> samples = cuts_.samples(0);
    for (std::size_t column = 0; column < narrow.size(); ++column) {
        const float sample = samples[144 + column / 2];
        EXPECT_EQ(narrow[column].highest, std::max(sample, 0.0F)) << column;
        EXPECT_EQ(narrow[column].lowest, std::min(sample, 0.0F)) << column;
    }
}

TEST(StrokeCuts, pairAPressWithTheReleaseThatFollows) {
    TypingNoise typing(3, rate, 1e-4F);
    typing.hit(0.5, 0.5F).hit(0.6, 0.1F);  // within what the slicer takes for an echo
    typing.hit(1.5, 0.5F).hit(1.8, 0.1F);  // a stroke to the slicer
    typing.hit(2.5, 0.5F).hit(2.52, 0.1F); // a bounce
    const auto strokes = Slicer::strokes(typing.samples(), rate);
    ASSERT_EQ(strokes.size(), 4U);
    const StrokeCuts cuts(typing.samples(), rate, strokes);
    EXPECT_EQ(cuts.release(0), (Range{28800 - 144, 28800 + 10560}));
    EXPECT_EQ(cuts.release(1), (Range{86400 - 144, 86400 + 10560}));
    EXPECT_EQ(cuts.release(2), std::nullopt) << "itself a release";
    EXPECT_EQ(cuts.release(3), std::nullopt);
    EXPECT_EQ(cuts.samples(Range{28800 - 144, 28800 + 10560}).size(), 10704U);
}

TEST(StrokeCuts, takeNoOtherKeyForARelease) {
    TypingNoise typing(4, rate, 1e-4F);
    typing.hit(0.5, 0.5F).hit(0.7, 0.4F);                       // as loud
    typing.hit(1.5, 0.5F).hit(1.95, 0.1F);                      // too late
    typing.hit(3.0, 0.5F).hit(3.2, 0.1F, 0.02).hit(3.23, 0.5F); // no room of its own
    const auto strokes = Slicer::strokes(typing.samples(), rate);
    const StrokeCuts cuts(typing.samples(), rate, strokes);
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        EXPECT_EQ(cuts.release(i), std::nullopt) << strokes[i].start;
    }
}

TEST(StrokeCuts, areNoneWithoutStrokesOrARate) {
    const std::vector<float> samples(1000);
    EXPECT_EQ(StrokeCuts(samples, rate, {}).count(), 0U);
    EXPECT_EQ(StrokeCuts({}, rate, {}).count(), 0U);
    const std::vector<Stroke> strokes{{{0.5F}, 0, 40, true}};
    EXPECT_EQ(StrokeCuts(samples, 0, strokes).count(), 0U);
}

} // namespace
} // namespace vornic
