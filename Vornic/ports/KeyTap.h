#pragma once

#include "Vornic/ports/EventSource.h"

#include <cstdint>
#include <functional>
#include <string>

namespace vornic {

/// Whether the keys of the whole session can be heard.
enum class TapState : std::uint8_t {
    /// The process has no right to listen.
    needsPermission,
    /// The right is there but does not reach this process until it is started again.
    needsRelaunch,
    /// Every key is heard.
    listening,
};

/// Listens to every key of the session without altering or swallowing any. Thread: key,
/// which waits for it.
class KeyTap : public EventSource {
  public:
    /// (virtual key code, down, monotonic nanoseconds). Repeats are never delivered.
    using KeyHandler = std::function<void(std::int64_t keyCode, bool down, std::uint64_t nanos)>;

    /// Receives every accepted key event. Set while stopped.
    KeyHandler onKey = [](std::int64_t, bool, std::uint64_t) {};

    /// Starts listening; true when it listens, also when it did before. False keeps no state.
    virtual bool start() = 0;

    /// Stops listening; harmless when stopped.
    virtual void stop() = 0;

    /// Looks again whether keys can be heard, starting the tap where that became possible.
    virtual TapState refresh() = 0;

    /// Where the keys come from, for people: "X11 raw keys of :0".
    virtual std::string description() const = 0;
};

} // namespace vornic
