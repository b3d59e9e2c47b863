// Sound packs of other programs are looked at, heard and taken in like board files.

#include "tests/support/ModelFixture.h"
#include "tests/support/SmallPack.h"

#include <gmock/gmock.h>

#include <string>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;
using testing::SizeIs;

class PackFilesTest : public ModelFixture {
  protected:
    void SetUp() override {
        ASSERT_TRUE(startToPlay());
        writeSmallPack(scratch, "packs/one", "One");
    }

    std::size_t users() {
        return static_cast<std::size_t>(std::ranges::count_if(
            model->library().userSamples(), [](const SampleInfo& info) { return !info.builtIn; }));
    }
    bool comesToPlay(const std::string& name) {
        scheduler.advance(std::chrono::seconds(1));
        return eventually([&] { return model->playing() && model->playing()->name == name; });
    }
    bool add(const std::vector<std::size_t>& places) {
        return wellDone(
            [&](const BoardFiles::Done& done) { model->files().addPacks(places, done); });
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const Board& board : model->boards()) {
            all.push_back(board.name);
        }
        return all;
    }
};

TEST_F(PackFilesTest, keysPlayItItsReportIsThereAndNothingIsKept) {
    ASSERT_TRUE(previewBoard(scratch / "packs/one"));
    const BoardFiles::Preview* const preview = model->files().preview();
    ASSERT_NE(preview, nullptr);
    ASSERT_TRUE(preview->report);
    EXPECT_EQ(preview->report->keys, 1U);
    EXPECT_EQ(preview->report->releases, 1U);
    EXPECT_EQ(preview->report->licence, "");
    EXPECT_THAT(preview->report->notes.missing, Contains(HasSubstr("gone.wav")));
    EXPECT_TRUE(model->files().packs().empty());
    EXPECT_TRUE(comesToPlay("One"));
    EXPECT_EQ(model->boards().size(), 1U);
    model->files().drop();
    EXPECT_EQ(users(), 0U);
    EXPECT_TRUE(comesToPlay("Buckling Spring"));
}

TEST_F(PackFilesTest, keptItIsABoardOfTheUsersAlsoInTheNextRun) {
    ASSERT_TRUE(previewBoard(scratch / "packs/one"));
    ASSERT_TRUE(keepPreview());
    EXPECT_EQ(model->board()->name, "One");
    EXPECT_EQ(users(), 2U);
    restart();
    EXPECT_EQ(model->board()->name, "One");
    EXPECT_THAT(model->board()->credits, Contains("Licence: none stated"));
}

TEST_F(PackFilesTest, severalAreListedHeardOneByOneAndTakenInTogether) {
    writeSmallPack(scratch, "packs/two", "Two");
    writeSmallPack(scratch, "packs/three", "Three");
    scratch.write("packs/four.zip", "no archive");
    ASSERT_TRUE(previewBoard(scratch / "packs"));
    EXPECT_EQ(model->files().preview(), nullptr);
    ASSERT_THAT(model->files().packs(), SizeIs(4));
    EXPECT_NE(model->files().packs()[3].pack.error, "");
    // One, three, two: by the names of their folders.
    ASSERT_TRUE(wellDone([&](const BoardFiles::Done& done) { model->files().openPack(2, done); }));
    EXPECT_TRUE(comesToPlay("Two"));
    EXPECT_EQ(model->files().shownPack(), 2U);
    ASSERT_TRUE(wellDone([&](const BoardFiles::Done& done) { model->files().openPack(1, done); }));
    EXPECT_TRUE(comesToPlay("Three"));
    EXPECT_EQ(users(), 2U) << "those of the one before are gone";

    double most = 0;
    model->onChange = [&] {
        if (model->files().work() && model->files().work()->share) {
            EXPECT_GE(*model->files().work()->share, most);
            most = *model->files().work()->share;
        }
    };
    ASSERT_TRUE(add({0, 2}));
    EXPECT_GT(most, 0.5) << "and how far it is is told";
    EXPECT_THAT(names(), testing::UnorderedElementsAre("Buckling Spring", "One", "Two"));
    EXPECT_EQ(model->board()->name, "Two");
    EXPECT_TRUE(model->files().packs()[0].added);
    EXPECT_FALSE(model->files().packs()[1].added);
    EXPECT_EQ(users(), 4U);
    model->onChange = [] {};
    model->files().drop();
    EXPECT_TRUE(model->files().packs().empty());
}

TEST_F(PackFilesTest, takingInCanBeCancelledAndWhatIsKeptStays) {
    for (int pack = 0; pack < 6; ++pack) {
        writeSmallPack(scratch, "many/" + std::to_string(pack), "P" + std::to_string(pack));
    }
    ASSERT_TRUE(previewBoard(scratch / "many"));
    std::optional<std::string> said;
    model->files().addPacks({0, 1, 2, 3, 4, 5}, [&](const std::string& text) { said = text; });
    EXPECT_TRUE(eventually([&] {
        if (model->files().packs()[1].added) {
            model->files().cancel();
        }
        return said.has_value();
    }));
    EXPECT_FALSE(model->files().work());
    const auto kept = static_cast<std::size_t>(
        std::ranges::count(model->files().packs(), true, &BoardFiles::Listed::added));
    EXPECT_GE(kept, 2U);
    EXPECT_LT(kept, 6U);
    EXPECT_EQ(model->boards().size(), 1 + kept) << "all of them and no other";
    EXPECT_EQ(users(), 2 * kept);
}

TEST_F(PackFilesTest, onePackThatCannotBeReadKeepsNoOtherOut) {
    writeSmallPack(scratch, "packs/two", "Two");
    ASSERT_TRUE(previewBoard(scratch / "packs"));
    ASSERT_THAT(model->files().packs(), SizeIs(2));
    fs::remove(scratch / "packs/one/30.wav");
    fs::remove(scratch / "packs/one/30-up.wav");
    ASSERT_TRUE(add({0, 1}));
    EXPECT_NE(model->files().packs()[0].pack.error, "");
    EXPECT_EQ(model->board()->name, "Two");
    EXPECT_EQ(model->boards().size(), 2U);
}

TEST_F(PackFilesTest, whatIsNoPackIsSaidAndChangesNothing) {
    EXPECT_FALSE(previewBoard(scratch.write("pictures/a.png", "x").parent_path()));
    EXPECT_EQ(model->lastError(), "It is no sound pack that Vornic knows.");
    EXPECT_EQ(model->files().preview(), nullptr);
}

TEST_F(PackFilesTest, oneThatNoBoardFileHoldsIsKeptButNotExported) {
    // 2,100 recordings in a tenth of a second each: more than a board file may bring.
    std::vector<float> all(std::size_t{2100} * 960);
    for (std::size_t place = 0; place < 2100; ++place) {
        for (std::size_t at = 24; at < 900; ++at) {
            all[place * 960 + at] = 0.4F * std::sin(static_cast<float>(at) *
                                                    (0.1F + 0.0003F * static_cast<float>(place)));
        }
    }
    scratch.write("large/board.sfz", [] {
        std::string text = "<global> sample=all.wav\n";
        for (int place = 0; place < 2100; ++place) {
            text += "<region> key=" + std::to_string(30 + place / 40) + " seq_length=40" +
                    " seq_position=" + std::to_string(place % 40 + 1) +
                    " offset=" + std::to_string(place * 960) +
                    " end=" + std::to_string(place * 960 + 959) + "\n";
        }
        return text;
    }());
    writeWAV(all, scratch / "large/all.wav");
    ASSERT_TRUE(previewBoard(scratch / "large"));
    ASSERT_TRUE(model->files().preview()->report);
    EXPECT_GT(model->files().preview()->report->recordings, 2000U);
    EXPECT_FALSE(model->files().preview()->report->fitsFile);
    ASSERT_TRUE(keepPreview());
    EXPECT_EQ(model->board()->name, "board");
    EXPECT_FALSE(exportBoard(scratch / "large.vornic"));
    EXPECT_THAT(model->lastError().value_or(""), HasSubstr("samples: more than 2000"));
    EXPECT_FALSE(fs::exists(scratch / "large.vornic"));
}

} // namespace
} // namespace vornic
