#pragma once

#include <cstdint>
#include <set>
#include <utility>

namespace vornic {

/// Recognises Option-Command-K (Alt+Super+K) among all keys, where nobody else does. Either side's
/// modifiers count, on whatever keyboard, and with Control or Shift it is another combination.
/// Thread: key.
class HotKeyMatch {
  public:
    /// Takes in one key event of a keyboard, without repeats; true when it completes the
    /// combination.
    bool key(std::uint32_t keyboard, std::int64_t keyCode, bool down);

    /// Forgets the keys that are down on `keyboard`, whose releases will not be heard.
    void forgetKeyboard(std::uint32_t keyboard);

  private:
    bool isDown(std::int64_t left, std::int64_t right) const;

    std::set<std::pair<std::uint32_t, std::int64_t>> down_; // keyboard and key code
};

} // namespace vornic
