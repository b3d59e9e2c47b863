#pragma once

#include <QDBusConnection>
#include <optional>

namespace vornic {

/// What the desktop around this process offers over D-Bus. Thread: main.
struct DesktopServices {
    /// Whether there is a session's bus.
    bool sessionBus = false;
    /// Whether somebody says that they show tray icons.
    bool tray = false;
    /// Whether the running Vornic's is among them; absent while none runs.
    std::optional<bool> trayHasVornic;
    /// Whether there is an accessibility bus, running or to be started.
    bool accessibility = false;
    /// Version of the portal's global shortcuts; absent where there are none, or no portal runs.
    std::optional<unsigned> globalShortcuts;

    /// Looks, and waits for each answer for a second at most. Starts nothing, and asks for nothing
    /// that a desktop could put before the user.
    static DesktopServices look(const QDBusConnection& session = QDBusConnection::sessionBus());
};

/// Whether something in this session asks for an administrator's password when a program needs it;
/// absent where nobody can tell. There can be one only, so the place is taken for a moment where it
/// is free. Thread: main.
std::optional<bool> hasPasswordAgent(const QDBusConnection& system = QDBusConnection::systemBus());

} // namespace vornic
