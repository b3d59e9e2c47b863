#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/BoardDrop.h"
#include "Vornic/views/NoNetwork.h"
#include "Vornic/views/WindowMemory.h"
#include "Vornic/views/shared/Adapters.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QObject>
#include <QPoint>
#include <QQmlEngine>
#include <QQuickView>
#include <QTranslator>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vornic {

/// Every window of the program, each made when it is first opened. Thread: main.
class Views : public QObject {
    Q_OBJECT

  public:
    /// `model` outlives it. Takes over the model's `onChange` and `onActivity`.
    explicit Views(AppModel& model);
    ~Views() override;

    Adapters& adapters() { return adapters_; }
    /// Made with the first window: in the tray alone it would be half of the program's memory.
    QQmlEngine& engine();

    /// Offers "Turn on Input Monitoring…"; `request` outlives this object. `needed`: keys cannot be
    /// heard without it in this session.
    void offerPermission(PermissionRequest& request, bool needed);

    /// The Studio where the advanced editor is on, otherwise the simple window.
    void openVornic();
    void openSettings();
    void openStudio();
    void openPermission();
    /// Every control in every state, for who works on them.
    void openGallery();
    /// What a first start shows.
    void openWelcome();
    /// What the model looks at. Closing the window drops it.
    void openPreview();
    /// Reads board files and packs, and then lets the user look at them.
    void look(const std::vector<std::filesystem::path>& files);
    /// Closes the panel where it is the tray's; as a window of its own it stays.
    void dismissPanel();
    /// Opens the panel beside `corner`, a place on the screen, or closes it when it is open.
    void togglePanel(QPoint corner);
    /// Opens the panel as an ordinary window: for desktops without a tray.
    void showPanelAsWindow();

    /// Keeps in this file what the windows remember from run to run; before the first one opens.
    void rememberIn(const std::filesystem::path& file);
    /// The desktop says whether nothing is to move by itself. The user's own word lasts until it
    /// says something else.
    void followMotion(bool reduced);

    /// A fresh window with the view of that QML file below "qrc:/qt/qml/Vornic". It must not
    /// outlive this object.
    std::unique_ptr<QQuickView> make(const QString& file, const QString& title);

    /// The windows that were opened so far; null before that.
    const QQuickView* panel() const { return panel_.get(); }
    const QQuickView* simple() const { return simple_.get(); }
    const QQuickView* settings() const { return settings_.get(); }
    const QQuickView* studio() const { return studio_.get(); }
    const QQuickView* preview() const { return previewView_.get(); }
    const QQuickView* welcome() const { return welcome_.get(); }
    const QQuickView* permission() const { return permission_.get(); }

  Q_SIGNALS:
    /// The views have read the model anew.
    void refreshed();
    /// The user has seen what a first start shows.
    void welcomed();

  public:
    std::function<void()> onQuit = [] {};

    /// Pictures of panel, simple window and Studio, light and dark, as PNG files in `folder`, which
    /// is made; with `all` of settings and permission too. Blocks. Images that cannot be written
    /// are left out.
    void snapshot(const std::filesystem::path& folder, bool all = false);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void connectRequests();
    void refresh();
    void refreshActivity();
    void endWelcome();
    void close(QWindow* window);
    /// Does what a key does in every window; whether it does anything.
    bool pressed(QWindow* window, const QKeyEvent& key);
    static void growWithContent(QQuickView& view);
    void open(std::unique_ptr<QQuickView>& view, const QString& file, const QString& title);
    void remember(QQuickView& view, const QString& name);
    void makePanel();
    void setTheme(bool dark);

    AppModel& model_;
    Adapters adapters_;
    QTranslator words_;
    NoNetwork network_;                  // before the engine, which uses it to its end
    std::unique_ptr<QQmlEngine> engine_; // none before the first window
    QObject* theme_ = nullptr;           // the engine's
    BoardDrop boardDrop_;
    WindowMemory memory_;
    std::optional<bool> desktopMotion_;
    std::unique_ptr<QQuickView> panel_, simple_, settings_, studio_, previewView_, welcome_,
        gallery_, permission_;
    QElapsedTimer sinceDismissed_; // since the panel went away by itself
    bool refreshing_ = false;
    bool refreshingActivity_ = false;
};

} // namespace vornic
