// A board file is looked at and heard before anything of it is kept.

#include "Vornic/app/Control.h"
#include "tests/support/ModelFixture.h"

#include <string>

namespace vornic {
namespace {

class BoardPreviewTest : public ModelFixture {
  protected:
    void SetUp() override {
        ASSERT_TRUE(startToPlay());
        const SampleInfo mine = model->library().addUser(
            "Knock", LayerPart::bottomOut, std::nullopt, std::vector<float>(4800, 0.25F));
        model->edit([&](Board& board) {
            board.name = "From a friend";
            board.sounds.front().press.layers.front().samples = {mine.id};
        });
        ASSERT_TRUE(exportBoard(file));
        model->deleteBoard();
        model->library().removeUser(mine.id);
        ASSERT_EQ(model->board()->id, "spring");
        ASSERT_EQ(model->boards().size(), 1U);
        ASSERT_EQ(users(), 0U);
    }

    std::size_t users() {
        return static_cast<std::size_t>(std::ranges::count_if(
            model->library().userSamples(), [](const SampleInfo& info) { return !info.builtIn; }));
    }
    bool comesToPlay(const std::string& name) {
        scheduler.advance(std::chrono::seconds(1));
        return eventually([&] { return model->playing() && model->playing()->name == name; });
    }

    std::filesystem::path file = scratch / "sent.vornic";
};

TEST_F(BoardPreviewTest, keysPlayItAndNothingIsKept) {
    ASSERT_TRUE(previewBoard(file));
    ASSERT_NE(model->files().preview(), nullptr);
    EXPECT_EQ(model->files().preview()->opened.board.name, "From a friend");
    EXPECT_EQ(model->files().preview()->opened.samples.size(), 1U);
    EXPECT_TRUE(comesToPlay("From a friend"));
    EXPECT_EQ(model->board()->id, "spring") << "the user's choice stands";
    EXPECT_EQ(model->boards().size(), 1U);

    model->files().drop();
    EXPECT_EQ(model->files().preview(), nullptr);
    EXPECT_TRUE(comesToPlay("Buckling Spring"));
    EXPECT_EQ(users(), 0U) << "its recordings leave with it";
    EXPECT_TRUE(std::filesystem::is_empty(scratch / "data/Boards"));
}

TEST_F(BoardPreviewTest, keptItIsTheUsersAndCurrent) {
    ASSERT_TRUE(previewBoard(file));
    ASSERT_TRUE(keepPreview());
    EXPECT_EQ(model->files().preview(), nullptr);
    EXPECT_EQ(model->board()->name, "From a friend");
    EXPECT_FALSE(model->board()->builtIn);
    EXPECT_EQ(model->boards().size(), 2U);
    EXPECT_EQ(users(), 1U);
    const std::string& sample = model->board()->sounds.front().press.layers.front().samples.front();
    EXPECT_TRUE(model->library().samples(sample));
    model->files().keep();
    EXPECT_FALSE(model->files().work().has_value()) << "there is none any more";
}

TEST_F(BoardPreviewTest, droppedWhereThereIsNoBoardNothingPlaysOn) {
    std::filesystem::remove_all(scratch / "Packs");
    restart();
    ASSERT_EQ(model->board(), nullptr);
    ASSERT_TRUE(previewBoard(file));
    ASSERT_TRUE(comesToPlay("From a friend"));
    model->files().drop();
    EXPECT_EQ(model->playing(), nullptr);
}

TEST_F(BoardPreviewTest, whatIsKeptIsWhatWasOpenedWhateverBecomesOfTheFile) {
    ASSERT_TRUE(previewBoard(file));
    std::filesystem::remove(file);
    ASSERT_TRUE(keepPreview());
    EXPECT_EQ(model->board()->name, "From a friend");
    const std::string sample = model->board()->sounds.front().press.layers.front().samples.front();
    const auto heard = model->library().samples(sample);
    ASSERT_TRUE(heard);
    restart();
    EXPECT_EQ(model->board()->name, "From a friend");
    EXPECT_EQ(model->library().samples(sample)->size(), heard->size());
}

TEST_F(BoardPreviewTest, aFileIsReadWhileEverythingElseGoesOn) {
    std::optional<std::string> first;
    model->files().open({file}, [&](const std::string& problem) { first = problem; });
    EXPECT_TRUE(model->files().work().has_value());
    EXPECT_EQ(model->files().preview(), nullptr) << "nothing waits for it";
    model->files().cancel();
    EXPECT_FALSE(model->files().work().has_value());
    EXPECT_NE(first, std::nullopt) << "whoever asked is told";
    EXPECT_NE(first, "");
    ASSERT_TRUE(previewBoard(file)) << "and another one can be opened";
    EXPECT_EQ(model->files().previews(), 1U) << "the cancelled one never comes";
}

TEST_F(BoardPreviewTest, anotherFileTakesItsPlace) {
    ASSERT_TRUE(previewBoard(file));
    const std::size_t before = model->files().previews();
    ASSERT_TRUE(previewBoard(file));
    EXPECT_GT(model->files().previews(), before);
    EXPECT_EQ(users(), 1U);
}

TEST_F(BoardPreviewTest, aFileThatIsNoneIsNamedAndChangesNothing) {
    ASSERT_TRUE(previewBoard(file));
    EXPECT_FALSE(previewBoard(scratch.write("notes.vornic", "{}")));
    EXPECT_EQ(model->lastError(), "That isn't a Vornic board file.");
    ASSERT_NE(model->files().preview(), nullptr) << "what was open stays";
    EXPECT_FALSE(previewBoard(scratch / "missing.vornic"));
    EXPECT_EQ(model->lastError(), "Couldn't read that file.");
}

TEST_F(BoardPreviewTest, aSecondStartHandsItsFileOver) {
    int activations = 0;
    Control control(*model, scheduler, [&] { ++activations; });
    const auto open = [&](const std::filesystem::path& path) {
        std::optional<ControlAnswer> said;
        control.run({"open", path.string()}, [&](const ControlAnswer& answer) { said = answer; });
        EXPECT_TRUE(eventually([&] { return said.has_value(); }));
        return said.value_or(ControlAnswer{-1, ""});
    };
    EXPECT_EQ(open(file), ControlAnswer{});
    EXPECT_EQ(activations, 1);
    EXPECT_NE(model->files().preview(), nullptr);
    EXPECT_EQ(open(scratch / "missing.vornic"), (ControlAnswer{1, "Couldn't read that file."}));
    EXPECT_EQ(activations, 2) << "the panel says why";
}

} // namespace
} // namespace vornic
