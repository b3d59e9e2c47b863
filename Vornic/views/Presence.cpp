#include "Vornic/views/Presence.h"

#include "Vornic/views/TrayPicture.h"
#include "VornicCore/base/ReadableText.h"

#include <QCoreApplication>
#include <cmath>
#include <string>
#include <utility>

namespace vornic {

namespace {

/// A tray answers at once where there is one; this is for one that the session starts beside us.
constexpr int trayMillis = 2000;
/// Of the volume, with each notch of the wheel.
constexpr double step = 0.05;

} // namespace

Presence::Presence(AppModel& model, TrayIcon& tray, bool hidden)
    : model_(model), tray_(tray), views_(model), hidden_(hidden) {
    tray_.onActivate = [this](int x, int y) { views_.togglePanel({x, y}); };
    tray_.onScroll = [this](double notches) { model_.setVolume(model_.volume() + notches * step); };
    tray_.onVisibleChange = [this] { trayChanged(); };
    connect(&views_, &Views::refreshed, this, [this] { showState(); });
    showState();
    waitForTray_.setSingleShot(true);
    connect(&waitForTray_, &QTimer::timeout, this, [this] { showWithoutTray(); });
    if (!hidden) {
        if (model.firstStart()) {
            connect(&views_, &Views::welcomed, this, [this] { showWithoutTray(); });
            views_.openWelcome();
        } else {
            waitForTray_.start(trayMillis);
        }
    }
}

void Presence::comeForward() {
    waitForTray_.stop();
    if (model_.files().preview() != nullptr || !model_.files().packs().empty()) {
        views_.openPreview();
    } else {
        views_.showPanelAsWindow();
    }
}

void Presence::trayChanged() {
    // A panel that starts anew is back in a moment. Before the first wait has begun, the user is
    // still being welcomed.
    if (!hidden_ && !tray_.visible() && !tray_.undecided() && shownBefore_) {
        waitForTray_.start(trayMillis);
    }
}

void Presence::showWithoutTray() {
    if (tray_.undecided()) {
        waitForTray_.start(trayMillis);
        return;
    }
    shownBefore_ = true;
    if (tray_.visible()) {
        return;
    }
    if (!model_.settings().toldOfNoTray) {
        model_.change([](Settings& settings) { settings.toldOfNoTray = true; });
        views_.adapters().status()->setNote(QCoreApplication::translate(
            "Presence", "There is no tray on this desktop, so Vornic opens as a window. Closed, it "
                        "plays on; start Vornic again to come back."));
    }
    views_.showPanelAsWindow();
}

void Presence::showState() {
    // Drawn once for each state: this runs with every change of the model.
    if (const QString symbol = symbolOf(model_); symbol != symbol_) {
        symbol_ = symbol;
        picture_ = trayPicture(symbol);
    }
    tray_.show(picture_, "Vornic: " + plainlyVisible(model_.statusLine()));
    if (const MenuState now{model_.soundsOn(), model_.volume(), model_.boardRevision()};
        menu_ != now) {
        menu_ = now;
        showMenu();
    }
}

void Presence::showMenu() {
    using Mark = TrayMenuEntry::Mark;
    const auto text = [](const char* english) {
        return QCoreApplication::translate("Presence", english).toStdString();
    };
    const TrayMenuEntry line;
    std::vector<TrayMenuEntry> boards;
    for (const Board& board : model_.boards()) {
        boards.push_back({.text = plainlyVisible(board.name),
                          .choose = [this, id = board.id] { model_.selectBoard(id); },
                          .mark = Mark::chosenOfSeveral,
                          .marked = model_.board() != nullptr && model_.board()->id == board.id});
    }
    std::vector<TrayMenuEntry> volumes;
    for (const int percent : {100, 75, 50, 25, 10}) {
        volumes.push_back({.text = std::to_string(percent) + " %",
                           .choose = [this, percent] { model_.setVolume(percent / 100.0); },
                           .mark = Mark::chosenOfSeveral,
                           .marked = std::lround(model_.volume() * 100) == percent});
    }
    tray_.setMenu({
        {.text = text(QT_TRANSLATE_NOOP("Presence", "Sounds on")),
         .choose = [this] { model_.setSoundsOn(!model_.soundsOn()); },
         .mark = Mark::ticked,
         .marked = model_.soundsOn()},
        line,
        {.text = text(QT_TRANSLATE_NOOP("Presence", "Keyboard")), .children = std::move(boards)},
        {.text = text(QT_TRANSLATE_NOOP("Presence", "Volume")), .children = std::move(volumes)},
        line,
        {.text = text(QT_TRANSLATE_NOOP("Presence", "Open Vornic…")),
         .choose = [this] { views_.openVornic(); }},
        {.text = text(QT_TRANSLATE_NOOP("Presence", "Settings")),
         .choose = [this] { views_.openSettings(); }},
        {.text = text(QT_TRANSLATE_NOOP("Presence", "Quit")),
         .choose = [this] { views_.onQuit(); }},
    });
}

} // namespace vornic
