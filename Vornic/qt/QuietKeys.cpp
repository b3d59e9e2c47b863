#include "Vornic/qt/QuietKeys.h"

#include "VornicCore/realtime/Fatal.h"

#include <QEvent>
#include <QGuiApplication>
#include <limits>

namespace vornic {

void QuietKeys::install() {
    qGuiApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* window) {
        if (window != nullptr) {
            attach(*window);
        }
    });
}

void QuietKeys::attach(QWindow& window) {
    if (windows_.insert(&window).second) {
        connect(&window, &QObject::destroyed, this,
                [this](QObject* gone) { windows_.erase(gone); });
    }
}

void QuietKeys::keyDown() {
    if (taken_ == std::numeric_limits<std::int64_t>::max()) {
        fatal("more swallowed keys than can be counted");
    }
    ++taken_;
}

bool QuietKeys::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() != QEvent::KeyPress || delivering_) {
        return false;
    }
    if (windows_.contains(receiver)) {
        // The window has its chance first; what it leaves would go on to the system.
        delivering_ = true;
        event->accept();
        receiver->event(event);
        delivering_ = false;
        if (!event->isAccepted()) {
            event->accept();
            keyDown();
        }
        return true;
    }
    if (receiver->isWindowType() && QGuiApplication::focusWindow() == nullptr) {
        keyDown();
        return true;
    }
    return false;
}

} // namespace vornic
