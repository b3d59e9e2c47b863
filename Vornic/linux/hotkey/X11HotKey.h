#pragma once

#include "Vornic/linux/hotkey/HotKeyMapping.h"
#include "Vornic/linux/x11/X11Connection.h"
#include "Vornic/ports/HotKey.h"

#include <memory>
#include <optional>
#include <string>

namespace vornic {

/// Alt+Super+K by grabs on the root window, one for each state of Caps Lock and Num Lock, on a
/// connection of its own. It follows changes of the keyboard mapping. Thread: key.
class X11HotKey final : public HotKey {
  public:
    /// Grabs at once, on `display` or on $DISPLAY if that is empty.
    explicit X11HotKey(const std::string& display = {});

    /// The combination is free for others, such as the next Vornic, when this returns.
    ~X11HotKey() override;
    X11HotKey(const X11HotKey&) = delete;
    X11HotKey& operator=(const X11HotKey&) = delete;

    bool registered() const override { return registered_; }
    int fileDescriptor() const override;
    void dispatch() override;

  private:
    void grab();
    void ungrab();
    void handle(const xcb_generic_event_t& event);
    void followMapping();

    std::unique_ptr<X11Connection> connection_;
    std::optional<HotKeyMapping> mapping_;
    bool registered_ = false;
    bool mappingChanged_ = false;
    std::optional<xcb_timestamp_t> lastRelease_; // of the grabbed key, in the server's time
};

} // namespace vornic
