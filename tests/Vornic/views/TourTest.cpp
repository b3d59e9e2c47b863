// Through the windows as a new user goes: at every stop nothing is cut off, elided or covered, and
// everything can be reached. Where VORNIC_PICTURES names a folder, each stop leaves a picture
// there.

#include "Vornic/views/theme/ThemeObject.h"
#include "tests/Vornic/views/ItemGeometry.h"
#include "tests/Vornic/views/ViewsFixture.h"

#include <QDir>
#include <QImage>
#include <QScreen>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

namespace vornic {
namespace {

class TourTest : public ViewsFixture, public ::testing::WithParamInterface<bool> {
  protected:
    TourTest() {
        // Every board that comes with the program, each with the sound of the one that is here.
        const std::filesystem::path packs = scratch / "Packs";
        for (const char* const id : {"deep", "soft", "plastic", "metal", "clicky"}) {
            std::filesystem::copy(packs / "spring", packs / id);
            std::ofstream(packs / id / "pack.json")
                << R"({"id":")" << id << R"(","name":"Click","character":"","credit":""})";
        }
        output.facts.name = "Built-in Audio";
        output.facts.latencyMillis = 4.2;
    }
    void SetUp() override {
        ViewsFixture::SetUp();
        themeOf(views->engine())->setProperty("dark", GetParam());
    }

    /// Looks at a view as it is now, as large as it opens on this screen.
    void stop(const std::string& name, const char* file) {
        const auto window = views->make(file, "");
        showActive(*window);
        // As the program does when what is in a window has grown.
        const auto fit = [&] {
            // A small screen of today, where none was chosen that is larger.
            const QSize screen =
                QGuiApplication::primaryScreen()->availableSize().expandedTo({1366, 768});
            const QSize most = screen - QSize(0, 60);
            window->resize(QSize(static_cast<int>(window->rootObject()->implicitWidth()),
                                 static_cast<int>(window->rootObject()->implicitHeight()))
                               .boundedTo(most));
            window->grabWindow();
            settle();
        };
        fit();
        fit();
        for (const std::string& complaint : complaintsAbout(*window)) {
            ADD_FAILURE() << name << ": " << complaint;
        }
        picture(name, *window);
        everythingIsReached(name, *window);
    }
    void everythingIsReached(const std::string& name, QQuickView& window) {
        std::set<QQuickItem*> left;
        collect(window.rootObject(), left);
        const std::size_t all = left.size();
        for (std::size_t presses = 0; presses < 2 * all && !left.empty(); ++presses) {
            QTest::keyClick(&window, Qt::Key_Tab);
            for (QQuickItem* item = window.activeFocusItem(); item != nullptr;
                 item = item->parentItem()) {
                left.erase(item);
            }
        }
        for (const QQuickItem* const item : left) {
            ADD_FAILURE() << name << ": Tab never comes to "
                          << item->property("text").toString().toStdString() << " "
                          << item->metaObject()->className();
        }
    }
    static void collect(QQuickItem* item, std::set<QQuickItem*>& controls) {
        if (!item->isVisible() || !item->isEnabled()) {
            return;
        }
        if (item->activeFocusOnTab()) {
            controls.insert(item);
        }
        for (QQuickItem* const child : item->childItems()) {
            collect(child, controls);
        }
    }
    static void picture(const std::string& name, QQuickView& window) {
        const QString folder = qEnvironmentVariable("VORNIC_PICTURES");
        if (folder.isEmpty()) {
            return;
        }
        QDir().mkpath(folder);
        const QSize screen = QGuiApplication::primaryScreen()->size();
        const QString file = QString("%1-%2x%3-%4.png")
                                 .arg(QString::fromStdString(name))
                                 .arg(screen.width())
                                 .arg(screen.height())
                                 .arg(window.devicePixelRatio());
        EXPECT_TRUE(window.grabWindow().save(QDir(folder).filePath(file)));
    }
    std::string inThisLight(const std::string& name) const {
        return name + (GetParam() ? "-dark" : "-light");
    }
    void secondPasses() {
        scheduler.advance(std::chrono::seconds(1));
        settle();
    }
};

TEST_P(TourTest, theFirstStart) {
    stop(inThisLight("1-welcome"), "welcome/WelcomeView.qml");
    tap.press();
    ASSERT_TRUE(eventually([&] { return model->activity().lastKey().has_value(); }));
    settle();
    stop(inThisLight("1-welcome-heard"), "welcome/WelcomeView.qml");
}

TEST_P(TourTest, everyWindow) {
    stop(inThisLight("2-panel"), "panel/Panel.qml");
    stop(inThisLight("3-simple"), "simple/SimpleView.qml");
    views->adapters().studio()->setTab(StudioAdapter::Tab::Keys);
    settle();
    stop(inThisLight("4-studio-keys"), "studio/StudioView.qml");
    views->adapters().studio()->setTab(StudioAdapter::Tab::Sounds);
    settle();
    stop(inThisLight("4-studio-sounds"), "studio/StudioView.qml");
    stop(inThisLight("5-settings"), "settings/SettingsView.qml");
}

TEST_P(TourTest, everyReasonForSilence) {
    model->setSoundsOn(false);
    settle();
    stop(inThisLight("6-panel-off"), "panel/Panel.qml");
    model->setSoundsOn(true);
    microphone.used = true;
    secondPasses();
    stop(inThisLight("6-panel-microphone"), "panel/Panel.qml");
    microphone.used = false;
    secureInput.focused = true;
    secondPasses();
    stop(inThisLight("6-panel-password"), "panel/Panel.qml");
    secureInput.focused = false;
    output.facts.name = "";
    secondPasses();
    stop(inThisLight("6-panel-no-output"), "panel/Panel.qml");
    stop(inThisLight("6-welcome-no-output"), "welcome/WelcomeView.qml");
    output.facts.name = "Built-in Audio";
    tap.allowed = false;
    views->adapters().permission()->setHint("Run \"vornic doctor\": it says what to do.");
    secondPasses();
    ASSERT_TRUE(eventually([&] { return model->tapState() == TapState::needsPermission; }));
    settle();
    stop(inThisLight("6-panel-no-permission"), "panel/Panel.qml");
    stop(inThisLight("6-welcome-no-permission"), "welcome/WelcomeView.qml");
}

TEST_P(TourTest, noBoards) {
    views.reset();
    std::filesystem::remove_all(scratch / "Packs");
    restart();
    views = std::make_unique<Views>(*model);
    themeOf(views->engine())->setProperty("dark", GetParam());
    settle();
    stop(inThisLight("7-panel-no-boards"), "panel/Panel.qml");
    stop(inThisLight("7-simple-no-boards"), "simple/SimpleView.qml");
    stop(inThisLight("7-welcome-no-boards"), "welcome/WelcomeView.qml");
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, TourTest, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "dark" : "light"; });

} // namespace
} // namespace vornic
