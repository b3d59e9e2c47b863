#pragma once

#include "Vornic/views/Views.h"
#include "VornicCore/dsp/EQPreset.h"
#include "tests/support/ModelFixture.h"

#include <QCoreApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <memory>
#include <string_view>

namespace vornic {

/// The value of that preset in the list of presets.
inline int presetCalled(std::string_view id) {
    return static_cast<int>(EQPreset::named(id) - EQPreset::all().data());
}

/// The views over a model whose services a test drives by hand.
class ViewsFixture : public ModelFixture {
  protected:
    void SetUp() override {
        ASSERT_TRUE(startToPlay());
        views = std::make_unique<Views>(*model);
    }
    void TearDown() override { views.reset(); }

    /// Lets the views follow the model.
    void settle() {
        scheduler.run();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    /// The item below `root` that has this accessible name or text; null if there is none.
    static QQuickItem* find(QQuickItem* root, const QString& name) {
        if (root->isVisible() && root->property("text").toString() == name) {
            return root;
        }
        for (QQuickItem* const child : root->childItems()) {
            if (QQuickItem* const found = find(child, name)) {
                return found;
            }
        }
        return nullptr;
    }

    /// The first item below `root` of that QML type; null if there is none.
    static QQuickItem* view(QQuickItem* root, const QString& type) {
        if (QString(root->metaObject()->className()).startsWith(type + "_QMLTYPE")) {
            return root;
        }
        for (QQuickItem* const child : root->childItems()) {
            if (QQuickItem* const found = view(child, type)) {
                return found;
            }
        }
        return nullptr;
    }

    /// Shows a window so that it has the keyboard.
    void showActive(QQuickView& view) {
        view.show();
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        settle();
    }

    static void click(QQuickItem* item) {
        ASSERT_NE(item, nullptr);
        // Layouts put things in their places when a frame is drawn.
        item->window()->grabWindow();
        const QPointF middle = item->mapToScene({item->width() / 2, item->height() / 2});
        QTest::mouseClick(item->window(), Qt::LeftButton, Qt::NoModifier, middle.toPoint());
    }

    std::unique_ptr<Views> views;
};

} // namespace vornic
