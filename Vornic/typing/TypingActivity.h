#pragma once

#include <cstdint>
#include <map>
#include <optional>

namespace vornic {

/// What the views show of the typing: whether somebody types and the last key. Kept up to date
/// also while the program is quiet. Thread: main.
class TypingActivity {
  public:
    /// A key went down at `seconds` of the monotonic clock.
    void keyDown(std::int64_t keyCode, double seconds);

    /// A key was let go.
    void keyUp(std::int64_t keyCode) { pressed_.erase(keyCode); }

    /// The keys that are down, each with when it went down. One whose way up was never heard (the
    /// system may keep that to itself) counts as let go after a few seconds.
    const std::map<std::int64_t, double>& pressed() const { return pressed_; }

    /// Brings `typing` and `pressed` up to date; true when one of them changed.
    bool refresh(double seconds);

    /// Whether a key went down less than a quarter of a second ago, as of the last refresh.
    bool typing() const { return typing_; }

    /// The key that went down last, while it is down or somebody types: nobody needs it longer, and
    /// what is not kept cannot be read.
    std::optional<std::int64_t> lastCode() const { return lastCode_; }

    /// When it went down, seconds of the monotonic clock.
    std::optional<double> lastKey() const { return lastKey_; }

  private:
    bool typing_ = false;
    std::optional<std::int64_t> lastCode_;
    std::optional<double> lastKey_;
    std::map<std::int64_t, double> pressed_;
};

} // namespace vornic
