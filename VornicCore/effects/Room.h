#pragma once

#include <cstdint>

namespace vornic {

/// The room that the listener hears around the keyboard. Thread: any.
enum class Room : std::uint8_t {
    /// No room at all: the sampler's sound as it is.
    dry,
    /// A small room, 6 per cent wet.
    desk,
    /// A medium room, 9 per cent wet.
    studio,
    /// A medium chamber, 8 per cent wet.
    wood,
};

} // namespace vornic
