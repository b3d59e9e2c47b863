#include "tests/support/ModelFixture.h"

#include <gmock/gmock.h>

namespace vornic {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

class AppModelQuietTest : public ModelFixture {
  protected:
    void SetUp() override { ASSERT_TRUE(startToPlay()); }

    /// Whether a key that is pressed now is heard.
    bool keysSound() {
        // Whatever is still in the buffers fades first.
        (void)output.render(48000, clock.nanos());
        const std::int64_t before = model->sound().core().keysStarted();
        const std::int64_t heardBefore = model->keys().keysHeard();
        tap.press();
        EXPECT_TRUE(eventually([&] { return model->keys().keysHeard() > heardBefore; }));
        (void)output.render(128, clock.nanos());
        return model->sound().core().keysStarted() > before;
    }
};

TEST_F(AppModelQuietTest, startsToWatchOnce) {
    EXPECT_EQ(microphone.starts, 1);
    EXPECT_EQ(secureInput.starts, 1);
    EXPECT_EQ(furtherReason.starts, 1);
    EXPECT_TRUE(keysSound());
}

TEST_F(AppModelQuietTest, everyProgramIsAskedForItsPasswordFieldsOnTheUsersWishOnly) {
    EXPECT_FALSE(secureInput.everywhere);
    model->setNoticePasswordsEverywhere(true);
    EXPECT_TRUE(secureInput.everywhere);
    EXPECT_EQ(model->passwordFields(), PasswordFields::allThatCanTell);
    secureInput.everywhere = false;
    restart();
    EXPECT_TRUE(secureInput.everywhere) << "it is a setting";
    model->setNoticePasswordsEverywhere(false);
    EXPECT_FALSE(secureInput.everywhere);
}

TEST_F(AppModelQuietTest, aFurtherReasonSilencesKeysLikeThoseItKnowsByName) {
    furtherReason.focused = true;
    furtherReason.onChange();
    EXPECT_EQ(model->silence(), Silence::password);
    EXPECT_FALSE(keysSound());
    furtherReason.focused = false;
    furtherReason.onChange();
    EXPECT_TRUE(keysSound());
}

TEST_F(AppModelQuietTest, aPasswordFieldSilencesKeysWithinASecondAndReleasesThemWithinOne) {
    secureInput.focused = true;
    scheduler.advance(1000ms);
    EXPECT_EQ(model->silence(), Silence::password);
    EXPECT_FALSE(keysSound());
    EXPECT_EQ(model->statusLine(), "Paused while you type a password");
    secureInput.focused = false;
    scheduler.advance(1000ms);
    EXPECT_EQ(model->silence(), std::nullopt);
    EXPECT_TRUE(keysSound());
}

TEST_F(AppModelQuietTest, whatTheSystemPushesCountsAtOnce) {
    secureInput.focused = true;
    secureInput.onChange();
    EXPECT_FALSE(keysSound());
    secureInput.focused = false;
    secureInput.onChange();
    microphone.used = true;
    microphone.onChange();
    EXPECT_EQ(model->silence(), Silence::microphone);
    EXPECT_FALSE(keysSound());
    EXPECT_THAT(log.all(), HasSubstr("Silent while your microphone is on"));
}

TEST_F(AppModelQuietTest, aCallMattersOnlyToThoseWhoAskForIt) {
    microphone.used = true;
    scheduler.advance(1000ms);
    EXPECT_TRUE(model->micInUse());
    EXPECT_EQ(model->silence(), Silence::microphone);
    model->setQuietDuringCalls(false);
    EXPECT_EQ(model->silence(), std::nullopt);
    EXPECT_EQ(model->statusLine(), "Buckling Spring · On the desk");
    EXPECT_TRUE(keysSound());
    model->setQuietDuringCalls(true);
    EXPECT_FALSE(keysSound());
}

TEST_F(AppModelQuietTest, itsOwnRecordingIsNoCall) {
    model->setRecording(true);
    microphone.used = true;
    scheduler.advance(1000ms);
    EXPECT_FALSE(model->micInUse());
    EXPECT_EQ(model->silence(), Silence::recording);
    model->setSoundsOn(false);
    EXPECT_EQ(model->silence(), Silence::recording);
    EXPECT_FALSE(keysSound());
    model->setRecording(false);
    EXPECT_EQ(model->silence(), Silence::off);
    EXPECT_TRUE(model->micInUse());
}

TEST_F(AppModelQuietTest, viewsHearOfEachFactThatChangesAndOnlyThen) {
    // The time that the first render took shows with the next look.
    scheduler.advance(1000ms);
    scheduler.run();
    int changes = 0;
    model->onChange = [&] { ++changes; };
    scheduler.advance(3000ms);
    scheduler.run();
    EXPECT_EQ(changes, 0);
    secureInput.focused = true;
    scheduler.advance(1000ms);
    EXPECT_EQ(changes, 1);
    output.facts.isBluetooth = true;
    scheduler.advance(1000ms);
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(model->onBluetooth());
    model->onChange = [] {};
}

TEST_F(AppModelQuietTest, whenItGoesNothingIsCalledAnyMore) {
    model.reset();
    microphone.onChange();
    secureInput.onChange();
}

} // namespace
} // namespace vornic
