#pragma once

#include "Vornic/linux/keys/KeyboardForms.h"
#include "Vornic/linux/keys/ServerTime.h"
#include "Vornic/linux/x11/X11Connection.h"
#include "Vornic/ports/Clock.h"
#include "Vornic/ports/KeyTap.h"
#include "Vornic/typing/KeyFilter.h"

#include <cstdint>
#include <memory>
#include <optional>
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
    /// A press or a release as the server tells of it.
    struct RawKey {
        std::uint32_t millis = 0; // the server's time
        NativeKey key;
        bool down = false;
        bool operator==(const RawKey&) const = default;
    };

    /// A connection that is told of every key; none where that is not to be had.
    std::unique_ptr<X11Connection> connect();
    void noteHeldKeys();
    /// The key that an event is about, if any.
    std::optional<RawKey> rawKey(const xcb_generic_event_t& event) const;
    void hear(const RawKey& raw);

    ServerTime serverTime_;
    KeyFilter filter_;
    KeyboardForms forms_{KeyboardForm::ansi};
    std::string display_;
    std::unique_ptr<X11Connection> connection_;
    std::uint8_t inputOpcode_ = 0;
};

} // namespace vornic
