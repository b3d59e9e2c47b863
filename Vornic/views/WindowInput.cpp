// What keys and presses do in every window, whatever it shows.

#include "Vornic/views/Views.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>

namespace vornic {

namespace {

/// A press elsewhere ends what is typed into a text: it counts before what is pressed acts.
void leaveText(const QQuickWindow* window, QPointF place) {
    QQuickItem* const item = window != nullptr ? window->activeFocusItem() : nullptr;
    if (item != nullptr && item->inherits("QQuickTextInput") &&
        !item->contains(item->mapFromScene(place))) {
        item->setFocus(false, Qt::MouseFocusReason);
    }
}

/// Whether a key is one that is typed to be heard, and would press or move a control: only where
/// Tab has brought the focus to it, and it shows that, may it.
bool isOnlyHeard(const QWindow* watched, const QKeyEvent& key) {
    const auto* const window = qobject_cast<const QQuickWindow*>(watched);
    const QQuickItem* const item = window != nullptr ? window->activeFocusItem() : nullptr;
    const bool leads = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab ||
                       key.key() == Qt::Key_Escape ||
                       (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0;
    if (item == nullptr || leads) {
        return false;
    }
    // What takes no focus of its own has it as a row of a list, which shows where the keys go.
    const QVariant shown = item->property("visualFocus");
    return shown.isValid() && !shown.toBool() &&
           item->property("focusPolicy").value<Qt::FocusPolicy>() != Qt::NoFocus;
}

} // namespace

void Views::close(QWindow* window) {
    if (window == welcome_.get()) {
        endWelcome();
    } else if (window != nullptr) {
        window->close();
    }
}

bool Views::pressed(QWindow* window, const QKeyEvent& key) {
    if (key.modifiers() != Qt::ControlModifier) {
        return false;
    }
    switch (key.key()) {
    case Qt::Key_W:
        close(window);
        return true;
    case Qt::Key_Q:
        onQuit();
        return true;
    case Qt::Key_Comma:
        openSettings();
        return true;
    default:
        return false;
    }
}

bool Views::eventFilter(QObject* watched, QEvent* event) {
    auto* const window = qobject_cast<QWindow*>(watched);
    if (event->type() == QEvent::MouseButtonPress) {
        leaveText(qobject_cast<QQuickWindow*>(watched),
                  static_cast<QMouseEvent*>(event)->position());
    }
    if (event->type() == QEvent::KeyPress && pressed(window, *static_cast<QKeyEvent*>(event))) {
        return true;
    }
    if ((event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) &&
        isOnlyHeard(window, *static_cast<QKeyEvent*>(event))) {
        return true;
    }
    // Closed by the user, that is; the program closes its windows when it ends, too.
    if (window != nullptr && window == welcome_.get() && event->type() == QEvent::Close &&
        event->spontaneous()) {
        endWelcome();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vornic
