#pragma once

#include <cstdint>

namespace vornic {

/// The sound class that a key plays as: each has a pool of recordings of its own.
enum class KeyClass : std::uint8_t { regular, space, enter, backspace, modifier };

/// The class of a virtual key code; a code that nobody knows is regular, and so is Tab.
/// Thread: any, without allocation.
KeyClass keyClassOf(std::int64_t keyCode);

} // namespace vornic
