#include "Vornic/linux/keymap/WaylandKeymap.h"

#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <string_view>

namespace vornic {

/// What the compositor says, handed on.
struct WaylandKeymapEvents {
    static WaylandKeymap& of(void* data) { return *static_cast<WaylandKeymap*>(data); }

    static void global(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                       std::uint32_t /*version*/) {
        if (of(data).seat_ == nullptr && std::string_view(interface) == wl_seat_interface.name) {
            of(data).seat_ =
                static_cast<wl_seat*>(wl_registry_bind(registry, name, &wl_seat_interface, 1));
            wl_seat_add_listener(of(data).seat_, &seatListener, data);
        }
    }
    static void globalGone(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

    static void capabilities(void* data, wl_seat* seat, std::uint32_t capabilities) {
        const bool has = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
        if (has && of(data).keyboard_ == nullptr) {
            of(data).keyboard_ = wl_seat_get_keyboard(seat);
            wl_keyboard_add_listener(of(data).keyboard_, &keyboardListener, data);
        } else if (!has && of(data).keyboard_ != nullptr) {
            wl_keyboard_destroy(of(data).keyboard_);
            of(data).keyboard_ = nullptr;
        }
    }
    static void seatName(void* /*data*/, wl_seat* /*seat*/, const char* /*name*/) {}

    static void keymap(void* data, wl_keyboard* /*keyboard*/, std::uint32_t format, int descriptor,
                       std::uint32_t size) {
        of(data).readKeymap(format, descriptor, size);
    }
    static void enter(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                      wl_surface* /*surface*/, wl_array* /*keys*/) {}
    static void leave(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                      wl_surface* /*surface*/) {}
    static void key(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                    std::uint32_t /*time*/, std::uint32_t /*key*/, std::uint32_t /*state*/) {}
    static void modifiers(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                          std::uint32_t /*depressed*/, std::uint32_t /*latched*/,
                          std::uint32_t /*locked*/, std::uint32_t group) {
        if (of(data).group_ != group) {
            of(data).group_ = group;
            of(data).tell();
        }
    }
    static void repeat(void* /*data*/, wl_keyboard* /*keyboard*/, std::int32_t /*rate*/,
                       std::int32_t /*delay*/) {}

    static constexpr wl_registry_listener registryListener{.global = global,
                                                           .global_remove = globalGone};
    static constexpr wl_seat_listener seatListener{.capabilities = capabilities, .name = seatName};
    static constexpr wl_keyboard_listener keyboardListener{.keymap = keymap,
                                                           .enter = enter,
                                                           .leave = leave,
                                                           .key = key,
                                                           .modifiers = modifiers,
                                                           .repeat_info = repeat};
};

WaylandKeymap::WaylandKeymap()
    : display_(wl_display_connect(nullptr)), context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    if (display_ == nullptr) {
        return;
    }
    registry_ = wl_display_get_registry(display_);
    wl_registry_add_listener(registry_, &WaylandKeymapEvents::registryListener, this);
    wl_display_flush(display_);
}

WaylandKeymap::~WaylandKeymap() {
    close();
}

void WaylandKeymap::close() {
    if (keyboard_ != nullptr) {
        wl_keyboard_destroy(keyboard_);
    }
    if (seat_ != nullptr) {
        wl_seat_destroy(seat_);
    }
    if (registry_ != nullptr) {
        wl_registry_destroy(registry_);
    }
    if (display_ != nullptr) {
        wl_display_disconnect(display_);
    }
    keyboard_ = nullptr;
    seat_ = nullptr;
    registry_ = nullptr;
    display_ = nullptr;
}

int WaylandKeymap::fileDescriptor() const {
    return display_ != nullptr ? wl_display_get_fd(display_) : -1;
}

void WaylandKeymap::dispatch() {
    if (display_ == nullptr) {
        return;
    }
    while (wl_display_prepare_read(display_) != 0) {
        wl_display_dispatch_pending(display_);
    }
    pollfd readable{.fd = wl_display_get_fd(display_), .events = POLLIN, .revents = 0};
    // Never waits: a read without anything to read would.
    if (poll(&readable, 1, 0) == 1) {
        wl_display_read_events(display_);
    } else {
        wl_display_cancel_read(display_);
    }
    wl_display_dispatch_pending(display_);
    wl_display_flush(display_);
    if (wl_display_get_error(display_) != 0) {
        close();
    }
}

void WaylandKeymap::readKeymap(std::uint32_t format, int descriptor, std::uint32_t size) {
    void* const text = format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 && size > 0
                           ? mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0)
                           : MAP_FAILED;
    ::close(descriptor);
    if (text == MAP_FAILED) {
        return;
    }
    const auto* const begin = static_cast<const char*>(text);
    keymap_.reset(xkb_keymap_new_from_buffer(context_.get(), begin, strnlen(begin, size),
                                             XKB_KEYMAP_FORMAT_TEXT_V1,
                                             XKB_KEYMAP_COMPILE_NO_FLAGS));
    munmap(text, size);
    tell();
}

void WaylandKeymap::tell() {
    if (keymap_) {
        onLegends(legendsOf(*keymap_, group_));
    }
}

} // namespace vornic
