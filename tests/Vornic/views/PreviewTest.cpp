#include "Vornic/views/keyboard/KeyboardPicture.h"
#include "tests/Vornic/views/ViewsFixture.h"
#include "tests/support/SmallPack.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace vornic {
namespace {

class PreviewTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        model->edit([](Board& board) {
            board.name = "From a friend";
            board.credits = {"Recorded by a friend"};
        });
        ASSERT_TRUE(exportBoard(file));
        model->deleteBoard();
        settle();
    }
    void open() {
        ASSERT_TRUE(previewBoard(file));
        views->openPreview();
        ASSERT_NE(views->preview(), nullptr);
        settle();
    }
    QQuickItem* item(const QString& text) { return find(views->preview()->rootObject(), text); }

    /// Drops `url` on `window`; whether that was taken.
    static bool drop(QQuickView& window, const QUrl& url) {
        QMimeData data;
        data.setUrls({url});
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QDropEvent dropped({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &dropped);
        return dropped.isAccepted();
    }

    QUrl urlOf(const std::string& name) const {
        return QUrl::fromLocalFile(QString::fromStdString((scratch / name).string()));
    }

    std::filesystem::path file = scratch / "sent.vornic";
};

TEST_F(PreviewTest, showsWhatTheFileHolds) {
    open();
    EXPECT_NE(item("From a friend"), nullptr);
    EXPECT_NE(item("Recorded by a friend"), nullptr);
    const auto* const picture = views->preview()->rootObject()->findChild<KeyboardPicture*>();
    ASSERT_NE(picture, nullptr) << "its keyboard is drawn";
    const_cast<QQuickView*>(views->preview())->grabWindow(); // lays it out
    EXPECT_GT(picture->height(), 100.0);
    EXPECT_NE(picture->source()->scene().find(53), nullptr);
}

TEST_F(PreviewTest, isKeptByItsButton) {
    open();
    click(item("Add to my keyboards"));
    ASSERT_TRUE(eventually([&] { return model->files().preview() == nullptr; }));
    settle();
    EXPECT_EQ(model->board()->name, "From a friend");
    EXPECT_FALSE(views->preview()->isVisible());
    EXPECT_EQ(model->files().preview(), nullptr);
    EXPECT_EQ(model->boards().size(), 2U);
}

TEST_F(PreviewTest, isDroppedByItsButtonByEscapeAndByClosingTheWindow) {
    open();
    click(item("Cancel"));
    settle();
    EXPECT_EQ(model->files().preview(), nullptr);
    EXPECT_FALSE(views->preview()->isVisible());

    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(const_cast<QQuickView*>(views->preview())));
    QTest::keyClick(const_cast<QQuickView*>(views->preview()), Qt::Key_Escape);
    settle();
    EXPECT_EQ(model->files().preview(), nullptr);

    open();
    const_cast<QQuickView*>(views->preview())->close();
    settle();
    EXPECT_EQ(model->files().preview(), nullptr);
    EXPECT_EQ(model->boards().size(), 1U);
}

TEST_F(PreviewTest, aBoardFileDroppedOnAWindowIsLookedAt) {
    const auto simple = views->make("simple/SimpleView.qml", "");
    simple->show();
    settle();
    EXPECT_TRUE(drop(*simple, QUrl::fromLocalFile(QString::fromStdString(file.string()))));
    ASSERT_TRUE(eventually([&] { return model->files().preview() != nullptr; }));
    ASSERT_NE(views->preview(), nullptr);
    EXPECT_TRUE(views->preview()->isVisible());
}

TEST_F(PreviewTest, aPackDroppedOnAWindowIsLookedAtBeforeItIsKept) {
    writeSmallPack(scratch, "packs/one", "Theirs");
    const auto simple = views->make("simple/SimpleView.qml", "");
    simple->show();
    settle();
    EXPECT_TRUE(drop(*simple, urlOf("packs/one")));
    settle();
    EXPECT_NE(find(simple->rootObject(), "Reading one"), nullptr) << "that it is read is shown";
    ASSERT_TRUE(eventually([&] { return model->files().preview() != nullptr; }));
    settle();
    ASSERT_NE(views->preview(), nullptr);
    EXPECT_NE(item("Theirs"), nullptr);
    EXPECT_NE(item("Sound pack for Mechvibes"), nullptr);
    EXPECT_NE(item("none stated"), nullptr);
    EXPECT_NE(item("Missing"), nullptr);
    EXPECT_NE(item("The file \"gone.wav\"."), nullptr);
    click(item("Add to my keyboards"));
    ASSERT_TRUE(eventually([&] { return model->files().preview() == nullptr; }));
    EXPECT_EQ(model->board()->name, "Theirs");
}

TEST_F(PreviewTest, aReadingIsCancelledWhereItIsShown) {
    writeSmallPack(scratch, "packs/one", "Theirs");
    const auto simple = views->make("simple/SimpleView.qml", "");
    simple->show();
    settle();
    ASSERT_TRUE(drop(*simple, urlOf("packs/one")));
    settle();
    click(find(simple->rootObject(), "Cancel"));
    settle();
    EXPECT_FALSE(model->files().work());
    EXPECT_EQ(find(simple->rootObject(), "Reading one"), nullptr);
    EXPECT_EQ(model->files().preview(), nullptr);
}

TEST_F(PreviewTest, severalPacksAreAListFromWhichThoseTickedAreAdded) {
    for (const std::string name : {"a", "b", "c"}) {
        writeSmallPack(scratch, "packs/" + name, "Pack " + name);
    }
    const auto simple = views->make("simple/SimpleView.qml", "");
    simple->show();
    settle();
    Q_EMIT views->adapters().windows()->openFile(urlOf("packs"));
    ASSERT_TRUE(eventually([&] { return model->files().packs().size() == 3; }));
    settle();
    ASSERT_NE(item("3 sound packs"), nullptr);
    click(item("Pack b"));
    ASSERT_TRUE(eventually([&] { return model->files().preview() != nullptr; }));
    settle();
    EXPECT_NE(item("Sound pack for Mechvibes"), nullptr);
    views->adapters().files()->tick(1, false);
    settle();
    click(item("Add 2 keyboards"));
    ASSERT_TRUE(eventually([&] { return !model->files().work(); }));
    settle();
    EXPECT_EQ(model->boards().size(), 3U);
    EXPECT_NE(item("Added"), nullptr);
    EXPECT_TRUE(views->preview()->isVisible()) << "the third may be wanted yet";
    click(item("Close"));
    settle();
    EXPECT_FALSE(views->preview()->isVisible());
    EXPECT_TRUE(model->files().packs().empty());
}

TEST_F(PreviewTest, theImportButtonAsksForFilesAndFoldersAndExplainsItself) {
    for (const char* const view : {"simple/SimpleView.qml", "studio/StudioView.qml"}) {
        const auto window = views->make(view, "");
        window->show();
        settle();
        click(find(window->rootObject(), "Import…"));
        settle();
        auto* const loader = window->rootObject()->findChild<QObject*>("importDialogs");
        ASSERT_NE(loader, nullptr) << view;
        QMetaObject::invokeMethod(loader, "ask", Q_ARG(QVariant, false));
        ASSERT_NE(loader->property("item").value<QObject*>(), nullptr) << view;
        EXPECT_NE(window->rootObject()->findChild<QObject*>("packHelp"), nullptr) << view;
    }
}

TEST_F(PreviewTest, otherFilesAreLeftToTheWindow) {
    const auto simple = views->make("simple/SimpleView.qml", "");
    simple->show();
    settle();
    EXPECT_FALSE(drop(*simple, QUrl::fromLocalFile("/tmp/picture.png")));
    EXPECT_FALSE(drop(*simple, QUrl("https://example.org/board.vornic")));
    EXPECT_FALSE(drop(*simple, urlOf("Packs/spring/regular-01.wav"))) << "a recording";
    EXPECT_EQ(model->files().preview(), nullptr);
}

} // namespace
} // namespace vornic
