#include "Vornic/recording/RecordingImport.h"

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TypingNoise.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace vornic {
namespace {

class RecordingImportTest : public testing::Test {
  protected:
    void start(const std::filesystem::path& file) {
        import_.start(
            file, [this](double share) { shares_.push_back(share); },
            [this](RecordingImport::Outcome outcome) { outcomes_.push_back(std::move(outcome)); });
    }
    bool isDone() {
        return waitFor([this] {
            scheduler_.run();
            return !outcomes_.empty();
        });
    }
    std::filesystem::path typing(const std::string& name) const {
        writeWAV(TypingNoise(2, 48000, 1e-4F).hit(0.3, 0.2F).hit(0.8, 0.8F).samples(),
                 folder_ / name);
        return folder_ / name;
    }

    ScratchFolder folder_;
    QueueScheduler scheduler_;
    std::vector<double> shares_;
    std::vector<RecordingImport::Outcome> outcomes_;
    RecordingImport import_{scheduler_, VORNIC_DECODER};
};

TEST_F(RecordingImportTest, makesASessionNamedAfterTheFile) {
    start(typing("My old.keyboard.wav"));
    EXPECT_TRUE(import_.isRunning());
    ASSERT_TRUE(isDone());
    EXPECT_FALSE(import_.isRunning());
    const ImportSession session = required(outcomes_[0].session);
    EXPECT_EQ(session.name, "My old.keyboard");
    EXPECT_EQ(session.strokes.size(), 2U);
    EXPECT_EQ(outcomes_[0].error, "");
    ASSERT_FALSE(shares_.empty());
    EXPECT_TRUE(std::ranges::is_sorted(shares_));
}

TEST_F(RecordingImportTest, saysWhyThereIsNoSession) {
    start(folder_.write("a.wav", "no sound"));
    ASSERT_TRUE(isDone());
    EXPECT_EQ(outcomes_[0].session, std::nullopt);
    EXPECT_EQ(outcomes_[0].error, "Couldn't read that file.");
    EXPECT_NE(outcomes_[0].remark, "");
    outcomes_.clear();
    writeWAV(std::vector<float>(48000), folder_ / "b.wav");
    start(folder_ / "b.wav");
    ASSERT_TRUE(isDone());
    EXPECT_EQ(outcomes_[0].error, "No keystrokes found. Press keys one at a time, a little apart.");
}

TEST_F(RecordingImportTest, tellsNothingMoreOnceCancelled) {
    start(typing("a.wav"));
    import_.cancel();
    EXPECT_FALSE(import_.isRunning());
    scheduler_.run();
    EXPECT_TRUE(outcomes_.empty());
    EXPECT_TRUE(shares_.empty());
}

TEST_F(RecordingImportTest, cancelsTheImportThatIsRunningForTheNext) {
    start(typing("a.wav"));
    start(typing("b.wav"));
    ASSERT_TRUE(isDone());
    scheduler_.run();
    ASSERT_EQ(outcomes_.size(), 1U);
    EXPECT_EQ(required(outcomes_[0].session).name, "b");
}

TEST_F(RecordingImportTest, mayBeStartedByWhatItCalls) {
    int done = 0;
    const auto file = typing("a.wav");
    std::function<void(RecordingImport::Outcome)> again = [&](const RecordingImport::Outcome&) {
        if (++done == 1) {
            import_.start(file, {}, again);
        }
    };
    import_.start(file, {}, again);
    EXPECT_TRUE(waitFor([&] {
        scheduler_.run();
        return done == 2;
    }));
}

} // namespace
} // namespace vornic
