#pragma once

#include <QDBusConnection>
#include <optional>

namespace vornic {

/// What the desktop around this process offers over D-Bus.
struct DesktopServices {
    /// Whether there is a session's bus.
    bool sessionBus = false;
    /// Whether somebody shows tray icons.
    bool tray = false;
    /// Whether the accessibility bus can be reached.
    bool accessibility = false;
    /// Version of the portal's global shortcuts; absent where there are none.
    std::optional<unsigned> globalShortcuts;

    /// Looks, and waits for each answer for a second at most.
    static DesktopServices look(const QDBusConnection& session = QDBusConnection::sessionBus());
};

} // namespace vornic
