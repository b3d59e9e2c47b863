#include "Vornic/model/AppModel.h"

#include "tests/support/ClickPack.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <mutex>

namespace vornic {
namespace {

using ::testing::HasSubstr;

/// A tap that hears what the test lets it hear, on the thread that watches it.
class FakeTap final : public KeyTap {
  public:
    explicit FakeTap(const Clock& clock) : clock_(clock), descriptor_(eventfd(0, EFD_NONBLOCK)) {}
    FakeTap(const FakeTap&) = delete;
    FakeTap& operator=(const FakeTap&) = delete;
    ~FakeTap() override { close(descriptor_); }

    bool start() override { return allowed; }
    void stop() override {}
    TapState refresh() override {
        return allowed ? TapState::listening : TapState::needsPermission;
    }
    int fileDescriptor() const override { return descriptor_; }
    void dispatch() override {
        eventfd_t presses = 0;
        if (eventfd_read(descriptor_, &presses) == 0) {
            onKey(key, true, clock_.nanos());
        }
    }
    std::string description() const override { return "the test"; }

    /// The key goes down. Test thread.
    void press() { eventfd_write(descriptor_, 1); }

    static constexpr std::int64_t key = 49;
    std::atomic<bool> allowed{true};

  private:
    const Clock& clock_;
    int descriptor_;
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

    /// Starts and waits until keys are heard and the first board is rendered.
    bool startToPlay() {
        start();
        scheduler.advance(std::chrono::milliseconds(0));
        return eventually(
            [&] { return model.tapState() == TapState::listening && model.lastRenderSeconds(); });
    }

    /// Runs what the key thread has posted until `condition` holds.
    bool eventually(const std::function<bool()>& condition) {
        return waitFor([&] {
            scheduler.run();
            return condition();
        });
    }

    bool heard() {
        const auto block = output.render(128, clock.nanos());
        const auto loud = [](float sample) { return std::abs(sample) > 0.02f; };
        return std::ranges::any_of(block.left, loud) && std::ranges::any_of(block.right, loud);
    }

    ScratchFolder scratch;
    FakeOutput output;
    ManualClock clock;
    FakeTap tap{clock};
    FakeHotKey hotKey;
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
    ASSERT_TRUE(startToPlay());
    // The first press may still come before the rendered board has reached the key thread.
    EXPECT_TRUE(eventually([&] {
        tap.press();
        return heard();
    }));
    ASSERT_TRUE(eventually([&] { return model.activity().lastCode() == FakeTap::key; }));
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
    ASSERT_TRUE(startToPlay());
    ASSERT_TRUE(eventually([&] {
        tap.press();
        return output.isRunning();
    }));
    clock.advance(29.0);
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(output.isRunning());
    clock.advance(2.0);
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_FALSE(output.isRunning());
}

} // namespace
} // namespace vornic
