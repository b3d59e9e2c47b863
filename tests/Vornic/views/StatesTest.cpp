// Every state that a view can be in fits its window: no text runs out of it.

#include "Vornic/views/theme/ThemeObject.h"
#include "tests/Vornic/views/ViewsFixture.h"
#include "tests/support/SmallPack.h"

#include <QDir>
#include <QImage>
#include <functional>
#include <string>

namespace vornic {
namespace {

const std::string longName =
    "A keyboard with an exceedingly long name that nobody shortens, whatever the window is like";

class StatesTest : public ViewsFixture {
  protected:
    /// The name of the first text below `item` that leaves `window`; empty when all stay in.
    static QString textOutside(QQuickItem* item, const QRectF& window) {
        if (!item->isVisible() || item->clip()) {
            return {}; // what is clipped scrolls
        }
        const QString text = item->property("text").toString();
        if (!text.isEmpty()) {
            const double width = std::max(item->property("contentWidth").toDouble() +
                                              item->property("leftPadding").toDouble(),
                                          1.0);
            const QRectF place = item->mapRectToScene(
                QRectF(0, 0, std::min(width, std::max(item->width(), width)), item->height()));
            if (!window.adjusted(-1, -1, 1, 1).contains(place)) {
                return text;
            }
        }
        for (QQuickItem* const child : item->childItems()) {
            if (const QString outside = textOutside(child, window); !outside.isEmpty()) {
                return outside;
            }
        }
        return {};
    }

    /// Looks at the view as it is now, in light and dark. The pictures stay where the environment
    /// names a folder for them.
    void look(const char* file, const std::string& state, int width = 0, int height = 0) {
        const auto view = views->make(file, "");
        view->show();
        settle();
        QQuickItem* const root = view->rootObject();
        view->resize(width > 0 ? width : static_cast<int>(root->implicitWidth()),
                     height > 0 ? height : static_cast<int>(root->implicitHeight()));
        settle();
        // The height follows the width.
        view->resize(view->width(), height > 0 ? height : static_cast<int>(root->implicitHeight()));
        settle();
        EXPECT_EQ(textOutside(root, QRectF(QPointF(), QSizeF(view->size()))).toStdString(), "")
            << file << ", " << state;
        const QString folder = qEnvironmentVariable("VORNIC_PICTURES");
        if (!folder.isEmpty()) {
            QDir().mkpath(folder);
            QTest::qWait(300);
            EXPECT_TRUE(view->grabWindow().save(
                QDir(folder).filePath(QString::fromStdString(state) + ".png")));
        }
    }
    void lookEverywhere(const std::string& state) {
        look("panel/Panel.qml", "panel-" + state);
        look("simple/SimpleView.qml", "simple-" + state, 640);
        look("studio/StudioView.qml", "studio-" + state, 820, 800);
        look("settings/SettingsView.qml", "settings-" + state);
        look("welcome/WelcomeView.qml", "welcome-" + state);
    }
    void secondPasses() {
        scheduler.advance(std::chrono::seconds(1));
        settle();
    }
};

TEST_F(StatesTest, theOrdinaryOne) {
    lookEverywhere("ordinary");
}

TEST_F(StatesTest, everyControl) {
    look("gallery/GalleryView.qml", "gallery", 760, 1180);
}

TEST_F(StatesTest, everySilence) {
    model->setSoundsOn(false);
    look("panel/Panel.qml", "panel-off");
    model->setSoundsOn(true);
    secureInput.focused = true;
    secondPasses();
    ASSERT_EQ(model->silence(), Silence::password);
    look("panel/Panel.qml", "panel-password");
    secureInput.focused = false;
    microphone.used = true;
    secondPasses();
    ASSERT_EQ(model->silence(), Silence::microphone);
    look("panel/Panel.qml", "panel-microphone");
    microphone.used = false;
}

TEST_F(StatesTest, keysThatCannotBeHeard) {
    tap.allowed = false;
    views->adapters().permission()->setHint("Run \"vornic doctor\": it says what to do.");
    secondPasses();
    ASSERT_TRUE(eventually([&] { return model->tapState() == TapState::needsPermission; }));
    lookEverywhere("no-permission");
}

TEST_F(StatesTest, bluetooth) {
    output.facts.isBluetooth = true;
    output.facts.isHeadphones = true;
    output.facts.name = "Bluetooth earphones of somebody who gave them a rather long name";
    secondPasses();
    ASSERT_TRUE(model->onBluetooth());
    look("panel/Panel.qml", "panel-bluetooth");
}

TEST_F(StatesTest, anErrorThatTakesSeveralLines) {
    model->tell("Couldn't save the board: No space left on the device, which is a message that "
                "takes more than a line in most of the windows that show it to somebody.");
    lookEverywhere("error");
}

TEST_F(StatesTest, fortyBoardsWithVeryLongNames) {
    for (int number = 0; number < 40; ++number) {
        model->newBoard();
        model->renameBoard(longName + " " + std::to_string(number));
        scheduler.advance(std::chrono::seconds(1));
    }
    ASSERT_EQ(model->boards().size(), 41U);
    settle();
    lookEverywhere("forty-boards");
}

TEST_F(StatesTest, noBoardAtAll) {
    views.reset();
    std::filesystem::remove_all(scratch / "Packs");
    restart();
    views = std::make_unique<Views>(*model);
    ASSERT_TRUE(model->boards().empty());
    lookEverywhere("empty");
}

TEST_F(StatesTest, aBoardFile) {
    model->edit([](Board& board) {
        board.name = longName;
        board.detail = longName + ". " + longName + ".";
        board.credits = std::vector<std::string>(12, longName);
    });
    ASSERT_TRUE(exportBoard(scratch / "sent.vornic"));
    ASSERT_TRUE(previewBoard(scratch / "sent.vornic"));
    look("preview/PreviewView.qml", "preview");
}

TEST_F(StatesTest, aSoundPackAndSeveral) {
    for (int pack = 0; pack < 12; ++pack) {
        writeSmallPack(scratch, "packs/" + std::to_string(pack),
                       pack == 3 ? longName : "Pack " + std::to_string(pack), 8);
    }
    scratch.write("packs/damaged.zip", "no archive");
    ASSERT_TRUE(previewBoard(scratch / "packs/3"));
    look("preview/PreviewView.qml", "preview-pack");
    ASSERT_TRUE(previewBoard(scratch / "packs"));
    look("preview/PreviewView.qml", "preview-packs");
    ASSERT_TRUE(wellDone([&](const BoardFiles::Done& done) { model->files().openPack(3, done); }));
    look("preview/PreviewView.qml", "preview-packs-one");
    themeOf(views->engine())->setProperty("dark", true);
    look("preview/PreviewView.qml", "preview-packs-dark");
}

TEST_F(StatesTest, inTheDark) {
    themeOf(views->engine())->setProperty("dark", true);
    lookEverywhere("dark");
    look("gallery/GalleryView.qml", "gallery-dark", 760, 1180);
}

} // namespace
} // namespace vornic
