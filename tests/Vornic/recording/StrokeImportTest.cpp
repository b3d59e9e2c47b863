#include "Vornic/recording/StrokeImport.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/strokes/Slicer.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vornic {
namespace {

TypingNoise threeStrokes() {
    TypingNoise typing(2, 48000, 1e-4F);
    typing.hit(0.3, 0.2F).hit(0.8, 0.8F).hit(1.4, 0.4F);
    return typing;
}

class StrokeImportTest : public testing::Test {
  protected:
    /// Cuts a recording and opens a session, or says why there is none.
    static std::string open(StrokeImport& import, std::span<const float> samples,
                            const std::string& name) {
        SessionOutcome outcome = makeSession(samples, name);
        if (outcome.session && outcome.cuts) {
            import.startSession(*std::move(outcome.session), *std::move(outcome.cuts));
        }
        return outcome.error;
    }
    std::filesystem::path samples() const { return folder_ / "Samples"; }

    ScratchFolder folder_;
    SampleLibrary library_{{}, samples()};
    StrokeImport import_{library_};
};

TEST_F(StrokeImportTest, offersTheBestStrokesFirstAndAllTicked) {
    EXPECT_EQ(open(import_, threeStrokes().samples(), "My keyboard"), "");
    const ImportSession session = required(import_.session());
    EXPECT_EQ(session.name, "My keyboard");
    EXPECT_EQ(session.foundTotal, 3);
    EXPECT_EQ(session.selected, (std::set<std::size_t>{0, 1, 2}));
    EXPECT_EQ(session.strokes,
              Slicer::best(Slicer::strokes(threeStrokes().samples(), 48000), 16, 30));
    EXPECT_NE(session.id, Uuid());
}

TEST_F(StrokeImportTest, offersSixteenAtMost) {
    TypingNoise typing(10, 48000, 1e-4F);
    for (int i = 0; i < 20; ++i) {
        typing.hit(0.2 + 0.45 * i, 0.5F);
    }
    EXPECT_EQ(open(import_, typing.samples(), "x"), "");
    EXPECT_EQ(required(import_.session()).strokes.size(), 16U);
    EXPECT_EQ(required(import_.session()).foundTotal, 20);
}

TEST_F(StrokeImportTest, saysWhenThereIsNoKeystroke) {
    EXPECT_EQ(open(import_, std::vector<float>(48000), "x"),
              "No keystrokes found. Press keys one at a time, a little apart.");
    EXPECT_EQ(import_.session(), std::nullopt);
}

TEST_F(StrokeImportTest, saysWhenNoKeystrokeIsGoodEnough) {
    EXPECT_EQ(open(import_, TypingNoise(1, 48000, 1e-3F).hit(0.96, 0.3F).samples(), "x"),
              "The keystrokes were too quiet or too close together. Try again nearer the mic, one "
              "key at a time.");
    EXPECT_EQ(import_.session(), std::nullopt);
}

TEST_F(StrokeImportTest, keepsWhatIsTickedUnderTheStrokesNumbers) {
    EXPECT_EQ(open(import_, threeStrokes().samples(), "My keyboard"), "");
    const ImportSession session = required(import_.session());
    import_.select(1, false);
    import_.select(0, false);
    import_.select(0, true);
    import_.select(7, true);
    const FinishedImport finished = required(import_.finishImport());
    EXPECT_EQ(finished.name, "My keyboard");
    EXPECT_EQ(finished.warning, "");
    ASSERT_EQ(finished.samples.size(), 2U);
    EXPECT_EQ(finished.samples[0].name, "My keyboard 1");
    EXPECT_EQ(finished.samples[1].name, "My keyboard 3");
    EXPECT_NE(finished.samples[0].id, finished.samples[1].id);
    for (std::size_t i = 0; i < 2; ++i) {
        const SampleInfo& info = finished.samples[i];
        EXPECT_TRUE(info.id.starts_with("user/"));
        EXPECT_EQ(info.part, LayerPart::bottomOut);
        EXPECT_EQ(info.source, "Yours");
        EXPECT_EQ(library_.samples(info.id), Slicer::finish(session.strokes[i * 2].samples));
    }
    EXPECT_EQ(import_.session(), std::nullopt);
    EXPECT_EQ(SampleLibrary({}, samples()).userSamples(), finished.samples);
}

TEST_F(StrokeImportTest, addsNothingWhenEveryStrokeIsUnticked) {
    EXPECT_EQ(open(import_, threeStrokes().samples(), "x"), "");
    for (std::size_t i = 0; i < 3; ++i) {
        import_.select(i, false);
    }
    const FinishedImport finished = required(import_.finishImport());
    EXPECT_TRUE(finished.samples.empty());
    EXPECT_EQ(finished.warning, "");
    EXPECT_EQ(library_.count(), 0U);
    EXPECT_EQ(import_.session(), std::nullopt);
}

TEST_F(StrokeImportTest, keepsAStrokeAsItsCutWasMoved) {
    EXPECT_EQ(open(import_, threeStrokes().samples(), "x"), "");
    const std::vector<float> before = required(import_.session()).strokes[1].samples;
    const StrokeCuts::Range cut = required(import_.cuts()).cut(1);
    import_.moveBegin(1, cut.begin - 100);
    import_.moveEnd(1, cut.end - 5000);
    import_.moveEnd(7, 0);
    const std::vector<float> moved = required(import_.session()).strokes[1].samples;
    ASSERT_EQ(moved.size(), before.size() - 4900);
    EXPECT_EQ(moved[100], before[0]);
    const FinishedImport finished = required(import_.finishImport());
    EXPECT_EQ(library_.samples(finished.samples[1].id), Slicer::finish(moved));
    EXPECT_EQ(import_.cuts(), std::nullopt);
}

TEST_F(StrokeImportTest, bringsBackACutThatWasMoved) {
    EXPECT_EQ(open(import_, threeStrokes().samples(), "x"), "");
    const ImportSession session = required(import_.session());
    import_.moveEnd(1, required(import_.cuts()).cut(1).end - 5000);
    EXPECT_NE(import_.session(), session);
    import_.resetCut(1);
    EXPECT_EQ(import_.session(), session);
}

TEST_F(StrokeImportTest, keepsReleasesOnlyWhenAskedTo) {
    const TypingNoise typing =
        TypingNoise(2, 48000, 1e-4F).hit(0.3, 0.2F).hit(0.42, 0.05F).hit(0.8, 0.8F);
    EXPECT_EQ(open(import_, typing.samples(), "x"), "");
    EXPECT_TRUE(required(import_.finishImport()).releases.empty());
    EXPECT_EQ(open(import_, typing.samples(), "x"), "");
    import_.setKeepsReleases(true);
    const FinishedImport finished = required(import_.finishImport());
    ASSERT_EQ(finished.samples.size(), 2U);
    ASSERT_EQ(finished.releases.size(), 1U);
    EXPECT_EQ(finished.releases[0].name, "x 2 release");
    const auto press = required(library_.samples(finished.samples[1].id));
    const auto release = required(library_.samples(finished.releases[0].id));
    // Still 12 dB below its press.
    EXPECT_NEAR(DSP::peak(release) / DSP::peak(press), 0.25, 0.01);
    EXPECT_EQ(open(import_, typing.samples(), "x"), "");
    EXPECT_FALSE(import_.keepsReleases());
}

TEST_F(StrokeImportTest, whatIsHeardBeforehandIsWhatIsKept) {
    const TypingNoise typing =
        TypingNoise(2, 48000, 1e-4F).hit(0.3, 0.2F).hit(0.42, 0.05F).hit(0.8, 0.8F);
    EXPECT_EQ(open(import_, typing.samples(), "x"), "");
    const std::vector<float> alone = import_.audition(1);
    import_.setKeepsReleases(true);
    const std::vector<float> both = import_.audition(1);
    EXPECT_TRUE(import_.audition(7).empty());
    const std::int64_t pause =
        required(required(import_.cuts()).release(1)).begin - required(import_.cuts()).cut(1).begin;
    const FinishedImport finished = required(import_.finishImport());
    const auto press = required(library_.samples(finished.samples[1].id));
    const auto release = required(library_.samples(finished.releases[0].id));
    EXPECT_EQ(alone, press);
    std::vector<float> expected = press;
    expected.resize(std::max(press.size(), static_cast<std::size_t>(pause) + release.size()));
    for (std::size_t place = 0; place < release.size(); ++place) {
        expected[static_cast<std::size_t>(pause) + place] += release[place];
    }
    EXPECT_EQ(both, expected);
    EXPECT_TRUE(import_.audition(0).empty()) << "the session has ended";
}

TEST_F(StrokeImportTest, doesNothingWithoutASession) {
    import_.moveBegin(0, 0);
    import_.moveEnd(0, 0);
    import_.resetCut(0);

    EXPECT_EQ(import_.finishImport(), std::nullopt);
    import_.select(0, true);
    import_.cancelImport();
    EXPECT_EQ(open(import_, threeStrokes().samples(), "x"), "");
    import_.cancelImport();
    EXPECT_EQ(import_.session(), std::nullopt);
    EXPECT_EQ(import_.finishImport(), std::nullopt);
    EXPECT_EQ(library_.count(), 0U);
}

TEST_F(StrokeImportTest, keepsTheSoundForThisRunWhenItCannotBeSaved) {
    // A file where the folder should be.
    const SampleLibrary::Report ignore = [](const std::string&) {};
    SampleLibrary library({}, folder_.write("file", "") / "Samples", ignore);
    StrokeImport import(library);
    EXPECT_EQ(open(import, threeStrokes().samples(), "x"), "");
    const FinishedImport finished = required(import.finishImport());
    ASSERT_EQ(finished.samples.size(), 3U);
    EXPECT_EQ(finished.warning, "Couldn't save the sound \"x\"; it is lost when Vornic ends.");
    EXPECT_TRUE(library.samples(finished.samples[0].id));
}

} // namespace
} // namespace vornic
