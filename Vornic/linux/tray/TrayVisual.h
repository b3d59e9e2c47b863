#pragma once

#include "Vornic/linux/x11/X11Connection.h"

#include <cstdint>

namespace vornic {

/// How the pixels of a window are made. Thread: main, as everything here.
struct TrayVisual {
    xcb_visualid_t id = 0;
    std::uint8_t depth = 0;
};

/// What the tray wants its icons' windows to be: the visual that its property `property` names
/// where that has an alpha channel, or else the root window's.
TrayVisual trayVisual(const X11Connection& connection, xcb_window_t tray, xcb_atom_t property);

} // namespace vornic
