#include "Vornic/linux/x11/X11Connection.h"

namespace vornic {

X11Connection::X11Connection(const std::string& display)
    : connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr)) {}

X11Connection::~X11Connection() {
    xcb_disconnect(connection_);
}

bool X11Connection::succeeded(xcb_void_cookie_t request) const {
    const X11Owned<xcb_generic_error_t> error(xcb_request_check(connection_, request));
    return !error && alive();
}

void X11Connection::forEachEvent(const std::function<void(const xcb_generic_event_t&)>& handle) {
    while (const X11Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        handle(*event);
    }
}

} // namespace vornic
