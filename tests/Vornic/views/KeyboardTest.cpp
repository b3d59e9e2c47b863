// Whoever has no mouse reaches everything: Tab comes to every control, in view, and back.

#include "tests/Vornic/views/ViewsFixture.h"

#include <set>
#include <string>
#include <vector>

namespace vornic {
namespace {

class KeyboardTest : public ViewsFixture, public ::testing::WithParamInterface<const char*> {};

/// Every control below `root` that is to be reached.
void collect(QQuickItem* root, std::set<QQuickItem*>& controls) {
    if (!root->isVisible() || !root->isEnabled()) {
        return;
    }
    if (root->activeFocusOnTab()) {
        controls.insert(root);
    }
    for (QQuickItem* const child : root->childItems()) {
        collect(child, controls);
    }
}

std::string described(const std::set<QQuickItem*>& items) {
    std::string text;
    for (const QQuickItem* const item : items) {
        text += std::string(item->metaObject()->className()) + " \"" +
                item->property("text").toString().toStdString() + "\"; ";
    }
    return text;
}

TEST_P(KeyboardTest, tabReachesEveryControlAndShowsIt) {
    model->setAdvanced(true);
    model->edit([](Board& board) { board.stabs.rattle = 0.5; }); // so that undo can be reached
    for (const auto tab : {StudioAdapter::Tab::Keys, StudioAdapter::Tab::Sounds}) {
        views->adapters().studio()->setTab(tab);
        const auto view = views->make(GetParam(), "");
        showActive(*view);
        std::set<QQuickItem*> left;
        collect(view->rootObject(), left);
        EXPECT_GT(left.size(), 3U);
        const QRectF window(QPointF(), QSizeF(view->size()));
        const std::size_t all = left.size();
        for (std::size_t presses = 0; presses < 2 * all && !left.empty(); ++presses) {
            QTest::keyClick(view.get(), Qt::Key_Tab);
            QQuickItem* const reached = view->activeFocusItem();
            ASSERT_NE(reached, nullptr);
            EXPECT_TRUE(window.intersects(
                reached->mapRectToScene(QRectF(0, 0, reached->width(), reached->height()))))
                << described({reached}) << " is out of sight";
            // A list is reached when one of its rows is.
            for (QQuickItem* item = reached; item != nullptr; item = item->parentItem()) {
                left.erase(item);
            }
        }
        EXPECT_TRUE(left.empty()) << "never reached: " << described(left);
    }
}

INSTANTIATE_TEST_SUITE_P(Views, KeyboardTest,
                         ::testing::Values("panel/Panel.qml", "simple/SimpleView.qml",
                                           "settings/SettingsView.qml", "studio/StudioView.qml",
                                           "welcome/WelcomeView.qml"),
                         [](const auto& parameter) {
                             const std::string file = parameter.param;
                             return file.substr(0, file.find('/'));
                         });

using BoardListTest = ViewsFixture;

TEST_F(BoardListTest, arrowsGoFromBoardToBoardAndSpacePicks) {
    model->newBoard();
    model->newBoard();
    const std::string third = model->board()->id;
    model->selectBoard("spring");
    settle();
    const auto panel = views->make("panel/Panel.qml", "");
    showActive(*panel);
    QTest::keyClick(panel.get(), Qt::Key_Tab); // to the switch
    QTest::keyClick(panel.get(), Qt::Key_Tab); // to the boards
    for (int times = 0; times < 2; ++times) {
        QTest::keyClick(panel.get(), Qt::Key_Down);
    }
    EXPECT_EQ(model->board()->id, "spring") << "moving is not picking";
    QTest::keyClick(panel.get(), Qt::Key_Space);
    EXPECT_EQ(model->board()->id, third);
}

TEST_F(BoardListTest, showsTheCurrentBoardAmongMany) {
    for (int number = 0; number < 40; ++number) {
        model->newBoard();
    }
    settle();
    const auto panel = views->make("panel/Panel.qml", "");
    showActive(*panel);
    auto* const list = view(panel->rootObject(), "BoardList");
    ASSERT_NE(list, nullptr);
    auto* const row = list->property("currentItem").value<QQuickItem*>();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->property("boardId").toString().toStdString(), model->board()->id);
    EXPECT_TRUE(
        QRectF(0, 0, list->width(), list->height())
            .contains(list->mapFromItem(row, QPointF(row->width() / 2, row->height() / 2))));
}

} // namespace
} // namespace vornic
