#pragma once

#include <array>
#include <cstdint>

namespace vornic {

/// The sound class that a key plays as: each has a pool of recordings of its own.
enum class KeyClass : std::uint8_t { regular, space, enter, backspace, modifier };

/// Every class, in order.
inline constexpr std::array<KeyClass, 5> allKeyClasses{
    KeyClass::regular, KeyClass::space, KeyClass::enter, KeyClass::backspace, KeyClass::modifier};

/// The class of a virtual key code; a code that nobody knows is regular, and so is Tab. Any thread,
/// without allocation.
KeyClass keyClassOf(std::int64_t keyCode);

} // namespace vornic
