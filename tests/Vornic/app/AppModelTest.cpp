#include "tests/support/ModelFixture.h"

#include <gmock/gmock.h>

namespace vornic {
namespace {

using ::testing::HasSubstr;

using AppModelTest = ModelFixture;

TEST_F(AppModelTest, offersTheBoardsOfThePacksAndStartsWithTheFirstThereIs) {
    start();
    ASSERT_NE(model->board(), nullptr);
    EXPECT_EQ(model->board()->name, "Buckling Spring");
    EXPECT_EQ(model->boards().size(), 1u);
    EXPECT_FALSE(model->selectBoard("no such board"));
    EXPECT_TRUE(model->selectBoard(model->boards().front().id));
}

TEST_F(AppModelTest, saysOnceThatItListensAndToWhat) {
    start();
    ASSERT_TRUE(eventually([&] { return model->tapState() == TapState::listening; }));
    EXPECT_THAT(log.all(),
                HasSubstr("Vornic is listening: board Buckling Spring, output Test sink, "
                          "keys from the test"));
    const std::string before = log.all();
    for (int second = 0; second < 3; ++second) {
        scheduler.advance(std::chrono::seconds(1));
        model->refreshState();
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
    std::filesystem::remove_all(scratch / "Packs");
    start();
    EXPECT_EQ(model->board(), nullptr);
    EXPECT_EQ(model->statusLine(), " · On the desk");
    EXPECT_THAT(log.all(), HasSubstr("No sound pack was found"));
}

TEST_F(AppModelTest, playsKeysAndKeepsTrackOfTypingEvenWhileSilent) {
    ASSERT_TRUE(startToPlay());
    // The first press may still come before the rendered board has reached the key thread.
    EXPECT_TRUE(eventually([&] {
        tap.press();
        return heard();
    }));
    ASSERT_TRUE(eventually([&] { return model->activity().lastCode() == FakeTap::key; }));
    model->setSoundsOn(false);
    EXPECT_FALSE(model->soundsOn());
    scheduler.advance(std::chrono::milliseconds(200));
    EXPECT_TRUE(model->activity().typing());
    EXPECT_THAT(log.all(), HasSubstr("Off"));
}

TEST_F(AppModelTest, theHotKeySwitchesTheSounds) {
    start();
    ASSERT_TRUE(eventually([&] { return model->tapState() == TapState::listening; }));
    hotKey.onPress();
    EXPECT_TRUE(eventually([&] { return !model->soundsOn(); }));
    hotKey.onPress();
    EXPECT_TRUE(eventually([&] { return model->soundsOn(); }));
}

TEST_F(AppModelTest, pausesTheOutputAfterHalfAMinuteWithoutKeys) {
    ASSERT_TRUE(startToPlay());
    unsigned presses = 0;
    ASSERT_TRUE(eventually([&] {
        tap.press();
        ++presses;
        return output.isRunning();
    }));
    // None is on its way any more, which would count as a later use.
    ASSERT_TRUE(eventually([&] { return model->keyCounts().pressed >= presses; }));
    clock.advance(29.0);
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(output.isRunning());
    clock.advance(2.0);
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_FALSE(output.isRunning());
}

} // namespace
} // namespace vornic
