#pragma once

#include "Vornic/linux/keys/KeyboardForms.h"
#include "Vornic/linux/keys/ServerTime.h"
#include "Vornic/linux/x11/X11Connection.h"
#include "Vornic/ports/Clock.h"
#include "Vornic/ports/KeyTap.h"
#include "Vornic/typing/KeyFilter.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vornic {

/// Hears every key of an X session as raw events of the X Input extension, which come whatever
/// window has the focus and whoever holds a grab. Needs no permission. It has a connection of its
/// own: on one that also holds a grab, raw events vanish while the grab lasts.
///
/// Not for the X display of a Wayland session, where it would hear only some windows: ask
/// `chooseKeySource` first. Thread: key.
class X11KeyTap final : public KeyTap {
  public:
    /// For `display`, or $DISPLAY if that is empty. Connects at `start`.
    explicit X11KeyTap(const Clock& clock, std::string display = {});

    bool start() override;
    void stop() override;

    /// `listening`, or `needsRelaunch` where the server is gone or has no X Input 2.1.
    TapState refresh() override;
    int fileDescriptor() const override;
    void dispatch() override;
    bool forget() override;
    std::string description() const override;

  private:
    /// A connection that is told of every key; none where that is not to be had.
    std::unique_ptr<X11Connection> connect();
    void noteHeldKeys();
    void handle(const xcb_generic_event_t& event);

    ServerTime serverTime_;
    KeyFilter filter_;
    KeyboardForms forms_{KeyboardForm::ansi};
    std::string display_;
    std::unique_ptr<X11Connection> connection_;
    std::uint8_t inputOpcode_ = 0;
    std::uint64_t heard_ = 0; // events
};

} // namespace vornic
