#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vornic {

/// Whether the keys of the whole session can be heard.
enum class TapState {
    /// The process has no right to listen.
    needsPermission,
    /// The right is there but does not reach this process until it is started again.
    needsRelaunch,
    /// Every key is heard.
    listening,
};

/// Listens to every key of the session without altering or swallowing any. All calls on the key
/// thread, which waits for `fileDescriptor` and then calls `dispatch`.
class KeyTap {
  public:
    /// (virtual key code, down, monotonic nanoseconds). Repeats are never delivered.
    using KeyHandler =
        std::function<void(std::int64_t keyCode, bool down, std::uint64_t nanos)>;

    KeyTap() = default;
    KeyTap(const KeyTap&) = delete;
    KeyTap& operator=(const KeyTap&) = delete;
    virtual ~KeyTap() = default;

    /// Receives every accepted key event.
    KeyHandler onKey = [](std::int64_t, bool, std::uint64_t) {};

    /// Starts listening; true when it listens, also when it did before. False keeps no state.
    virtual bool start() = 0;

    /// Stops listening; harmless when stopped.
    virtual void stop() = 0;

    /// Looks again whether keys can be heard, starting the tap where that became possible.
    virtual TapState refresh() = 0;

    /// Readable when events wait; -1 while stopped. May change at each start.
    virtual int fileDescriptor() const = 0;

    /// Delivers every waiting event.
    virtual void dispatch() = 0;

    /// Where the keys come from, for people: "X11 raw keys of :0".
    virtual std::string description() const = 0;
};

} // namespace vornic
