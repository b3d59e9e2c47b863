#pragma once

#include "Vornic/platform/HotKey.h"
#include "Vornic/platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>

namespace vornic {

/// Alt+Super+K by grabs on the root window, one for each state of Caps Lock and Num Lock, on a
/// connection of its own.
class X11HotKey final : public HotKey {
  public:
    /// Grabs at once; the events that come in meanwhile wait for the first `dispatch`, which the
    /// owner therefore calls once before it waits.
    X11HotKey();

    bool registered() const override { return registered_; }
    int fileDescriptor() const override;
    void dispatch() override;

  private:
    /// Modifier bits of the core protocol.
    struct Modifiers {
        std::uint16_t alt = 0;
        std::uint16_t super = 0;
        std::uint16_t numLock = 0;
        bool operator==(const Modifiers&) const = default;
    };

    void lookUpKeys();
    void grab();
    void ungrab();
    void followMapping();
    std::optional<xcb_keycode_t> keycodeOf(xcb_keysym_t symbol) const;
    Modifiers modifiers() const;
    void handle(const xcb_generic_event_t& event);

    X11Connection connection_;
    std::optional<xcb_keycode_t> key_;
    Modifiers modifiers_;
    bool registered_ = false;
    std::optional<xcb_timestamp_t> released_; // when K went up last
};

} // namespace vornic
