// A board comes from a stranger: whatever it calls its parts, the views show it as plain text and
// ask nobody on the network for anything.

#include "tests/Vornic/views/ViewsFixture.h"

#include <QCursor>
#include <QQmlComponent>
#include <QTcpServer>
#include <vector>

namespace vornic {
namespace {

class HostileNamesTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
        const std::string image =
            "<img src=\"http://127.0.0.1:" + std::to_string(server.serverPort()) + "/a.png\">";
        hostile = image + "<b>bold</b>\u202egnp\u2066";
        shown = QString::fromStdString(image + "<b>bold</b>[U+202E]gnp[U+2066]");
        model->edit([&](Board& board) {
            board.name = hostile;
            board.detail = hostile;
            board.credits = {hostile};
            for (SoundSpec& sound : board.sounds) {
                sound.name = hostile;
            }
        });
        settle();
    }

    static void collect(QQuickItem* root, std::vector<QQuickItem*>& texts) {
        if (root->inherits("QQuickText")) {
            texts.push_back(root);
        }
        for (QQuickItem* const child : root->childItems()) {
            collect(child, texts);
        }
    }

    /// Everything that the window shows is plain; how often the name is among it.
    int plainNames(const QQuickView& window) {
        std::vector<QQuickItem*> texts;
        collect(window.contentItem(), texts);
        int names = 0;
        for (QQuickItem* const text : texts) {
            const QString said = text->property("text").toString();
            // The toolkit's own are empty, as a place holder is.
            if (said.isEmpty()) {
                continue;
            }
            EXPECT_EQ(text->property("textFormat").toInt(), Qt::PlainText) << said.toStdString();
            EXPECT_FALSE(said.contains(QChar(0x202e)) || said.contains(QChar(0x2066)))
                << said.toStdString();
            names += said.contains(shown) ? 1 : 0;
        }
        return names;
    }

    /// Gives whatever wants to be fetched the time that a connection takes.
    void expectNoRequest() {
        settle();
        EXPECT_FALSE(server.waitForNewConnection(200));
    }

    QTcpServer server;
    std::string hostile;
    QString shown;
};

TEST_F(HostileNamesTest, areShownAsTheyAreInEveryView) {
    struct View {
        const char* file;
        StudioAdapter::Tab tab = StudioAdapter::Tab::Keys;
    };
    for (const View& view :
         {View{"panel/Panel.qml"}, View{"simple/SimpleView.qml"}, View{"welcome/WelcomeView.qml"},
          View{"settings/SettingsView.qml"}, View{"studio/StudioView.qml"},
          View{"studio/StudioView.qml", StudioAdapter::Tab::Sounds}}) {
        views->adapters().studio()->setTab(view.tab);
        const auto window = views->make(view.file, "");
        window->show();
        settle();
        window->grabWindow();
        EXPECT_GT(plainNames(*window), 0) << view.file << ", " << static_cast<int>(view.tab);
    }
    expectNoRequest();
}

TEST_F(HostileNamesTest, areShownAsTheyAreBeforeABoardIsKept) {
    const auto file = scratch / "sent.vornic";
    ASSERT_TRUE(exportBoard(file));
    ASSERT_TRUE(previewBoard(file));
    views->openPreview();
    settle();
    EXPECT_GT(plainNames(*views->preview()), 0);
    expectNoRequest();
}

TEST_F(HostileNamesTest, areShownAsTheyAreInToolTips) {
    views->adapters().studio()->setTab(StudioAdapter::Tab::Keys);
    const auto window = views->make("studio/StudioView.qml", "");
    showActive(*window);
    window->grabWindow();
    QQuickItem* const legend = view(window->rootObject(), "SoundLegend");
    ASSERT_NE(legend, nullptr);
    QQuickItem* const entry = legend->childItems().front();
    const int before = plainNames(*window);
    QTest::mouseMove(window.get(), entry->mapToScene({4, 4}).toPoint());
    EXPECT_TRUE(waitFor([&] {
        settle();
        return plainNames(*window) > before;
    })) << "the tool tip of the legend names the sound";
    expectNoRequest();
}

/// A window that asks for an image of the server's, as markup in a name would.
std::unique_ptr<QQuickView> windowThatAsks(QQmlEngine& engine, const QTcpServer& server) {
    auto window = std::make_unique<QQuickView>(&engine, nullptr);
    QQmlComponent component(&engine);
    component.setData("import QtQuick; Image { width: 20; height: 20; source: 'http://127.0.0.1:" +
                          QByteArray::number(server.serverPort()) + "/a.png' }",
                      QUrl());
    window->setContent(QUrl(), &component, component.create());
    window->show();
    return window;
}

TEST_F(HostileNamesTest, evenWhatSlippedThroughFetchesNothing) {
    const auto refused = windowThatAsks(views->engine(), server);
    constexpr int imageFailed = 3;
    EXPECT_TRUE(waitFor([&] {
        settle();
        return refused->rootObject()->property("status").toInt() == imageFailed;
    }));
    expectNoRequest();
    // The trap works: an engine of the toolkit's own does ask.
    QQmlEngine open;
    const auto asking = windowThatAsks(open, server);
    EXPECT_TRUE(waitFor([&] {
        settle();
        return server.hasPendingConnections();
    }));
}

} // namespace
} // namespace vornic
