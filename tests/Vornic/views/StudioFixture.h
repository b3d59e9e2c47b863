#pragma once

#include "tests/Vornic/views/ViewsFixture.h"

#include <QAccessible>
#include <functional>

namespace vornic {

/// The Studio's window, and ways to find and drive what is in it.
class StudioFixture : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        views->adapters().studio()->setTab(tab());
        window = views->make("studio/StudioView.qml", "");
        showActive(*window);
        draw();
    }
    void TearDown() override {
        window.reset();
        ViewsFixture::TearDown();
    }

    virtual StudioAdapter::Tab tab() const = 0;

    /// Lets the views follow the model, and be laid out.
    void draw() {
        settle();
        window->grabWindow();
        settle();
    }

    /// The first visible item that `wanted` holds for; null if there is none.
    static QQuickItem* findItem(QQuickItem* root,
                                const std::function<bool(const QQuickItem&)>& wanted) {
        if (!root->isVisible()) {
            return nullptr;
        }
        if (wanted(*root)) {
            return root;
        }
        for (QQuickItem* const child : root->childItems()) {
            if (QQuickItem* const found = findItem(child, wanted)) {
                return found;
            }
        }
        return nullptr;
    }
    /// The visible control that says `name` to whoever cannot see it.
    QQuickItem* named(const QString& name) const {
        return findItem(window->contentItem(), [&](const QQuickItem& item) {
            auto* const control = const_cast<QQuickItem*>(&item);
            QAccessibleInterface* const accessible =
                item.activeFocusOnTab() ? QAccessible::queryAccessibleInterface(control) : nullptr;
            return accessible != nullptr && accessible->text(QAccessible::Name) == name;
        });
    }

    static QPoint at(const QQuickItem* item, double x, double y) {
        return item->mapToScene({x, y}).toPoint();
    }
    static QPoint middle(const QQuickItem* item) {
        return at(item, item->width() / 2, item->height() / 2);
    }
    /// Drags with the mouse, with stops on the way at which the model answers.
    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mousePress(window.get(), Qt::LeftButton, modifiers, from);
        constexpr int steps = 6;
        for (int step = 1; step <= steps; ++step) {
            QTest::mouseMove(window.get(), from + (to - from) * step / steps);
            settle();
        }
        QTest::mouseRelease(window.get(), Qt::LeftButton, modifiers, to);
        draw();
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.get(), key, modifiers);
        draw();
    }

    const Board& board() const { return *model->board(); }

    std::unique_ptr<QQuickView> window;
};

} // namespace vornic
