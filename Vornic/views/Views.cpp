#include "Vornic/views/Views.h"

#include "Vornic/views/theme/ThemeObject.h"

#include <QColor>
#include <QDir>
#include <QEventLoop>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QQmlComponent>
#include <QQuickItem>
#include <QScreen>
#include <QTimer>
#include <algorithm>
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

bool desktopIsDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

} // namespace

Views::Views(AppModel& model)
    : model_(model), adapter_(model), studioAdapter_(model), preview_(model), recorder_(model) {
    if (words_.load(":/i18n/vornic_en.qm")) {
        QCoreApplication::installTranslator(&words_);
    }
    // Made for screens, with digits of one width; the desktop's own where it is not installed.
    if (QFontDatabase::families().contains("Inter")) {
        QGuiApplication::setFont(QFont("Inter"));
    }
    theme_ = themeOf(engine_);
    setTheme(desktopIsDark());
    boardDrop_.onDrop = [this](const std::filesystem::path& file) {
        model_.previewBoard(file, [this](const std::string& problem) {
            if (problem.empty()) {
                openPreview();
            }
        });
    };
    // One refresh for all changes of one turn of the event loop.
    const auto oncePerTurn = [this](bool& pending, void (Views::*work)()) {
        if (!pending) {
            pending = true;
            QMetaObject::invokeMethod(
                this,
                [this, &pending, work] {
                    pending = false;
                    (this->*work)();
                },
                Qt::QueuedConnection);
        }
    };
    model_.onChange = [=, this] { oncePerTurn(refreshing_, &Views::refresh); };
    model_.onActivity = [=, this] { oncePerTurn(refreshingActivity_, &Views::refreshActivity); };
}

Views::~Views() {
    model_.onChange = [] {};
    model_.onActivity = [] {};
}

void Views::refresh() {
    adapter_.refresh();
    permissionAdapter_.refresh();
    studioAdapter_.refresh();
    preview_.refresh();
    recorder_.refresh();
    theme_->setProperty("accent", adapter_.accent());
    Q_EMIT refreshed();
}

void Views::refreshActivity() {
    adapter_.refreshTyping();
    studioAdapter_.refreshActivity();
}

void Views::setTheme(bool dark) {
    theme_->setProperty("dark", dark);
    theme_->setProperty("accent", adapter_.accent());
}

std::unique_ptr<QQuickView> Views::make(const QString& file, const QString& title) {
    refresh();
    auto view = std::make_unique<QQuickView>(&engine_, nullptr);
    QVariantMap properties;
    if (!file.startsWith("gallery/")) {
        properties["app"] = QVariant::fromValue(&adapter_);
    }
    if (file.startsWith("studio/")) {
        properties["studio"] = QVariant::fromValue(&studioAdapter_);
        properties["recorder"] = QVariant::fromValue(&recorder_);
    }
    if (file.startsWith("preview/")) {
        properties["preview"] = QVariant::fromValue(&preview_);
    }
    if (file.startsWith("permission/") || file.startsWith("settings/")) {
        properties["permission"] = QVariant::fromValue(&permissionAdapter_);
    }
    view->setInitialProperties(properties);
    view->setTitle(title);
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->setSource(QUrl("qrc:/qt/qml/Vornic/" + file));
    QQuickItem* const root = view->rootObject();
    if (root == nullptr) {
        qFatal("the view %s cannot be loaded", qPrintable(file));
    }
    // Room for the frame that the desktop puts around it.
    constexpr int frame = 60;
    const QSize most = QGuiApplication::primaryScreen()->availableSize() - QSize(0, frame);
    view->resize(
        QSize(static_cast<int>(root->implicitWidth()), static_cast<int>(root->implicitHeight()))
            .boundedTo(most));
    const auto listen = [&](const char* signal, const char* slot) {
        if (root->metaObject()->indexOfSignal(QMetaObject::normalizedSignature(signal + 1)) >= 0) {
            connect(root, signal, this, slot);
        }
    };
    listen(SIGNAL(openVornic()), SLOT(openVornic()));
    listen(SIGNAL(openSettings()), SLOT(openSettings()));
    listen(SIGNAL(openStudio()), SLOT(openStudio()));
    listen(SIGNAL(openPermission()), SLOT(openPermission()));
    if (root->metaObject()->indexOfSignal("closed()") >= 0) {
        connect(root, SIGNAL(closed()), view.get(), SLOT(hide()));
    }
    view->installEventFilter(&boardDrop_);
    listen(SIGNAL(dismissed()), SLOT(dismissPanel()));
    listen(SIGNAL(quit()), SLOT(quit()));
    return view;
}

void Views::open(std::unique_ptr<QQuickView>& view, const QString& file, const QString& title) {
    if (!view) {
        view = make(file, title);
        view->setMinimumSize({420, 320});
    }
    dismissPanel();
    view->show();
    view->raise();
    view->requestActivate();
}

void Views::dismissPanel() {
    if (panel_ && (panel_->flags() & Qt::WindowType_Mask) == Qt::Popup) {
        panel_->hide();
    }
}

void Views::quit() {
    onQuit();
}

void Views::openVornic() {
    if (model_.advanced()) {
        openStudio();
    } else {
        open(simple_, "simple/SimpleView.qml", "Vornic");
    }
}

void Views::openSettings() {
    open(settings_, "settings/SettingsView.qml", tr("Settings"));
}

void Views::openStudio() {
    open(studio_, "studio/StudioView.qml", tr("Studio"));
}

void Views::openPreview() {
    const bool fresh = previewView_ == nullptr;
    open(previewView_, "preview/PreviewView.qml", tr("Board"));
    if (fresh) {
        connect(previewView_.get(), &QWindow::visibleChanged, this, [this](bool visible) {
            if (!visible) {
                model_.dropPreview();
            }
        });
    }
}

void Views::openGallery() {
    open(gallery_, "gallery/GalleryView.qml", tr("Gallery"));
}

void Views::endWelcome() {
    model_.setWelcomed();
    Q_EMIT welcomed();
}

bool Views::eventFilter(QObject* watched, QEvent* event) {
    // Closed by the user, that is; the program closes its windows when it ends, too.
    if (watched == welcome_.get() && event->type() == QEvent::Close && event->spontaneous()) {
        endWelcome();
    }
    return QObject::eventFilter(watched, event);
}

void Views::openWelcome() {
    const bool fresh = welcome_ == nullptr;
    open(welcome_, "welcome/WelcomeView.qml", tr("Welcome"));
    if (fresh) {
        connect(welcome_->rootObject(), SIGNAL(closed()), this, SLOT(endWelcome()));
        welcome_->installEventFilter(this);
    }
}

void Views::offerPermission(PermissionRequest& request, bool needed) {
    permissionAdapter_.offer(request, needed);
    permissionAdapter_.onAnswer = [this] { model_.refreshState(); };
    if (needed) {
        adapter_.onAskForPermission = [this] { openPermission(); };
    }
    refresh();
}

void Views::openPermission() {
    permissionAdapter_.begin();
    open(permission_, "permission/PermissionPage.qml", tr("Input Monitoring"));
}

void Views::makePanel() {
    if (!panel_) {
        panel_ = make("panel/Panel.qml", "Vornic");
        QQuickItem* const root = panel_->rootObject();
        connect(root, &QQuickItem::implicitHeightChanged, this, [this, root] {
            panel_->resize(static_cast<int>(root->implicitWidth()),
                           static_cast<int>(root->implicitHeight()));
        });
    }
}

void Views::togglePanel(QPoint corner) {
    makePanel();
    if (panel_->isVisible()) {
        panel_->hide();
        return;
    }
    panel_->setFlags(Qt::Popup | Qt::FramelessWindowHint);
    const QScreen* screen = QGuiApplication::screenAt(corner);
    const QRect space =
        (screen != nullptr ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    panel_->setPosition(std::clamp(corner.x() - panel_->width() / 2, space.left(),
                                   std::max(space.left(), space.right() - panel_->width())),
                        std::clamp(corner.y(), space.top(),
                                   std::max(space.top(), space.bottom() - panel_->height())));
    panel_->show();
    panel_->requestActivate();
}

void Views::showPanelAsWindow() {
    makePanel();
    panel_->setFlags(Qt::Window);
    panel_->show();
    panel_->raise();
    panel_->requestActivate();
}

void Views::snapshot(const std::filesystem::path& folder) {
    const QDir place(QString::fromStdString(folder.string()));
    place.mkpath(".");
    struct Picture {
        const char* name;
        const char* file;
        int width; // 0: as wide as it wants to be
        const char* tab;
    };
    constexpr std::array pictures{
        Picture{"menu-", "panel/Panel.qml", 0, ""},
        Picture{"simple-", "simple/SimpleView.qml", simpleWidth, ""},
        Picture{"settings-", "settings/SettingsView.qml", 0, ""},
        Picture{"permission-", "permission/PermissionPage.qml", 0, ""},
        Picture{"studio-keys-", "studio/StudioView.qml", studioWidth, "keys"},
        Picture{"studio-sounds-", "studio/StudioView.qml", studioWidth, "sounds"},
    };
    const bool before = theme_->property("dark").toBool();
    for (const bool dark : {false, true}) {
        setTheme(dark);
        for (const Picture& picture : pictures) {
            if (*picture.tab != '\0') {
                adapter_.setStudioTab(picture.tab);
            }
            const auto view = make(picture.file, {});
            QQuickItem* const root = view->rootObject();
            const int width =
                picture.width > 0 ? picture.width : static_cast<int>(root->implicitWidth());
            view->resize(width, static_cast<int>(root->implicitHeight()));
            letRun(settleMillis);
            view->resize(width, static_cast<int>(root->implicitHeight()));
            letRun(50);
            view->grabWindow().save(
                place.filePath(QString(picture.name) + (dark ? "dark" : "light") + ".png"));
        }
    }
    setTheme(before);
}

} // namespace vornic
