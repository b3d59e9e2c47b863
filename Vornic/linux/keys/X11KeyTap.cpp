#include "Vornic/linux/keys/X11KeyTap.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

namespace vornic {

namespace {

/// X keycodes are the kernel's plus eight, a gap that the protocol's first keyboards left.
constexpr std::uint32_t keycodeOffset = 8;

/// From version 2.1 on, raw events come also while somebody else grabs the keyboard.
bool hasRawEvents(const X11Connection& connection) {
    const X11Owned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.get(), xcb_input_xi_query_version(connection.get(), 2, 1), nullptr));
    return version &&
           std::pair<int, int>(version->major_version, version->minor_version) >= std::pair(2, 1);
}

/// Nothing else may be selected in the same request: the server refuses hierarchy events for the
/// master devices, and the whole mask with them.
bool selectRawKeys(const X11Connection& connection) {
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
                .mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                        XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
    return connection.succeeded(xcb_input_xi_select_events_checked(
        connection.get(), connection.root(), 1, &selection.head));
}

/// The form of the keyboards of the layout that the server has been given.
KeyboardForm formOfServer(const X11Connection& connection) {
    constexpr std::string_view name = "_XKB_RULES_NAMES";
    const X11Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection.get(),
        xcb_intern_atom(connection.get(), 1, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    const X11Owned<xcb_get_property_reply_t> rules(xcb_get_property_reply(
        connection.get(),
        xcb_get_property(connection.get(), 0, connection.root(),
                         atom ? atom->atom : static_cast<xcb_atom_t>(XCB_NONE), XCB_ATOM_STRING, 0,
                         256),
        nullptr));
    if (!rules) {
        return KeyboardForm::ansi;
    }
    // Rules, model, layouts and more, each ended by a zero.
    std::string_view rest(static_cast<const char*>(xcb_get_property_value(rules.get())),
                          static_cast<std::size_t>(xcb_get_property_value_length(rules.get())));
    for (int skipped = 0; skipped < 2; ++skipped) {
        rest.remove_prefix(std::min(rest.size(), rest.find('\0') + std::size_t{1}));
    }
    return formOfLayout(rest.substr(0, rest.find('\0')));
}

/// Returns once everything that the server has told this connection so far is here.
void askForTheLast(const X11Connection& connection) {
    const X11Owned<xcb_get_input_focus_reply_t> answered(xcb_get_input_focus_reply(
        connection.get(), xcb_get_input_focus(connection.get()), nullptr));
}

} // namespace

X11KeyTap::X11KeyTap(const Clock& clock, std::string display)
    : serverTime_(clock), display_(std::move(display)) {}

std::unique_ptr<X11Connection> X11KeyTap::connect() {
    auto connection = std::make_unique<X11Connection>(display_);
    if (!connection->alive()) {
        return nullptr;
    }
    const auto* const extension = xcb_get_extension_data(connection->get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0 || !hasRawEvents(*connection) ||
        !selectRawKeys(*connection)) {
        return nullptr;
    }
    inputOpcode_ = extension->major_opcode;
    return connection;
}

bool X11KeyTap::start() {
    if (connection_) {
        return true;
    }
    connection_ = connect();
    if (!connection_) {
        return false;
    }
    forms_ = KeyboardForms(formOfServer(*connection_));
    noteHeldKeys();
    dispatch();
    return connection_ != nullptr;
}

void X11KeyTap::stop() {
    connection_.reset();
}

void X11KeyTap::noteHeldKeys() {
    filter_.reset();
    const X11Owned<xcb_query_keymap_reply_t> keymap(
        xcb_query_keymap_reply(connection_->get(), xcb_query_keymap(connection_->get()), nullptr));
    if (!keymap) {
        return;
    }
    for (std::uint32_t keycode = keycodeOffset; keycode < 256; ++keycode) {
        if ((keymap->keys[keycode / 8] >> (keycode % 8) & 1) != 0) {
            filter_.heldBefore(keycode - keycodeOffset);
        }
    }
}

TapState X11KeyTap::refresh() {
    return start() ? TapState::listening : TapState::needsRelaunch;
}

int X11KeyTap::fileDescriptor() const {
    return connection_ ? connection_->fileDescriptor() : -1;
}

void X11KeyTap::dispatch() {
    if (!connection_) {
        return;
    }
    connection_->forEachEvent([this](const xcb_generic_event_t& event) {
        if (const auto raw = rawKey(event)) {
            hear(*raw);
        }
    });
    if (!connection_->alive()) {
        stop();
    }
}

bool X11KeyTap::forget() {
    if (!connection_) {
        return true;
    }
    // What the server sends is read into a buffer inside the connection, where keys stay until
    // others take their place. It goes with the connection, so another one takes over, which hears
    // already while this one is asked for the last time. What both were told of counts once.
    std::unique_ptr<X11Connection> next = connect();
    if (!next) {
        return true;
    }
    std::vector<RawKey> both;
    bool heard = false;
    askForTheLast(*connection_);
    connection_->forEachEvent([&](const xcb_generic_event_t& event) {
        if (const auto raw = rawKey(event)) {
            both.push_back(*raw);
            heard = true;
            hear(*raw);
        }
    });
    connection_ = std::move(next);
    askForTheLast(*connection_);
    connection_->forEachEvent([&](const xcb_generic_event_t& event) {
        const auto raw = rawKey(event);
        if (!raw) {
            return;
        }
        heard = true;
        if (const auto known = std::ranges::find(both, *raw); known != both.end()) {
            both.erase(known);
        } else {
            hear(*raw);
        }
    });
    if (!connection_->alive()) {
        stop();
    }
    return !heard;
}

std::optional<X11KeyTap::RawKey> X11KeyTap::rawKey(const xcb_generic_event_t& event) const {
    if (event.response_type != XCB_GE_GENERIC) {
        return std::nullopt;
    }
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    const bool down = generic.event_type == XCB_INPUT_RAW_KEY_PRESS;
    if (generic.extension != inputOpcode_ ||
        (!down && generic.event_type != XCB_INPUT_RAW_KEY_RELEASE)) {
        return std::nullopt;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if (raw.detail < keycodeOffset) {
        return std::nullopt;
    }
    return RawKey{.millis = raw.time,
                  .key = {.keyboard = raw.sourceid, .code = raw.detail - keycodeOffset},
                  .down = down};
}

void X11KeyTap::hear(const RawKey& raw) {
    const std::int64_t keyCode = forms_.keyCode(raw.key.keyboard, raw.key.code);
    if (filter_.accepts(raw.key, keyCode, raw.down)) {
        onKey(keyCode, raw.down, serverTime_.nanos(raw.millis));
    }
}

std::string X11KeyTap::description() const {
    const char* const variable = std::getenv("DISPLAY");
    const std::string display = display_.empty() && variable != nullptr ? variable : display_;
    return "X11 raw keys of " + display;
}

} // namespace vornic
