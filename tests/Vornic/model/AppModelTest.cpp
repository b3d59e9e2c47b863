#include "Vornic/model/AppModel.h"

#include "tests/support/ClickPack.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

namespace vornic {
namespace {

using ::testing::HasSubstr;

/// A tap that hears what the test lets it hear.
class FakeTap final : public KeyTap {
  public:
    bool start() override { return allowed; }
    void stop() override {}
    TapState refresh() override {
        return allowed ? TapState::listening : TapState::needsPermission;
    }
    int fileDescriptor() const override { return -1; }
    void dispatch() override {}
    std::string description() const override { return "the test"; }

    std::atomic<bool> allowed{true};
};

class FakeHotKey final : public HotKey {
  public:
    bool registered() const override { return true; }
    int fileDescriptor() const override { return -1; }
    void dispatch() override {}
};

class CollectingLog final : public Log {
  public:
    void info(const std::string& line) override { add(line); }
    void warning(const std::string& line) override { add("! " + line); }

    std::string all() const {
        const std::scoped_lock lock(mutex_);
        return text_;
    }

  private:
    void add(const std::string& line) {
        const std::scoped_lock lock(mutex_);
        text_ += line + "\n";
    }
    mutable std::mutex mutex_;
    std::string text_;
};

AppModel::Options options(const std::filesystem::path& packs) {
    AppModel::Options options;
    options.packs = packs;
    return options;
}

class AppModelTest : public ::testing::Test {
  protected:
    AppModelTest() {
        writeClickPack(scratch.path());
        output.facts.name = "Test sink";
    }

    void start() { model.start(); }

    /// Runs what the key thread has posted until `condition` holds.
    bool eventually(const std::function<bool()>& condition) {
        return waitFor([&] {
            scheduler.run();
            return condition();
        });
    }

    /// As the tap would, on the key thread; the fake has no thread of its own, so the model's is
    /// reached through the audition, which takes the same way.
    bool heard(float level) {
        const auto block = output.render(128, clock.nanos());
        return block.left[0] > level && block.right[0] > level;
    }

    ScratchFolder scratch;
    FakeOutput output;
    FakeTap tap;
    FakeHotKey hotKey;
    ManualClock clock;
    ManualScheduler scheduler;
    CollectingLog log;
    AppModel model{{output, tap, hotKey, clock, scheduler, log}, options(scratch.path())};
};

TEST_F(AppModelTest, offersTheBoardsOfThePacksAndStartsWithTheFirstThereIs) {
    start();
    ASSERT_NE(model.board(), nullptr);
    EXPECT_EQ(model.board()->name, "Buckling Spring");
    EXPECT_EQ(model.boards().size(), 1u);
    EXPECT_FALSE(model.selectBoard("no such board"));
    EXPECT_TRUE(model.selectBoard(model.boards().front().id));
}

TEST_F(AppModelTest, saysOnceThatItListensAndToWhat) {
    start();
    ASSERT_TRUE(eventually([&] { return model.tapState() == TapState::listening; }));
    EXPECT_THAT(log.all(),
                HasSubstr("Vornic is listening: board Buckling Spring, output Test sink, "
                          "keys from the test"));
    const std::string before = log.all();
    for (int second = 0; second < 3; ++second) {
        scheduler.advance(std::chrono::seconds(1));
        model.refreshState();
    }
    scheduler.run();
    EXPECT_EQ(log.all(), before);
}

TEST_F(AppModelTest, saysWhenItCannotHearKeysAndWhenItCanAgain) {
    tap.allowed = false;
    start();
    ASSERT_TRUE(
        eventually([&] { return log.all().find("Can't hear your keys") != std::string::npos; }));
    tap.allowed = true;
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(eventually([&] { return log.all().find("is listening") != std::string::npos; }));
}

TEST_F(AppModelTest, saysWhyNothingCanBeHeard) {
    output.available = false;
    start();
    EXPECT_TRUE(eventually([&] { return log.all().find("! no server") != std::string::npos; }));
}

TEST_F(AppModelTest, startsWithoutAnyPackAndSaysWhatIsMissing) {
    AppModel bare({output, tap, hotKey, clock, scheduler, log}, options(scratch / "nothing"));
    bare.start();
    EXPECT_EQ(bare.board(), nullptr);
    EXPECT_THAT(log.all(), HasSubstr("No sound pack was found"));
}

TEST_F(AppModelTest, playsKeysAndKeepsTrackOfTypingEvenWhileSilent) {
    start();
    ASSERT_TRUE(eventually([&] { return model.tapState() == TapState::listening; }));
    tap.onKey(49, true, clock.nanos());
    EXPECT_TRUE(heard(0.05f));
    ASSERT_TRUE(eventually([&] { return model.activity().lastCode() == 49; }));
    model.setSoundsOn(false);
    EXPECT_FALSE(model.soundsOn());
    scheduler.advance(std::chrono::milliseconds(200));
    EXPECT_TRUE(model.activity().typing());
    EXPECT_THAT(log.all(), HasSubstr("Off"));
}

TEST_F(AppModelTest, theHotKeySwitchesTheSounds) {
    start();
    ASSERT_TRUE(eventually([&] { return model.tapState() == TapState::listening; }));
    hotKey.onPress();
    EXPECT_TRUE(eventually([&] { return !model.soundsOn(); }));
    hotKey.onPress();
    EXPECT_TRUE(eventually([&] { return model.soundsOn(); }));
}

TEST_F(AppModelTest, pausesTheOutputAfterHalfAMinuteWithoutKeys) {
    start();
    ASSERT_TRUE(eventually([&] { return model.tapState() == TapState::listening; }));
    tap.onKey(49, true, clock.nanos());
    EXPECT_TRUE(output.isRunning());
    clock.advance(29.0);
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(output.isRunning());
    clock.advance(2.0);
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_FALSE(output.isRunning());
}

} // namespace
} // namespace vornic
