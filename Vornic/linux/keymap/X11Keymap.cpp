#include "Vornic/linux/keymap/X11Keymap.h"

#include <xkbcommon/xkbcommon-x11.h>

// The header calls a member by a word of this language.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitly
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

namespace vornic {

namespace {

constexpr std::uint16_t events =
    XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
constexpr std::uint16_t mapParts =
    XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;

/// Asks for the group alone of the keyboard's state: modifiers would come with every key.
bool listen(xcb_connection_t* connection, std::int32_t keyboard) {
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    const auto request = xcb_xkb_select_events_aux_checked(
        connection, static_cast<xcb_xkb_device_spec_t>(keyboard),
        static_cast<std::uint16_t>(events | XCB_XKB_EVENT_TYPE_STATE_NOTIFY), 0, events, mapParts,
        mapParts, &details);
    return !X11Owned<xcb_generic_error_t>(xcb_request_check(connection, request));
}

} // namespace

X11Keymap::X11Keymap(const std::string& display)
    : connection_(std::make_unique<X11Connection>(display)),
      context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    xcb_connection_t* const server = connection_->get();
    const bool known = connection_->alive() && context_ &&
                       xkb_x11_setup_xkb_extension(server, XKB_X11_MIN_MAJOR_XKB_VERSION,
                                                   XKB_X11_MIN_MINOR_XKB_VERSION,
                                                   XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr,
                                                   nullptr, &firstEvent_, nullptr) == 1;
    keyboard_ = known ? xkb_x11_get_core_keyboard_device_id(server) : -1;
    if (keyboard_ == -1 || !listen(server, keyboard_)) {
        connection_.reset();
    }
}

int X11Keymap::fileDescriptor() const {
    return connection_ ? connection_->fileDescriptor() : -1;
}

void X11Keymap::dispatch() {
    const auto handleAll = [this] {
        connection_->forEachEvent([this](const xcb_generic_event_t& event) { handle(event); });
    };
    if (!connection_) {
        return;
    }
    handleAll();
    while (changed_) {
        changed_ = false;
        read();
        // Events may have come in beside the answers.
        handleAll();
    }
    if (!connection_->alive()) {
        connection_.reset();
    }
}

void X11Keymap::handle(const xcb_generic_event_t& event) {
    changed_ = changed_ || event.response_type == firstEvent_;
}

void X11Keymap::read() {
    const XkbOwned<xkb_keymap> keymap(xkb_x11_keymap_new_from_device(
        context_.get(), connection_->get(), keyboard_, XKB_KEYMAP_COMPILE_NO_FLAGS));
    const XkbOwned<xkb_state> state(
        keymap ? xkb_x11_state_new_from_device(keymap.get(), connection_->get(), keyboard_)
               : nullptr);
    if (state) {
        onLegends(legendsOf(*keymap,
                            xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE)));
    }
}

} // namespace vornic
