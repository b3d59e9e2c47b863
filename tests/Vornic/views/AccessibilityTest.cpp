// Whoever cannot see the views hears of every control what it is.

#include "tests/Vornic/views/ViewsFixture.h"

#include <QAccessible>
#include <algorithm>
#include <string>
#include <vector>

namespace vornic {
namespace {

class AccessibilityTest : public ViewsFixture, public ::testing::WithParamInterface<const char*> {};

/// Every control below `root` that takes the keyboard.
void collect(QQuickItem* root, std::vector<QQuickItem*>& controls) {
    if (!root->isVisible()) {
        return;
    }
    if (root->activeFocusOnTab()) {
        controls.push_back(root);
    }
    for (QQuickItem* const child : root->childItems()) {
        collect(child, controls);
    }
}

TEST_P(AccessibilityTest, everyControlHasAName) {
    for (const auto tab : {StudioAdapter::Tab::Keys, StudioAdapter::Tab::Sounds}) {
        views->adapters().studio()->setTab(tab);
        const auto view = views->make(GetParam(), "");
        view->show();
        settle();
        std::vector<QQuickItem*> controls;
        collect(view->rootObject(), controls);
        EXPECT_GT(controls.size(), 3U);
        for (QQuickItem* const control : controls) {
            QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(control);
            ASSERT_NE(accessible, nullptr) << control->metaObject()->className();
            EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
                << control->metaObject()->className() << " at " << control->x() << ", "
                << control->y();
        }
    }
}

TEST_P(AccessibilityTest, everyControlIsLargeEnoughToHit) {
    constexpr double least = 24.0;
    for (const auto tab : {StudioAdapter::Tab::Keys, StudioAdapter::Tab::Sounds}) {
        views->adapters().studio()->setTab(tab);
        const auto view = views->make(GetParam(), "");
        view->show();
        settle();
        view->grabWindow();
        std::vector<QQuickItem*> controls;
        collect(view->rootObject(), controls);
        for (QQuickItem* const control : controls) {
            EXPECT_GE(std::min(control->width(), control->height()), least)
                << control->metaObject()->className() << " "
                << control->property("text").toString().toStdString();
        }
    }
}

TEST_P(AccessibilityTest, aClickLeavesNoFocusButInAText) {
    const auto view = views->make(GetParam(), "");
    showActive(*view);
    view->grabWindow();
    std::vector<QQuickItem*> controls;
    collect(view->rootObject(), controls);
    for (QQuickItem* const control : controls) {
        const auto policy = control->property("focusPolicy").value<Qt::FocusPolicy>();
        EXPECT_EQ(policy & Qt::ClickFocus, 0) << control->metaObject()->className() << " "
                                              << control->property("text").toString().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Views, AccessibilityTest,
                         ::testing::Values("panel/Panel.qml", "simple/SimpleView.qml",
                                           "settings/SettingsView.qml", "studio/StudioView.qml",
                                           "welcome/WelcomeView.qml", "gallery/GalleryView.qml"),
                         [](const auto& parameter) {
                             const std::string file = parameter.param;
                             return file.substr(0, file.find('/'));
                         });

} // namespace
} // namespace vornic
