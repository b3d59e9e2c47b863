#pragma once

#include "Vornic/keystroke/EventTime.h"
#include "Vornic/keystroke/KeyFilter.h"
#include "Vornic/platform/Clock.h"
#include "Vornic/platform/KeyTap.h"
#include "Vornic/platform/linux/x11/X11Connection.h"

namespace vornic {

/// Hears every key of an X session as raw events of the X Input extension, which reach it whatever
/// window has the focus and whoever holds a grab. Needs no permission. It has a connection of its
/// own: on one that also holds a grab, raw events vanish while the grab lasts.
class X11KeyTap final : public KeyTap {
  public:
    explicit X11KeyTap(const Clock& clock);

    bool start() override;
    void stop() override;

    /// `listening`, or `needsRelaunch` where the X server is gone or has no X Input 2.1.
    TapState refresh() override;
    int fileDescriptor() const override;
    void dispatch() override;
    std::string description() const override;

  private:
    void handle(const xcb_generic_event_t& event);

    const Clock& clock_;
    EventTime eventTime_;
    KeyFilter filter_;
    X11Connection connection_;
    std::uint8_t inputOpcode_ = 0;
};

} // namespace vornic
