#include "Vornic/platform/linux/x11/X11KeyTap.h"

#include "Vornic/platform/linux/EvdevKeyCodes.h"

#include <xcb/xinput.h>

#include <cstdlib>

namespace vornic {

namespace {

/// X key codes are the kernel's plus eight, a gap the protocol has kept.
constexpr std::uint32_t x11KeyCodeOffset = 8;

/// From version 2.1 on, raw events arrive while somebody else grabs the keyboard.
bool hasRawEvents(xcb_connection_t* connection) {
    const X11Owned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 1), nullptr));
    return version && (version->major_version > 2 ||
                       (version->major_version == 2 && version->minor_version >= 1));
}

bool selectRawKeys(xcb_connection_t* connection) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                      XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                          XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
    // Checked, since a refused selection would otherwise look like a silent keyboard.
    const X11Owned<xcb_generic_error_t> error(
        xcb_request_check(connection, xcb_input_xi_select_events_checked(
                                          connection, rootWindow(connection), 1, &selection.head)));
    return !error;
}

} // namespace

X11KeyTap::X11KeyTap(const Clock& clock) : clock_(clock), eventTime_(clock, Timebase{1, 1}) {}

bool X11KeyTap::start() {
    if (connection_) {
        return true;
    }
    X11Connection connection = connectToX11();
    if (!connection) {
        return false;
    }
    const auto* const extension = xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0 || !hasRawEvents(connection.get()) ||
        !selectRawKeys(connection.get())) {
        return false;
    }
    inputOpcode_ = extension->major_opcode;
    filter_.reset();
    connection_ = std::move(connection);
    // Events may have come in beside the replies; no readable descriptor would tell of them.
    dispatch();
    return connection_ != nullptr;
}

void X11KeyTap::stop() {
    connection_.reset();
}

TapState X11KeyTap::refresh() {
    return start() ? TapState::listening : TapState::needsRelaunch;
}

int X11KeyTap::fileDescriptor() const {
    return connection_ ? xcb_get_file_descriptor(connection_.get()) : -1;
}

void X11KeyTap::dispatch() {
    while (connection_) {
        const X11Owned<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
        if (!event) {
            break;
        }
        handle(*event);
    }
    if (connection_ && xcb_connection_has_error(connection_.get()) != 0) {
        stop();
    }
}

void X11KeyTap::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7Fu) != XCB_GE_GENERIC) {
        return;
    }
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != inputOpcode_ || (generic.event_type != XCB_INPUT_RAW_KEY_PRESS &&
                                              generic.event_type != XCB_INPUT_RAW_KEY_RELEASE)) {
        return;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if (raw.detail < x11KeyCodeOffset) {
        return;
    }
    const bool down = generic.event_type == XCB_INPUT_RAW_KEY_PRESS;
    const auto key = filter_.accept(virtualKeyCode(raw.detail - x11KeyCodeOffset), down);
    if (key) {
        onKey(key->keyCode, key->down,
              eventTime_.nanos(nanosOfWrappedMillis(raw.time, clock_.nanos())));
    }
}

std::string X11KeyTap::description() const {
    const char* const display = std::getenv("DISPLAY");
    return "X11 display " + std::string(display != nullptr ? display : "");
}

} // namespace vornic
