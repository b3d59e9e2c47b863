#include "Vornic/views/Presence.h"

#include "Vornic/views/TrayPicture.h"
#include "tests/Vornic/views/ViewsFixture.h"
#include "tests/support/FakeTray.h"

#include <algorithm>

namespace vornic {
namespace {

class PresenceTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        views.reset();
    }
    FakeTray tray;
};

TEST_F(PresenceTest, theIconShowsListeningQuietAndCannotHear) {
    Presence presence(*model, tray, true);
    settle();
    EXPECT_EQ(tray.now, trayPicture("keyboard"));
    EXPECT_EQ(tray.text, "Vornic: Buckling Spring · On the desk");
    model->setSoundsOn(false);
    settle();
    EXPECT_EQ(tray.now, trayPicture("keyboard-off"));
    EXPECT_EQ(tray.text, "Vornic: Off · keys are silent");
    tap.allowed = false;
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(eventually([&] {
        settle();
        return tray.now == trayPicture("warning");
    }));
}

TEST_F(PresenceTest, everyStateLooksDifferent) {
    const std::vector pictures{trayPicture("keyboard"), trayPicture("keyboard-off"),
                               trayPicture("warning"), trayPicture("mic"), trayPicture("lock")};
    for (std::size_t one = 0; one < pictures.size(); ++one) {
        EXPECT_TRUE(std::ranges::any_of(pictures[one].argb, [](auto byte) { return byte > 0; }));
        for (std::size_t other = one + 1; other < pictures.size(); ++other) {
            EXPECT_NE(pictures[one], pictures[other]) << one << " " << other;
        }
    }
}

TEST_F(PresenceTest, aClickOnTheIconOpensThePanelAndAnotherClosesIt) {
    Presence presence(*model, tray, true);
    tray.onActivate(300, 20);
    ASSERT_NE(presence.views().panel(), nullptr);
    EXPECT_TRUE(presence.views().panel()->isVisible());
    tray.onActivate(300, 20);
    EXPECT_FALSE(presence.views().panel()->isVisible());
}

TEST_F(PresenceTest, withoutATrayThePanelIsAWindow) {
    tray.shown = false;
    model->setWelcomed();
    Presence presence(*model, tray, false);
    EXPECT_TRUE(waitFor([&] {
        settle();
        return presence.views().panel() != nullptr && presence.views().panel()->isVisible();
    }));
}

TEST_F(PresenceTest, aTrayThatIsYetToShowTheIconIsWaitedFor) {
    tray.shown = false;
    tray.unsure = true;
    model->setWelcomed();
    Presence presence(*model, tray, false);
    // Longer than any tray is waited for that says nothing.
    EXPECT_FALSE(waitFor(
        [&] {
            settle();
            return presence.views().panel() != nullptr;
        },
        std::chrono::milliseconds(2500)));
    tray.unsure = false;
    EXPECT_TRUE(waitFor([&] {
        settle();
        return presence.views().panel() != nullptr && presence.views().panel()->isVisible();
    }));
}

TEST_F(PresenceTest, aTrayThatDropsTheIconLaterLeavesAWindow) {
    model->setWelcomed();
    Presence presence(*model, tray, false);
    EXPECT_FALSE(waitFor(
        [&] {
            settle();
            return presence.views().panel() != nullptr;
        },
        std::chrono::milliseconds(2500)));
    tray.shown = false;
    tray.onVisibleChange();
    EXPECT_TRUE(waitFor([&] {
        settle();
        return presence.views().panel() != nullptr && presence.views().panel()->isVisible();
    }));
}

TEST_F(PresenceTest, theMenuSwitchesChoosesAndOpens) {
    Presence presence(*model, tray, true);
    settle();
    const auto entry = [&](std::size_t at) -> const TrayMenuEntry& { return tray.menu.at(at); };
    EXPECT_EQ(entry(0).text, "Sounds on");
    EXPECT_TRUE(entry(0).marked);
    entry(0).choose();
    settle();
    EXPECT_FALSE(model->soundsOn());
    EXPECT_FALSE(entry(0).marked);
    ASSERT_EQ(entry(2).children.size(), model->boards().size());
    entry(2).children.back().choose();
    settle();
    EXPECT_EQ(model->board()->id, model->boards().back().id);
    EXPECT_TRUE(entry(2).children.back().marked);
    EXPECT_EQ(entry(3).children.at(3).text, "25 %");
    entry(3).children.at(3).choose();
    settle();
    EXPECT_EQ(model->volume(), 0.25);
    EXPECT_TRUE(entry(3).children.at(3).marked);
    int quits = 0;
    presence.views().onQuit = [&quits] { ++quits; };
    tray.menu.back().choose();
    EXPECT_EQ(tray.menu.back().text, "Quit");
    EXPECT_EQ(quits, 1);
}

TEST_F(PresenceTest, saysOnceThatThereIsNoTray) {
    tray.shown = false;
    model->setWelcomed();
    for (const bool first : {true, false}) {
        Presence presence(*model, tray, false);
        ASSERT_TRUE(waitFor([&] {
            settle();
            return presence.views().panel() != nullptr;
        }));
        EXPECT_EQ(presence.views().adapters().status()->note().startsWith("There is no tray"),
                  first);
    }
}

TEST_F(PresenceTest, hiddenItOpensNothingUntilItIsStartedAgain) {
    tray.shown = false;
    Presence presence(*model, tray, true);
    settle();
    EXPECT_EQ(presence.views().panel(), nullptr);
    presence.comeForward();
    ASSERT_NE(presence.views().panel(), nullptr);
    EXPECT_TRUE(presence.views().panel()->isVisible());
}

TEST_F(PresenceTest, theWheelOverTheIconTurnsTheVolume) {
    Presence presence(*model, tray, true);
    model->setVolume(0.5);
    tray.onScroll(1.0);
    EXPECT_NEAR(model->volume(), 0.55, 1e-9);
    tray.onScroll(-3.0);
    EXPECT_NEAR(model->volume(), 0.4, 1e-9);
    tray.onScroll(-100.0);
    EXPECT_EQ(model->volume(), 0.0);
}

} // namespace
} // namespace vornic
