#pragma once

#include <compare>
#include <cstdint>
#include <set>

namespace vornic {

/// One key of one keyboard, in the system's own numbers.
struct NativeKey {
    /// Tells keyboards apart, so that the same key may be down on two of them.
    std::uint32_t keyboard = 0;
    std::uint32_t code = 0;

    auto operator<=>(const NativeKey&) const = default;
};

/// Decides which events of a key are heard: repeats are not, and Caps Lock counts once per press
/// and not on its release. Thread: key, as everything here.
class KeyFilter {
  public:
    /// Says that a key with the native code `code` was down before listening began, on whatever
    /// keyboard: its repeats are dropped and its release is heard.
    void heldBefore(std::uint32_t code) { heldBefore_.insert(code); }

    /// Takes in one event of `key`, whose virtual key code is `keyCode`; false when it is to be
    /// dropped. A release is heard only of a key that is down: some programs that simulate keys
    /// release one twice.
    bool accepts(NativeKey key, std::int64_t keyCode, bool down);

    /// Forgets which keys of `keyboard` are down, since it is gone.
    void forgetKeyboard(std::uint32_t keyboard);

    /// Forgets which keys are down, after a time in which events were missed.
    void reset();

  private:
    bool acceptsPress(NativeKey key);
    bool acceptsRelease(NativeKey key);

    std::set<NativeKey> down_;
    std::set<std::uint32_t> heldBefore_;
};

} // namespace vornic
