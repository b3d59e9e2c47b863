#include "Vornic/linux/hotkey/X11HotKey.h"

#include <array>

namespace vornic {

X11HotKey::X11HotKey(const std::string& display)
    : connection_(std::make_unique<X11Connection>(display)) {
    if (!connection_->alive()) {
        connection_.reset();
        return;
    }
    mapping_ = HotKeyMapping::find(*connection_);
    grab();
}

X11HotKey::~X11HotKey() {
    // A server that only loses the connection frees the grabs when it next looks at it.
    if (registered_) {
        ungrab();
    }
}

void X11HotKey::grab() {
    registered_ = mapping_.has_value();
    if (!mapping_) {
        return;
    }
    // A grab holds for one exact state, so every state of the locks needs its own.
    const unsigned capsLock = XCB_MOD_MASK_LOCK;
    const unsigned numLock = mapping_->numLock;
    for (const unsigned locks : std::array{0U, capsLock, numLock, capsLock | numLock}) {
        registered_ =
            registered_ && connection_->succeeded(xcb_grab_key_checked(
                               connection_->get(), 0, connection_->root(),
                               static_cast<std::uint16_t>(mapping_->modifiers | locks),
                               mapping_->keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    if (!registered_) {
        ungrab();
    }
}

void X11HotKey::ungrab() {
    // Checked only to have it done when this returns.
    connection_->succeeded(xcb_ungrab_key_checked(connection_->get(), XCB_GRAB_ANY,
                                                  connection_->root(), XCB_MOD_MASK_ANY));
    registered_ = false;
}

int X11HotKey::fileDescriptor() const {
    return connection_ ? connection_->fileDescriptor() : -1;
}

void X11HotKey::dispatch() {
    if (!connection_) {
        return;
    }
    const auto handleAll = [this] {
        connection_->forEachEvent([this](const xcb_generic_event_t& event) { handle(event); });
    };
    handleAll();
    while (mappingChanged_) {
        followMapping();
        // Events may have come in beside the answers.
        handleAll();
    }
    if (!connection_->alive()) {
        connection_.reset();
        registered_ = false;
    }
}

void X11HotKey::handle(const xcb_generic_event_t& event) {
    // Events sent by other clients have the highest bit set, and are none of ours.
    switch (event.response_type) {
    case XCB_KEY_PRESS: {
        // While the key is held, all others come here too.
        const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
        // The server repeats a held key by a release and a press of the same millisecond, which no
        // finger can do.
        if (mapping_ && press.detail == mapping_->keycode && press.time != lastRelease_) {
            onPress();
        }
        break;
    }
    case XCB_KEY_RELEASE: {
        const auto& release = reinterpret_cast<const xcb_key_release_event_t&>(event);
        if (mapping_ && release.detail == mapping_->keycode) {
            lastRelease_ = release.time;
        }
        break;
    }
    case XCB_MAPPING_NOTIFY:
        mappingChanged_ =
            mappingChanged_ || reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request !=
                                   XCB_MAPPING_POINTER;
        break;
    default:
        break;
    }
}

void X11HotKey::followMapping() {
    mappingChanged_ = false;
    const auto found = HotKeyMapping::find(*connection_);
    // The server announces a mapping whenever another keyboard is typed on. Grabbing anew for
    // nothing would leave a moment without the combination.
    if (found != mapping_ && connection_->alive()) {
        ungrab();
        mapping_ = found;
        grab();
    }
}

} // namespace vornic
