#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vornic {

/// A key and what others call it.
struct KnownKey {
    /// The virtual key code.
    std::int64_t code;
    /// Its number in the kernel's input layer; scan codes of the first set up to 83 are the same.
    std::uint32_t evdev;
    /// The web's name of the place on the keyboard, whatever is printed there: "KeyA", "Digit1".
    std::string_view web;
    /// Further names, in lower case without "_", separated by blanks.
    std::string_view others;
};

/// Keys without a virtual key code of their own get this plus their evdev code: stable, outside the
/// table, and as audible as any other.
inline constexpr std::int64_t firstForeignKeyCode = 1000;

/// Every key that has a name; no two share a code. Thread: any.
std::span<const KnownKey> knownKeys();

/// The virtual key code of a key of the kernel's input layer. Thread: any, without allocation.
std::int64_t keyCodeOfEvdev(std::uint32_t evdev);

/// The key with that web name, by the letter. Thread: any.
std::optional<std::int64_t> keyCodeOfWebName(std::string_view name);

/// The key that programs call so, in whatever case and with or without "_": web names, "left
/// shift", "shift_l", "PageUp", "a". Thread: any.
std::optional<std::int64_t> keyCodeOfAnyName(std::string_view name);

/// The web name of a key; for one that has none, "Key" and its code. Thread: any.
std::string webNameOf(std::int64_t keyCode);

} // namespace vornic
