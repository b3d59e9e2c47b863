#include "Vornic/views/Views.h"

#include "Vornic/views/theme/ThemeObject.h"

#include <QColor>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQuickItem>
#include <QScreen>
#include <QTimer>
#include <algorithm>

namespace vornic {

namespace {

/// From the press on the tray's icon until its click is told.
constexpr int clickMillis = 400;

/// As large as a view would like to be, and the screen allows.
QSize sizeWanted(const QQuickItem& root) {
    // Room for the frame that the desktop puts around it.
    constexpr int frame = 60;
    const QSize most = QGuiApplication::primaryScreen()->availableSize() - QSize(0, frame);
    return QSize(static_cast<int>(root.implicitWidth()), static_cast<int>(root.implicitHeight()))
        .boundedTo(most);
}

bool desktopIsDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

} // namespace

Views::Views(AppModel& model) : model_(model), adapters_(model) {
    if (words_.load(":/i18n/vornic_en.qm")) {
        QCoreApplication::installTranslator(&words_);
    }
    boardDrop_.onDrop = [this](const std::vector<std::filesystem::path>& files) { look(files); };
    connectRequests();
    connect(adapters_.settings(), &SettingsAdapter::reduceMotionChanged, this, [this] {
        if (theme_ != nullptr) {
            theme_->setProperty("still", adapters_.settings()->reduceMotion());
        }
    });
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
    model_.keys().onShown = [this](std::int64_t code, bool down, Strike strike) {
        adapters_.strike(static_cast<int>(code), down, strike);
    };
    model_.onActivity = [=, this] { oncePerTurn(refreshingActivity_, &Views::refreshActivity); };
}

QQmlEngine& Views::engine() {
    if (!engine_) {
        // Made for screens, with digits of one width; the desktop's own where it is not installed.
        if (QFontDatabase::families().contains("Inter")) {
            QGuiApplication::setFont(QFont("Inter"));
        }
        engine_ = std::make_unique<QQmlEngine>();
        engine_->setNetworkAccessManagerFactory(&network_);
        theme_ = themeOf(*engine_);
        setTheme(desktopIsDark());
        theme_->setProperty("still", adapters_.settings()->reduceMotion());
    }
    return *engine_;
}

Views::~Views() {
    model_.onChange = [] {};
    model_.onActivity = [] {};
    model_.keys().onShown = [](std::int64_t, bool, Strike) {};
}

void Views::connectRequests() {
    const WindowRequests* const asked = adapters_.windows();
    connect(asked, &WindowRequests::closeWindow, this, &Views::close);
    connect(asked, &WindowRequests::openVornic, this, &Views::openVornic);
    connect(asked, &WindowRequests::openSettings, this, &Views::openSettings);
    connect(asked, &WindowRequests::openStudio, this, &Views::openStudio);
    connect(asked, &WindowRequests::openPermission, this, &Views::openPermission);
    connect(asked, &WindowRequests::endWelcome, this, &Views::endWelcome);
    connect(asked, &WindowRequests::openFile, this, [this](const QUrl& file) {
        const std::filesystem::path path = file.toLocalFile().toStdString();
        if (path.extension() == ".vornic") {
            model_.importBoard(path);
        } else {
            look({path});
        }
    });
    connect(asked, &WindowRequests::closePreview, this, [this] {
        if (previewView_) {
            previewView_->hide();
        }
    });
    connect(asked, &WindowRequests::dismissPanel, this, &Views::dismissPanel);
    connect(asked, &WindowRequests::quit, this, [this] { onQuit(); });
}

void Views::refresh() {
    adapters_.refresh();
    if (theme_ != nullptr) {
        theme_->setProperty("accent", adapters_.board()->accent());
    }
    Q_EMIT refreshed();
}

void Views::refreshActivity() {
    adapters_.refreshActivity();
}

void Views::setTheme(bool dark) {
    theme_->setProperty("dark", dark);
    theme_->setProperty("accent", adapters_.board()->accent());
}

std::unique_ptr<QQuickView> Views::make(const QString& file, const QString& title) {
    adapters_.settings()->refreshAutostart();
    refresh();
    auto view = std::make_unique<QQuickView>(&engine(), nullptr);
    // The gallery is of controls only.
    if (!file.startsWith("gallery/")) {
        view->setInitialProperties({{"app", QVariant::fromValue(&adapters_)}});
    }
    view->setTitle(title);
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->setSource(QUrl("qrc:/qt/qml/Vornic/" + file));
    QQuickItem* const root = view->rootObject();
    if (root == nullptr) {
        qFatal("the view %s cannot be loaded", qPrintable(file));
    }
    // How high it would like to be follows from how wide it is, once it was laid out to be drawn.
    // A root without a size of its own would grow out of the window.
    root->setSize(sizeWanted(*root));
    view->resize(root->size().toSize());
    view->grabWindow();
    root->setSize(sizeWanted(*root));
    view->resize(root->size().toSize());
    view->installEventFilter(&boardDrop_);
    view->installEventFilter(this);
    return view;
}

void Views::open(std::unique_ptr<QQuickView>& view, const QString& file, const QString& title) {
    if (!view) {
        view = make(file, title == "Vornic" ? title : title + " – Vornic");
        view->setMinimumSize({420, 320});
        // The welcome is as large as what it shows, and shown once.
        if (&view != &welcome_) {
            remember(*view, file.section('/', 0, 0));
        }
    }
    dismissPanel();
    view->show();
    view->raise();
    view->requestActivate();
}

void Views::remember(QQuickView& view, const QString& name) {
    memory_.restore(name, view);
    connect(&view, &QWindow::visibleChanged, this, [this, &view, name](bool visible) {
        if (!visible) {
            memory_.note(name, view);
        }
    });
}

void Views::rememberIn(const std::filesystem::path& file) {
    memory_.keepIn(file);
    SettingsAdapter& settings = *adapters_.settings();
    settings.setReduceMotion(memory_.reducedMotion().value_or(false));
    connect(&settings, &SettingsAdapter::reduceMotionChanged, this, [this, &settings] {
        const bool reduced = settings.reduceMotion();
        memory_.setReducedMotion(reduced == desktopMotion_ ? std::nullopt : std::optional(reduced));
    });
}

void Views::followMotion(bool reduced) {
    const bool first = !desktopMotion_;
    desktopMotion_ = reduced;
    if (!first || !memory_.reducedMotion()) {
        adapters_.settings()->setReduceMotion(reduced);
    }
}

void Views::dismissPanel() {
    if (panel_ && panel_->flags().testFlag(Qt::FramelessWindowHint)) {
        panel_->hide();
    }
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
    // As wide as a list needs.
    refresh();
    previewView_->resize(
        std::max(previewView_->width(), sizeWanted(*previewView_->rootObject()).width()),
        previewView_->height());
    if (fresh) {
        connect(previewView_.get(), &QWindow::visibleChanged, this, [this](bool visible) {
            if (!visible) {
                model_.files().drop();
            }
        });
    }
}

void Views::look(const std::vector<std::filesystem::path>& files) {
    model_.files().open(files, [this](const std::string& problem) {
        if (problem.empty()) {
            openPreview();
        }
    });
}

void Views::openGallery() {
    open(gallery_, "gallery/GalleryView.qml", tr("Gallery"));
}

void Views::endWelcome() {
    if (welcome_) {
        welcome_->hide();
    }
    model_.setWelcomed();
    Q_EMIT welcomed();
}

void Views::openWelcome() {
    const bool fresh = welcome_ == nullptr;
    open(welcome_, "welcome/WelcomeView.qml", tr("Welcome"));
    if (fresh) {
        growWithContent(*welcome_);
    }
}

void Views::offerPermission(PermissionRequest& request, bool needed) {
    adapters_.permission()->offer(request, needed);
    adapters_.permission()->onAnswer = [this] { model_.refreshState(); };
}

void Views::openPermission() {
    adapters_.permission()->begin();
    open(permission_, "permission/PermissionPage.qml", tr("Input Monitoring"));
}

void Views::makePanel() {
    if (!panel_) {
        panel_ = make("panel/Panel.qml", "Vornic");
        growWithContent(*panel_);
        // A press outside, another window, another program: whatever takes the keyboard away.
        connect(panel_.get(), &QWindow::activeChanged, this, [this] {
            if (!panel_->isActive()) {
                dismissPanel();
                sinceDismissed_.start();
            }
        });
    }
}

void Views::growWithContent(QQuickView& view) {
    QQuickItem* const root = view.rootObject();
    connect(root, &QQuickItem::implicitHeightChanged, &view,
            [&view, root] { view.resize(sizeWanted(*root)); });
}

void Views::togglePanel(QPoint corner) {
    makePanel();
    // The press on the icon that is to close the panel has taken the keyboard from it before.
    const bool justClosed = sinceDismissed_.isValid() && sinceDismissed_.elapsed() < clickMillis;
    sinceDismissed_.invalidate();
    if (panel_->isVisible() || justClosed) {
        panel_->hide();
        return;
    }
    // A window that the desktop gives the keyboard to, unlike a popup.
    panel_->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
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

} // namespace vornic
