#include "tests/Vornic/views/ViewsFixture.h"

#include <QAccessible>
#include <utility>
#include <vector>

namespace vornic {
namespace {

/// A system whose question the test answers.
class FakePermission final : public PermissionRequest {
  public:
    std::vector<Point> explanation() const override {
        return {{"", "Why it asks."}, {"Who else gains access", "Every program."}};
    }
    bool possible() const override { return installed; }
    bool granted() const override { return agreed; }
    void request(Done whenDone) override {
        ++requests;
        done = std::move(whenDone);
    }
    void revoke(Done whenDone) override {
        ++revocations;
        done = std::move(whenDone);
    }

    bool installed = true;
    bool agreed = false;
    int requests = 0;
    int revocations = 0;
    Done done;
};

class PermissionPageTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        // Keys are heard through this right only.
        tap.allowed = false;
        scheduler.advance(std::chrono::seconds(1));
        ASSERT_TRUE(eventually([&] { return model->tapState() == TapState::needsPermission; }));
        views->offerPermission(permission, true);
    }

    void openPage() {
        views->adapters().windows()->openPermission();
        settle();
        ASSERT_NE(views->permission(), nullptr);
        ASSERT_TRUE(views->permission()->isVisible());
    }
    bool shows(const QString& text) {
        settle();
        return find(views->permission()->rootObject(), text) != nullptr;
    }
    void press(const QString& text) {
        settle();
        click(find(views->permission()->rootObject(), text));
        settle();
    }
    void answer(PermissionAnswer answer, const std::string& message = {}) {
        std::exchange(permission.done, {})(answer, message);
        settle();
    }

    FakePermission permission;
};

TEST_F(PermissionPageTest, isOpenedByThePanelsButton) {
    const auto panel = views->make("panel/Panel.qml", "");
    panel->show();
    settle();
    click(find(panel->rootObject(), "Turn on Input Monitoring…"));
    settle();
    ASSERT_NE(views->permission(), nullptr);
    EXPECT_TRUE(views->permission()->isVisible());
}

TEST_F(PermissionPageTest, saysWhatItMeansBeforeAnythingIsAsked) {
    openPage();
    EXPECT_TRUE(shows("Why it asks."));
    EXPECT_TRUE(shows("Who else gains access"));
    EXPECT_TRUE(shows("Every program."));
    EXPECT_EQ(permission.requests, 0);
}

TEST_F(PermissionPageTest, notNowAsksNothing) {
    openPage();
    press("Not now");
    EXPECT_FALSE(views->permission()->isVisible());
    EXPECT_EQ(permission.requests, 0);
}

TEST_F(PermissionPageTest, theKeyboardBeginsAtTheAnswerThatChangesNothing) {
    openPage();
    ASSERT_TRUE(QTest::qWaitForWindowActive(const_cast<QQuickView*>(views->permission())));
    settle();
    const QQuickItem* const focused = views->permission()->activeFocusItem();
    ASSERT_NE(focused, nullptr);
    EXPECT_EQ(focused->property("text").toString(), "Not now");
}

TEST_F(PermissionPageTest, oneQuestionIsOpenAtATime) {
    openPage();
    press("Agree");
    EXPECT_EQ(permission.requests, 1);
    EXPECT_TRUE(shows("Waiting for your answer to the system's question…"));
    EXPECT_FALSE(shows("Agree"));
}

TEST_F(PermissionPageTest, whatWasDeclinedMayBeTriedAgain) {
    openPage();
    press("Agree");
    answer(PermissionAnswer::declined, "You can try again.");
    EXPECT_TRUE(shows("Declined."));
    EXPECT_TRUE(shows("You can try again."));
    press("Try again");
    EXPECT_EQ(permission.requests, 2);
}

TEST_F(PermissionPageTest, saysWhatWentWrong) {
    openPage();
    press("Agree");
    answer(PermissionAnswer::failed, "The rule is missing.");
    EXPECT_TRUE(shows("That did not work."));
    EXPECT_TRUE(shows("The rule is missing."));
    EXPECT_TRUE(shows("Try again"));
}

TEST_F(PermissionPageTest, grantedButNotHeardYetItOffersARelaunch) {
    int relaunches = 0;
    views->adapters().permission()->onRelaunch = [&relaunches] { ++relaunches; };
    openPage();
    press("Agree");
    permission.agreed = true;
    answer(PermissionAnswer::granted);
    EXPECT_TRUE(shows("Permission granted."));
    press("Relaunch");
    EXPECT_EQ(relaunches, 1);
}

TEST_F(PermissionPageTest, grantedAndHeardItNeedsNoRelaunch) {
    openPage();
    press("Agree");
    permission.agreed = true;
    tap.allowed = true;
    answer(PermissionAnswer::granted);
    EXPECT_TRUE(shows("Permission granted."));
    EXPECT_TRUE(
        eventually([&] { return shows("Vornic hears your keys. Press one: the lamp lights."); }));
    EXPECT_FALSE(shows("Relaunch"));
}

TEST_F(PermissionPageTest, whatIsGrantedCanBeTurnedOffAgain) {
    permission.agreed = true;
    openPage();
    EXPECT_TRUE(shows("Permission granted."));
    EXPECT_FALSE(shows("Agree"));
    press("Turn it off again");
    EXPECT_EQ(permission.revocations, 1);
    permission.agreed = false;
    answer(PermissionAnswer::granted);
    EXPECT_TRUE(shows("Input Monitoring is off."));
    EXPECT_FALSE(shows("Turn it off again"));
    EXPECT_TRUE(shows("Agree"));
}

TEST_F(PermissionPageTest, aRefusalToTurnItOffLeavesItOn) {
    permission.agreed = true;
    openPage();
    press("Turn it off again");
    answer(PermissionAnswer::declined, "Nothing was changed.");
    EXPECT_TRUE(shows("Declined."));
    EXPECT_TRUE(shows("Turn it off again"));
    EXPECT_FALSE(shows("Try again"));
}

TEST_F(PermissionPageTest, openedAnewItExplainsAgain) {
    openPage();
    press("Agree");
    answer(PermissionAnswer::failed, "The rule is missing.");
    press("Close");
    openPage();
    EXPECT_FALSE(shows("That did not work."));
    EXPECT_TRUE(shows("Agree"));
}

TEST_F(PermissionPageTest, withoutItsPackageNothingCanBeAgreedTo) {
    permission.installed = false;
    openPage();
    EXPECT_TRUE(shows("Install Vornic's package first: it brings what this needs."));
    press("Agree");
    EXPECT_EQ(permission.requests, 0);
}

TEST_F(PermissionPageTest, theSettingsOfferItWhereItIsNeededOrInForce) {
    const auto settings = views->make("settings/SettingsView.qml", "");
    settings->show();
    settle();
    QQuickItem* const root = settings->rootObject();
    EXPECT_NE(find(root, "Turn on Input Monitoring…"), nullptr);
    permission.agreed = true;
    views->offerPermission(permission, false);
    settle();
    EXPECT_NE(find(root, "Turn off Input Monitoring…"), nullptr);
    permission.agreed = false;
    views->offerPermission(permission, false);
    settle();
    EXPECT_EQ(find(root, "Turn on Input Monitoring…"), nullptr);
}

TEST_F(PermissionPageTest, everyAnswerHasAName) {
    permission.agreed = true;
    openPage();
    int buttons = 0;
    for (const char* const text : {"Turn it off again", "Close", "Relaunch"}) {
        QQuickItem* const button = find(views->permission()->rootObject(), text);
        ASSERT_NE(button, nullptr) << text;
        EXPECT_TRUE(button->activeFocusOnTab());
        QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(button);
        ASSERT_NE(accessible, nullptr);
        EXPECT_EQ(accessible->text(QAccessible::Name), text);
        ++buttons;
    }
    EXPECT_EQ(buttons, 3);
}

TEST_F(PermissionPageTest, anAnswerAfterThePageIsGoneIsHeardByNobody) {
    openPage();
    press("Agree");
    views.reset();
    permission.done(PermissionAnswer::granted, "");
}

} // namespace
} // namespace vornic
