#pragma once

#include "Vornic/linux/keymap/XkbLegends.h"
#include "Vornic/linux/x11/X11Connection.h"
#include "Vornic/ports/Keymap.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vornic {

/// The keymap of an X server. It is told of changes of the keymap and of the group, of no key.
/// Thread: main.
class X11Keymap : public Keymap {
  public:
    /// Of `display`, or $DISPLAY if that is empty. Without a server, or one that does not know
    /// keymaps, there is nothing to wait for.
    explicit X11Keymap(const std::string& display = {});

    int fileDescriptor() const override;

    /// The first call reads the keymap.
    void dispatch() override;

  private:
    void handle(const xcb_generic_event_t& event);
    void read();

    std::unique_ptr<X11Connection> connection_; // null: no server, or it has gone
    XkbOwned<xkb_context> context_;
    std::int32_t keyboard_ = -1;
    std::uint8_t firstEvent_ = 0;
    bool changed_ = true;
};

} // namespace vornic
