#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace vornic {

struct DisconnectX11 {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// A connection to the X server of $DISPLAY, closed at the end of its life.
using X11Connection = std::unique_ptr<xcb_connection_t, DisconnectX11>;

struct FreeX11 {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error that xcb allocated.
template <typename Type>
using X11Owned = std::unique_ptr<Type, FreeX11>;

/// Connects to the X server of $DISPLAY; null when there is none.
inline X11Connection connectToX11() {
    X11Connection connection(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(connection.get()) == 0 ? std::move(connection) : nullptr;
}

/// The root window of the first screen.
inline xcb_window_t rootWindow(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

} // namespace vornic
