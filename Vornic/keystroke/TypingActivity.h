#pragma once

#include <cstdint>
#include <optional>

namespace vornic {

/// What the views show of the typing: whether somebody types and the last key. Kept up to date
/// also while the program is quiet. Main thread.
class TypingActivity {
  public:
    /// A key went down at `seconds` of the monotonic clock.
    void keyDown(std::int64_t keyCode, double seconds);

    /// Brings `typing` up to date; true when it changed.
    bool refresh(double seconds);

    /// Whether a key went down less than a quarter of a second ago, as of the last refresh.
    bool typing() const { return typing_; }

    /// The key that went down last; absent before the first.
    std::optional<std::int64_t> lastCode() const { return lastCode_; }

    /// When it went down, seconds of the monotonic clock.
    std::optional<double> lastKey() const { return lastKey_; }

  private:
    bool typing_ = false;
    std::optional<std::int64_t> lastCode_;
    std::optional<double> lastKey_;
};

} // namespace vornic
