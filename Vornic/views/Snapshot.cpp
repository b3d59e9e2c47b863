// Pictures of all views, for documents and for whoever looks after them.

#include "Vornic/views/Views.h"

#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QQuickItem>
#include <QTimer>
#include <array>

namespace vornic {

namespace {

constexpr int simpleWidth = 640;
constexpr int studioWidth = 820;
/// How long a view settles before it is pictured.
constexpr int settleMillis = 400;

void letRun(int millis) {
    QEventLoop loop;
    QTimer::singleShot(millis, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

void Views::snapshot(const std::filesystem::path& folder, bool all) {
    const QDir place(QString::fromStdString(folder.string()));
    place.mkpath(".");
    struct Picture {
        const char* name;
        const char* file;
        int width; // 0: as wide as it wants to be
        StudioAdapter::Tab tab = StudioAdapter::Tab::Keys;
        bool always = true;
    };
    constexpr auto anyTab = StudioAdapter::Tab::Keys;
    constexpr std::array pictures{
        Picture{"menu-", "panel/Panel.qml", 0},
        Picture{"simple-", "simple/SimpleView.qml", simpleWidth},
        Picture{"settings-", "settings/SettingsView.qml", 0, anyTab, false},
        Picture{"permission-", "permission/PermissionPage.qml", 0, anyTab, false},
        Picture{"studio-keys-", "studio/StudioView.qml", studioWidth},
        Picture{"studio-sounds-", "studio/StudioView.qml", studioWidth, StudioAdapter::Tab::Sounds},
    };
    engine();
    const bool before = theme_->property("dark").toBool();
    for (const bool dark : {false, true}) {
        setTheme(dark);
        for (const Picture& picture : pictures) {
            if (!all && !picture.always) {
                continue;
            }
            adapters_.studio()->setTab(picture.tab);
            const auto view = make(picture.file, {});
            QQuickItem* const root = view->rootObject();
            const int width =
                picture.width > 0 ? picture.width : static_cast<int>(root->implicitWidth());
            // A window that nobody sees is told of no new size, so the view is.
            const auto fit = [&view, root, width] {
                view->resize(width, static_cast<int>(root->implicitHeight()));
                root->setSize(view->size());
            };
            fit();
            letRun(settleMillis);
            // Nobody sees the window: it is laid out when it is drawn, and what is in it then has
            // the height that follows from its width.
            for (int times = 0; times < 2; ++times) {
                view->grabWindow();
                fit();
                letRun(50);
            }
            view->grabWindow().save(
                place.filePath(QString(picture.name) + (dark ? "dark" : "light") + ".png"));
        }
    }
    setTheme(before);
}

} // namespace vornic
