#include "Vornic/qt/QuietKeys.h"

#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

namespace vornic {
namespace {

/// A window that takes the letter A and leaves the rest.
class WindowForA final : public QWindow {
  public:
    int taken = 0;

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        event->setAccepted(event->key() == Qt::Key_A);
        taken += event->isAccepted() ? 1 : 0;
    }
};

class QuietKeysTest : public ::testing::Test {
  protected:
    /// Whether the system would hear of the key that nobody wanted.
    static bool reachesTheSystem(QWindow& window, int key) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &press);
        return !press.isAccepted();
    }

    void showWithFocus(QWindow& window) const {
        window.show();
        window.requestActivate();
        ASSERT_TRUE(waitFor([&] {
            QCoreApplication::processEvents();
            return QGuiApplication::focusWindow() == &window;
        }));
    }

    int count_ = 3;
    char name_[5] = "test";
    char platform_[10] = "-platform";
    char offscreen_[10] = "offscreen";
    char* arguments_[4] = {name_, platform_, offscreen_, nullptr};
    QGuiApplication application_{count_, arguments_};
    QuietKeys quiet;
};

TEST_F(QuietKeysTest, withoutIt) {
    WindowForA window;
    EXPECT_TRUE(reachesTheSystem(window, Qt::Key_S)) << "or the other tests show nothing";
}

TEST_F(QuietKeysTest, aKeyThatTheWindowLeavesIsSwallowedAndCounted) {
    quiet.install();
    WindowForA window;
    showWithFocus(window);
    EXPECT_FALSE(reachesTheSystem(window, Qt::Key_S));
    EXPECT_EQ(quiet.taken(), 1);
}

TEST_F(QuietKeysTest, aKeyThatTheWindowWantsIsItsOwn) {
    quiet.install();
    WindowForA window;
    showWithFocus(window);
    EXPECT_FALSE(reachesTheSystem(window, Qt::Key_A));
    EXPECT_EQ(window.taken, 1);
    EXPECT_EQ(quiet.taken(), 0);
}

TEST_F(QuietKeysTest, aReleaseIsNotCounted) {
    quiet.install();
    WindowForA window;
    showWithFocus(window);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_S, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &release);
    EXPECT_EQ(quiet.taken(), 0);
}

TEST_F(QuietKeysTest, aKeyTypedWhileNoWindowHasTheFocusIsSwallowedAndCounted) {
    quiet.install();
    WindowForA window;
    ASSERT_EQ(QGuiApplication::focusWindow(), nullptr);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &press);
    EXPECT_EQ(quiet.taken(), 1);
    EXPECT_EQ(window.taken, 0) << "nobody was to get it";
}

TEST_F(QuietKeysTest, aWindowThatGetsTheFocusIsAttachedAndAgainChangesNothing) {
    quiet.install();
    {
        WindowForA window;
        showWithFocus(window);
        EXPECT_EQ(quiet.attached(), 1U);
        quiet.attach(window);
        EXPECT_EQ(quiet.attached(), 1U);
        EXPECT_FALSE(reachesTheSystem(window, Qt::Key_S));
        EXPECT_EQ(quiet.taken(), 1) << "once, however often it was attached";
    }
    EXPECT_EQ(quiet.attached(), 0U);
}

} // namespace
} // namespace vornic
