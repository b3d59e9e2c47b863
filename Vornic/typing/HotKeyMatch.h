#pragma once

#include <cstdint>
#include <set>

namespace vornic {

/// Recognises Option-Command-K (Alt+Super+K) among all keys, where nobody else does. Either side's
/// modifiers count, and with Control or Shift it is another combination. Key thread.
class HotKeyMatch {
  public:
    /// Takes in one key event without repeats; true when it completes the combination.
    bool key(std::int64_t keyCode, bool down);

    /// Forgets which keys are down, after a time in which events were missed.
    void reset() { down_.clear(); }

  private:
    bool isDown(std::int64_t left, std::int64_t right) const;

    std::set<std::int64_t> down_;
};

} // namespace vornic
