#pragma once

#include "Vornic/ports/TrayIcon.h"

#include <QString>

namespace vornic {

/// A symbol of the program as the tray shows it: light with a dark rim, so that it stands out on
/// panels of either kind. `symbol` is the name of a file in "icons".
/// Thread: main.
TrayIcon::Picture trayPicture(const QString& symbol);

} // namespace vornic
