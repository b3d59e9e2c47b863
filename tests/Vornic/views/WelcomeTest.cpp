#include "Vornic/views/Presence.h"
#include "tests/Vornic/views/ViewsFixture.h"
#include "tests/support/FakeTray.h"

namespace vornic {
namespace {

class WelcomeTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        views.reset();
    }
    FakeTray tray;
};

TEST_F(WelcomeTest, opensOnTheFirstStartAndNeverAgain) {
    {
        Presence presence(*model, tray, false);
        ASSERT_NE(presence.views().welcome(), nullptr);
        EXPECT_TRUE(presence.views().welcome()->isVisible());
        settle();
        click(find(presence.views().welcome()->rootObject(), "Done"));
        settle();
        EXPECT_FALSE(presence.views().welcome()->isVisible());
    }
    restart();
    Presence presence(*model, tray, false);
    EXPECT_EQ(presence.views().welcome(), nullptr);
}

TEST_F(WelcomeTest, comesBackWhenTheProgramEndedUnderIt) {
    {
        Presence presence(*model, tray, false);
        ASSERT_NE(presence.views().welcome(), nullptr);
    }
    restart();
    Presence presence(*model, tray, false);
    EXPECT_NE(presence.views().welcome(), nullptr);
}

TEST_F(WelcomeTest, staysAwayFromAHiddenStartAndFromWhoHasSettings) {
    {
        Presence presence(*model, tray, true);
        EXPECT_EQ(presence.views().welcome(), nullptr);
    }
    model->setVolume(0.4);
    restart();
    Presence presence(*model, tray, false);
    EXPECT_EQ(presence.views().welcome(), nullptr);
}

TEST_F(WelcomeTest, withoutATrayThePanelFollows) {
    tray.shown = false;
    Presence presence(*model, tray, false);
    settle();
    EXPECT_EQ(presence.views().panel(), nullptr);
    click(find(presence.views().welcome()->rootObject(), "Done"));
    settle();
    ASSERT_NE(presence.views().panel(), nullptr);
    EXPECT_TRUE(presence.views().panel()->isVisible());
}

class FakeAutostart final : public Autostart {
  public:
    bool enabled() const override { return on; }
    std::error_code setEnabled(bool enabled) override {
        on = enabled;
        return {};
    }
    bool on = false;
};

TEST_F(WelcomeTest, offersToStartWithTheSessionWithinTheWindow) {
    FakeAutostart autostart;
    Presence presence(*model, tray, false);
    // The program learns how it is started only after its windows are made.
    presence.views().adapters().settings()->setAutostart(&autostart);
    settle();
    const QQuickView* const welcome = presence.views().welcome();
    EXPECT_NE(find(welcome->rootObject(), "Start with the session"), nullptr);
    EXPECT_GE(welcome->height(), static_cast<int>(welcome->rootObject()->implicitHeight()))
        << "nothing is below the edge";
}

TEST_F(WelcomeTest, theLampLightsOnTheFirstKey) {
    Presence presence(*model, tray, false);
    settle();
    QQuickItem* const root = presence.views().welcome()->rootObject();
    EXPECT_NE(find(root, "Press any key."), nullptr);
    EXPECT_EQ(find(root, "Vornic hears your keys."), nullptr);
    tap.press();
    ASSERT_TRUE(eventually([&] { return model->activity().lastKey().has_value(); }));
    settle();
    EXPECT_NE(find(root, "Vornic hears your keys."), nullptr);
    scheduler.advance(std::chrono::seconds(5));
    settle();
    EXPECT_NE(find(root, "Vornic hears your keys."), nullptr) << "it stays lit";
}

} // namespace
} // namespace vornic
