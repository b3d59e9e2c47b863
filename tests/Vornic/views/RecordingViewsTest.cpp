// The sheets and the chooser as a user meets them: by mouse, by keyboard, and by what they say.
// With VORNIC_PICTURES set to a folder, pictures of them are left there.

#include "Vornic/views/theme/ThemeObject.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/Vornic/views/ViewsFixture.h"
#include "tests/support/TypingNoise.h"

#include <QAccessible>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <cstdlib>
#include <set>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class RecordingViewsTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        studio = views->make("studio/StudioView.qml", "");
        showActive(*studio);
    }
    void TearDown() override {
        studio.reset();
        ViewsFixture::TearDown();
    }

    /// Keys of all loudnesses, one of them with its release.
    static std::vector<float> typing(int keys = 20) {
        TypingNoise noise(1.0 + 0.6 * keys, 48000, 2e-4F);
        for (int key = 0; key < keys; ++key) {
            noise.hit(0.5 + 0.6 * key, 0.2F + 0.03F * static_cast<float>(key), 0.09);
            if (key % 3 == 0) {
                noise.hit(0.62 + 0.6 * key, 0.05F);
            }
        }
        return noise.samples();
    }
    void pass(int tenths) {
        for (int i = 0; i < tenths; ++i) {
            clock.advance(0.1);
            scheduler.advance(100ms);
            settle();
        }
        QTest::qWait(200); // for what moves
    }
    /// In the sheets too, which stand above the view.
    QQuickItem* found(const QString& text) { return find(studio->contentItem(), text); }
    bool isOpen(const char* sheet) {
        const QObject* const popup = studio->rootObject()->findChild<QObject*>(sheet);
        return popup != nullptr && popup->property("opened").toBool();
    }
    void startRecording() {
        click(found("Record your keyboard…"));
        QTest::qWait(50);
        click(found("Start recording"));
        settle();
    }
    QImage picture(const std::string& name) {
        settle();
        const QImage image = studio->grabWindow();
        if (const char* const folder = std::getenv("VORNIC_PICTURES")) {
            image.save(QString::fromStdString(std::string(folder) + "/" + name + ".png"));
        }
        return image;
    }

    std::unique_ptr<QQuickView> studio;
};

void collectControls(QQuickItem* root, std::vector<QQuickItem*>& controls) {
    if (root->isVisible() && root->isEnabled()) {
        if (root->activeFocusOnTab()) {
            controls.push_back(root);
        }
        for (QQuickItem* const child : root->childItems()) {
            collectControls(child, controls);
        }
    }
}

TEST_F(RecordingViewsTest, recordsFromTheSheetAndGoesOnToTheChooser) {
    click(found("Record your keyboard…"));
    QTest::qWait(50);
    EXPECT_TRUE(isOpen("recordSheet"));
    EXPECT_NE(found("Record your keyboard"), nullptr);
    EXPECT_NE(found("Press keys one at a time with a short gap after each, about 20 of them. Mix "
                    "letters, space and enter. Vornic stays quiet while it listens."),
              nullptr);
    EXPECT_FALSE(model->recording());
    click(found("Start recording"));
    settle();
    EXPECT_TRUE(model->recording());
    microphoneInput.hear(typing(4));
    pass(10);
    EXPECT_NE(found("4 good keystrokes"), nullptr);
    EXPECT_NE(found("Good."), nullptr);
    EXPECT_NE(found("19 s left"), nullptr);
    click(found("Stop"));
    settle();
    EXPECT_FALSE(model->recording());
    // It is cut on a thread of its own.
    EXPECT_TRUE(QTest::qWaitFor([&] {
        settle();
        return isOpen("strokeChooser") && !isOpen("recordSheet");
    }));
    EXPECT_NE(found("Make a sound from a recording"), nullptr);
    EXPECT_NE(found("Found 4 keystrokes. These are the 4 cleanest; untick any you don't like."),
              nullptr);
}

TEST_F(RecordingViewsTest, whatIsTypedIntoTheMicrophonePressesNoButton) {
    startRecording();
    ASSERT_TRUE(model->recording());
    for (const auto key : {Qt::Key_Space, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Backtab,
                           Qt::Key_Space, Qt::Key_A, Qt::Key_Enter}) {
        QTest::keyClick(studio.get(), key);
    }
    settle();
    EXPECT_TRUE(model->recording());
    microphoneInput.hear(typing(4));
    QTest::keyClick(studio.get(), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(model->recording());
    EXPECT_TRUE(eventually([&] { return model->importSession().has_value(); }));
    settle();
    // Fingers that type on change nothing.
    QTest::qWait(50);
    QTest::keyClick(studio.get(), Qt::Key_Space);
    QTest::keyClick(studio.get(), Qt::Key_Return);
    settle();
    ASSERT_TRUE(model->importSession());
    EXPECT_EQ(model->importSession()->selected.size(), model->importSession()->strokes.size());
}

TEST_F(RecordingViewsTest, theSheetSaysWhatIsWrongAndLetsTheUserTryAgain) {
    microphoneInput.format.reset();
    startRecording();
    EXPECT_TRUE(isOpen("recordSheet"));
    EXPECT_NE(found("Couldn't start the microphone."), nullptr);
    EXPECT_NE(found("No microphone."), nullptr);
    picture("record-no-microphone");
    microphoneInput.format = MicrophoneInput::Format{48000, 1};
    click(found("Start recording"));
    settle();
    EXPECT_EQ(found("No microphone."), nullptr);
    microphoneInput.hear(std::vector<float>(48000));
    click(found("Stop"));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        settle();
        return found("No keystrokes found. Press keys one at a time, a little apart.") != nullptr;
    }));
    EXPECT_TRUE(isOpen("recordSheet"));
    picture("record-nothing-found");
    click(found("Cancel"));
    QTest::qWait(50);
    EXPECT_FALSE(isOpen("recordSheet"));
    EXPECT_EQ(model->lastError(), std::nullopt);
}

TEST_F(RecordingViewsTest, aRecordingEndsWithItsWindow) {
    startRecording();
    ASSERT_TRUE(model->recording());
    studio->hide();
    settle();
    EXPECT_FALSE(model->recording());
    EXPECT_FALSE(model->importSession());
}

TEST_F(RecordingViewsTest, theChooserKeepsWhatIsTickedAndOffersItForAllKeys) {
    openSession(typing(), "My keyboard");
    settle();
    QTest::qWait(50);
    EXPECT_NE(found("Found 20 keystrokes. These are the 16 cleanest; untick any you don't like."),
              nullptr);
    EXPECT_NE(found("Keep 16 keystrokes"), nullptr);
    (*views->adapters().recorder()).tick(3, false);
    settle();
    click(found("Keep 15 keystrokes"));
    settle();
    QTest::qWait(50);
    EXPECT_FALSE(isOpen("strokeChooser"));
    ASSERT_NE(found("\"My keyboard\" is on this keyboard now."), nullptr);
    EXPECT_EQ(model->board()->sounds.back().press.layers.front().samples.size(), 15U);
    picture("kept-offer");
    click(found("Use for all keys"));
    settle();
    EXPECT_EQ(model->board()->resolve(FakeTap::key)->sound->name, "My keyboard");
    EXPECT_EQ(found("Use for all keys"), nullptr);
}

TEST_F(RecordingViewsTest, theEndsOfACutFollowTheMouseAndTheArrowKeys) {
    openSession(typing(3), "My keyboard");
    settle();
    QTest::qWait(50);
    const auto cut = [&] { return model->recorder().cuts()->cut(0); };
    QQuickItem* handle = nullptr;
    const QString name = "End of keystroke 1";
    const std::function<void(QQuickItem*)> look = [&](QQuickItem* item) {
        if (item->isVisible() && item->property("name").toString() == name) {
            handle = item;
        }
        for (QQuickItem* const child : item->childItems()) {
            look(child);
        }
    };
    look(studio->contentItem());
    ASSERT_NE(handle, nullptr);
    const auto before = cut();
    const QPoint grip = handle->mapToScene({handle->width() / 2, handle->height() / 2}).toPoint();
    QTest::mousePress(studio.get(), Qt::LeftButton, {}, grip);
    for (int step = 1; step <= 4; ++step) {
        QTest::mouseMove(studio.get(), grip - QPoint(10 * step, 0));
        settle();
    }
    QTest::mouseRelease(studio.get(), Qt::LeftButton, {}, grip - QPoint(40, 0));
    const double perPixel = 0.4 * 48000 / handle->parentItem()->width();
    EXPECT_NEAR(static_cast<double>(before.end - cut().end), 40 * perPixel, 2 * perPixel);
    EXPECT_EQ(cut().begin, before.begin);
    const auto dragged = cut();
    EXPECT_FALSE(handle->hasActiveFocus()) << "a press leaves no focus";
    handle->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(studio.get(), Qt::Key_Right);
    EXPECT_EQ(cut().end, dragged.end + 48);
    QTest::keyClick(studio.get(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(cut().end, dragged.end + 48 - 480);
}

TEST_F(RecordingViewsTest, aDroppedRecordingIsImported) {
    writeWAV(typing(4), scratch / "Old board.wav");
    QMimeData data;
    data.setUrls(
        {QUrl::fromLocalFile(QString::fromStdString((scratch / "Old board.wav").string()))});
    QDragEnterEvent enter({300, 300}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(studio.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    settle();
    EXPECT_NE(found("Drop a recording of typing. Vornic cuts it into single keystrokes."), nullptr);
    picture("drop");
    QDropEvent drop({300, 300}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(studio.get(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_TRUE(eventually([&] {
        settle();
        return model->importSession().has_value();
    }));
    EXPECT_EQ((*views->adapters().recorder()).name(), "Old board");
}

TEST_F(RecordingViewsTest, theImportEntryAsksForAFile) {
    QQuickItem* const entry = found("Import a recording…");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(entry)->text(QAccessible::Description),
              "Choose a recording of typing. Vornic cuts it into single keystrokes.");
    click(entry);
    settle();
    auto* const loader = studio->rootObject()->findChild<QObject*>("recordingFiles");
    ASSERT_NE(loader, nullptr);
    auto* const dialog = loader->property("item").value<QObject*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->property("visible").toBool());
}

TEST_F(RecordingViewsTest, theNameIsTypedWhileTheModelGoesOn) {
    openSession(typing(3), "My keyboard");
    settle();
    QTest::qWait(50);
    QQuickItem* const field = found("My keyboard");
    ASSERT_NE(field, nullptr);
    click(field);
    QTest::keySequence(studio.get(), QKeySequence::SelectAll);
    for (const char letter : std::string("Old one")) {
        QTest::keyClick(studio.get(), letter);
        // The tap hears what is typed into the field as well.
        model->onChange();
        settle();
    }
    click(found("Keep 3 keystrokes"));
    settle();
    EXPECT_EQ(model->board()->sounds.back().name, "Old one");
}

TEST_F(RecordingViewsTest, theListFollowsTheFocus) {
    openSession(typing(), "My keyboard");
    settle();
    QTest::qWait(50);
    QObject* const chooser = studio->rootObject()->findChild<QObject*>("strokeChooser");
    std::vector<QQuickItem*> controls;
    collectControls(chooser->property("contentItem").value<QQuickItem*>(), controls);
    const auto inside = [&](QQuickItem* item) {
        const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
        for (const QQuickItem* above = item->parentItem(); above; above = above->parentItem()) {
            const QRectF seen = above->mapRectToScene({0, 0, above->width(), above->height()});
            if (above->clip() && (place.top() < seen.top() || place.bottom() > seen.bottom())) {
                return false;
            }
        }
        return true;
    };
    int outside = 0;
    for (QQuickItem* const control : controls) {
        outside += inside(control) ? 0 : 1;
        control->forceActiveFocus(Qt::TabFocusReason);
        settle();
        EXPECT_TRUE(inside(control)) << control->property("name").toString().toStdString();
    }
    EXPECT_GT(outside, 0);
}

TEST_F(RecordingViewsTest, everyControlOfTheChooserHasANameOfItsOwn) {
    openSession(typing(), "My keyboard");
    settle();
    QTest::qWait(50);
    QObject* const chooser = studio->rootObject()->findChild<QObject*>("strokeChooser");
    std::vector<QQuickItem*> controls;
    collectControls(chooser->property("contentItem").value<QQuickItem*>(), controls);
    // For each of 16 strokes: the tick, both ends, and the button that plays it.
    EXPECT_GE(controls.size(), 64U);
    std::set<QString> names;
    for (QQuickItem* const control : controls) {
        const QString name =
            QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
        EXPECT_FALSE(name.isEmpty()) << control->metaObject()->className();
        EXPECT_TRUE(names.insert(name).second) << name.toStdString();
    }
}

TEST_F(RecordingViewsTest, looksRightInLightAndDark) {
    for (const bool dark : {false, true}) {
        const std::string tone = dark ? "-dark" : "-light";
        themeOf(views->engine())->setProperty("dark", dark);
        click(found("Record your keyboard…"));
        QTest::qWait(50);
        picture("record-ready" + tone);
        click(found("Start recording"));
        settle();
        microphoneInput.hear(typing(6));
        microphoneInput.hear(std::vector<float>(480, 0.2F));
        pass(40);
        const QImage recording = picture("record-running" + tone);
        EXPECT_EQ(recording.pixelColor(recording.width() / 2, 20).lightness() > 64, !dark);
        (*views->adapters().recorder()).stopRecording(false);
        settle();
        QTest::qWait(50);
        click(found("Cancel"));
        QTest::qWait(50);
        openSession(typing(), "My keyboard");
        settle();
        (*views->adapters().recorder()).tick(2, false);
        (*views->adapters().recorder()).moveEnd(1, 0.4);
        (*views->adapters().recorder()).setKeepsReleases(true);
        settle();
        QTest::qWait(50);
        const QImage chooser = picture("chooser" + tone);
        EXPECT_EQ(chooser.pixelColor(chooser.width() / 2, 40).lightness() > 128, !dark);
        (*views->adapters().recorder()).cancel();
        settle();
    }
}

} // namespace
} // namespace vornic
