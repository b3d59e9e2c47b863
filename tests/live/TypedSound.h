#pragma once

#include "tests/live/KeyTyper.h"
#include "tests/live/SinkCapture.h"

#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace vornic {

/// Types keys and hears what comes of them.
class TypedSound {
  public:
    /// A quarter of the softest click that typing dynamics make of the click pack's; silence has
    /// none at all.
    static constexpr float onsetLevel = 0.02F;

    /// Listens to `sink` of the server at `remote`, the usual one if that is empty. `type` types a
    /// key.
    explicit TypedSound(std::function<void()> type, const std::string& sink = "vornic-test-sink",
                        const std::string& remote = {})
        : type_(std::move(type)),
          capture_({.sink = sink, .remote = remote, .quantum = 128, .seconds = 60.0}) {}

    /// Types one key; whether it sounded within half a second.
    bool keySounds() {
        // What sounded before has to end first.
        const std::size_t start = capture_.frames();
        std::size_t from = start;
        while (const auto loud =
                   capture_.waitFor(from, onsetLevel, std::chrono::milliseconds(60))) {
            from = *loud + 1;
        }
        from = capture_.frames();
        type_();
        return capture_.waitFor(from, onsetLevel, std::chrono::milliseconds(500)).has_value();
    }

    /// Types keys until one sounds; false when none did within `limit`.
    bool keysSoundWithin(std::chrono::milliseconds limit = std::chrono::seconds(10)) {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (std::chrono::steady_clock::now() < deadline) {
            if (keySounds()) {
                return true;
            }
        }
        return false;
    }

    /// Waits until the sink is heard at all.
    bool waitUntilRunning() const { return capture_.waitUntilRunning(); }

  private:
    std::function<void()> type_;
    SinkCapture capture_;
};

} // namespace vornic
