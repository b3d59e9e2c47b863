#include "tests/Vornic/views/ViewsFixture.h"

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

    std::filesystem::path file = scratch / "sent.vornic";
};

TEST_F(PreviewTest, showsWhatTheFileHolds) {
    open();
    EXPECT_NE(item("From a friend"), nullptr);
    EXPECT_NE(item("Recorded by a friend"), nullptr);
    EXPECT_NE(item("esc"), nullptr) << "its keyboard is drawn";
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

TEST_F(PreviewTest, otherFilesAreLeftToTheWindow) {
    const auto simple = views->make("simple/SimpleView.qml", "");
    simple->show();
    settle();
    EXPECT_FALSE(drop(*simple, QUrl::fromLocalFile("/tmp/picture.png")));
    EXPECT_FALSE(drop(*simple, QUrl("https://example.org/board.vornic")));
    EXPECT_EQ(model->files().preview(), nullptr);
}

} // namespace
} // namespace vornic
