#include "Vornic/views/Presence.h"

#include "Vornic/views/TrayPicture.h"

#include <QCoreApplication>

namespace vornic {

namespace {

/// A tray answers at once where there is one; this is for one that the session starts beside us.
constexpr int trayMillis = 2000;

QString symbolOf(const AppModel& model) {
    if (model.tapState() != TapState::listening) {
        return "warning";
    }
    const auto reason = model.silence();
    if (!reason) {
        return "keyboard";
    }
    switch (*reason) {
    case Silence::off:
        return "keyboard-off";
    case Silence::microphone:
        return "mic";
    case Silence::password:
        return "lock";
    case Silence::recording:
        return "waveform";
    }
    return "keyboard";
}

} // namespace

Presence::Presence(AppModel& model, TrayIcon& tray, bool hidden)
    : model_(model), tray_(tray), views_(model) {
    tray_.onActivate = [this](int x, int y) { views_.togglePanel({x, y}); };
    connect(&views_, &Views::refreshed, this, [this] { showState(); });
    showState();
    if (!hidden) {
        waitForTray_.setSingleShot(true);
        connect(&waitForTray_, &QTimer::timeout, this, [this] { showWithoutTray(); });
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
    if (model_.preview() != nullptr) {
        views_.openPreview();
    } else {
        views_.showPanelAsWindow();
    }
}

void Presence::showWithoutTray() {
    if (tray_.visible()) {
        return;
    }
    if (!model_.toldOfNoTray()) {
        model_.setToldOfNoTray();
        views_.adapter().setNote(QCoreApplication::translate(
            "Presence", "There is no tray on this desktop, so Vornic opens as a window. Closed, it "
                        "plays on; start Vornic again to come back."));
    }
    views_.showPanelAsWindow();
}

void Presence::showState() {
    // Drawn once for each state: this runs with every key.
    if (const QString symbol = symbolOf(model_); symbol != symbol_) {
        symbol_ = symbol;
        picture_ = trayPicture(symbol);
    }
    tray_.show(picture_, "Vornic: " + model_.statusLine());
}

} // namespace vornic
