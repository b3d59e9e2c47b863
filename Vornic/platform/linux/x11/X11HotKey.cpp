#include "Vornic/platform/linux/x11/X11HotKey.h"

#include <xcb/xcb_keysyms.h>

#include <array>
#include <span>

namespace vornic {

namespace {

// X keysyms.
constexpr xcb_keysym_t symbolK = 0x006b;
constexpr xcb_keysym_t symbolNumLock = 0xff7f;
constexpr std::array<xcb_keysym_t, 4> symbolsAlt{0xffe9, 0xffea, 0xffe7, 0xffe8}; // Alt, then Meta
constexpr std::array<xcb_keysym_t, 2> symbolsSuper{0xffeb, 0xffec};

struct FreeKeySymbols {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};
using KeySymbols = std::unique_ptr<xcb_key_symbols_t, FreeKeySymbols>;

KeySymbols keySymbols(xcb_connection_t* connection) {
    return KeySymbols(xcb_key_symbols_alloc(connection));
}

} // namespace

X11HotKey::X11HotKey() : connection_(connectToX11()) {
    if (connection_) {
        lookUpKeys();
        grab();
    }
}

std::optional<xcb_keycode_t> X11HotKey::keycodeOf(xcb_keysym_t symbol) const {
    const KeySymbols symbols = keySymbols(connection_.get());
    const X11Owned<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols.get(), symbol));
    if (!codes || *codes == XCB_NO_SYMBOL) {
        return std::nullopt;
    }
    return *codes;
}

X11HotKey::Modifiers X11HotKey::modifiers() const {
    Modifiers found;
    const X11Owned<xcb_get_modifier_mapping_reply_t> mapping(xcb_get_modifier_mapping_reply(
        connection_.get(), xcb_get_modifier_mapping(connection_.get()), nullptr));
    if (!mapping) {
        return found;
    }
    const xcb_keycode_t* const keycodes = xcb_get_modifier_mapping_keycodes(mapping.get());
    const KeySymbols symbols = keySymbols(connection_.get());
    const auto add = [&](std::uint16_t& mask, int modifier, xcb_keycode_t code,
                         std::span<const xcb_keysym_t> wanted) {
        for (const xcb_keysym_t symbol : wanted) {
            if (mask == 0 && xcb_key_symbols_get_keysym(symbols.get(), code, 0) == symbol) {
                mask = static_cast<std::uint16_t>(1u << static_cast<unsigned>(modifier));
            }
        }
    };
    // Shift, Lock and Control have fixed places; Mod1 to Mod5 hold what the keymap puts there.
    for (int modifier = XCB_MAP_INDEX_1; modifier <= XCB_MAP_INDEX_5; ++modifier) {
        for (int key = 0; key < mapping->keycodes_per_modifier; ++key) {
            const xcb_keycode_t code = keycodes[modifier * mapping->keycodes_per_modifier + key];
            if (code != 0) {
                add(found.alt, modifier, code, symbolsAlt);
                add(found.super, modifier, code, symbolsSuper);
                add(found.numLock, modifier, code, std::span(&symbolNumLock, 1));
            }
        }
    }
    return found;
}

void X11HotKey::lookUpKeys() {
    key_ = keycodeOf(symbolK);
    modifiers_ = modifiers();
}

void X11HotKey::followMapping() {
    const auto key = key_;
    const Modifiers before = modifiers_;
    lookUpKeys();
    // The server announces a mapping also when only the device changed that types; without a gap in
    // the grab no press falls into one.
    if (key_ != key || modifiers_ != before || !registered_) {
        ungrab();
        grab();
    }
}

void X11HotKey::grab() {
    registered_ = key_.has_value() && modifiers_.alt != 0 && modifiers_.super != 0;
    if (!registered_) {
        return;
    }
    // A grab holds for one exact state, so every state of the locks needs its own.
    const unsigned capsLock = XCB_MOD_MASK_LOCK;
    const unsigned numLock = modifiers_.numLock;
    for (const unsigned locks : {0u, capsLock, numLock, capsLock | numLock}) {
        const auto state = static_cast<std::uint16_t>(modifiers_.alt | modifiers_.super | locks);
        const X11Owned<xcb_generic_error_t> error(xcb_request_check(
            connection_.get(),
            xcb_grab_key_checked(connection_.get(), 0, rootWindow(connection_.get()), state, *key_,
                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        registered_ = registered_ && !error;
    }
    if (!registered_) {
        ungrab();
    }
}

void X11HotKey::ungrab() {
    // Waits for the server, so that whoever is told of the refusal finds the combination free.
    const X11Owned<xcb_generic_error_t> error(
        xcb_request_check(connection_.get(),
                          xcb_ungrab_key_checked(connection_.get(), XCB_GRAB_ANY,
                                                 rootWindow(connection_.get()), XCB_MOD_MASK_ANY)));
}

void X11HotKey::dispatch() {
    while (connection_) {
        const X11Owned<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
        if (!event) {
            break;
        }
        handle(*event);
    }
    if (connection_ && xcb_connection_has_error(connection_.get()) != 0) {
        connection_.reset();
        registered_ = false;
    }
}

void X11HotKey::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7Fu) {
    case XCB_KEY_PRESS:
        // The server repeats a held key as a release and a press of the same moment.
        if (reinterpret_cast<const xcb_key_press_event_t&>(event).time != released_) {
            onPress();
        }
        break;
    case XCB_KEY_RELEASE: {
        // The modifiers' releases come here too while the grab lasts.
        const auto& release = reinterpret_cast<const xcb_key_release_event_t&>(event);
        if (release.detail == key_) {
            released_ = release.time;
        }
        break;
    }
    case XCB_MAPPING_NOTIFY:
        if (reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request !=
            XCB_MAPPING_POINTER) {
            followMapping();
        }
        break;
    default:
        break;
    }
}

int X11HotKey::fileDescriptor() const {
    return connection_ ? xcb_get_file_descriptor(connection_.get()) : -1;
}

} // namespace vornic
