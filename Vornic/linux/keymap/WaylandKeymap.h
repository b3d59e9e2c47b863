#pragma once

#include "Vornic/linux/keymap/XkbLegends.h"
#include "Vornic/ports/Keymap.h"

#include <wayland-client.h>

#include <cstdint>
#include <memory>

namespace vornic {

/// The keymap of a compositor's first seat with a keyboard, over a connection of its own. The
/// compositor tells the group only to the window in front, so without one the first group counts;
/// keys come only to windows, and this connection has none. Thread: main.
class WaylandKeymap : public Keymap {
  public:
    /// Of $WAYLAND_DISPLAY. Without a compositor there is nothing to wait for.
    WaylandKeymap();
    ~WaylandKeymap() override;

    int fileDescriptor() const override;
    void dispatch() override;

  private:
    friend struct WaylandKeymapEvents;

    void readKeymap(std::uint32_t format, int descriptor, std::uint32_t size);
    void tell();
    void close();

    wl_display* display_ = nullptr; // null: no compositor, or it has gone
    wl_registry* registry_ = nullptr;
    wl_seat* seat_ = nullptr;
    wl_keyboard* keyboard_ = nullptr;
    XkbOwned<xkb_context> context_;
    XkbOwned<xkb_keymap> keymap_;
    xkb_layout_index_t group_ = 0;
};

} // namespace vornic
