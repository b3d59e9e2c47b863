#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <array>
#include <cstddef>
#include <optional>

namespace vornic {

/// Makes `value` as new, also where nobody reads it again and the compiler would leave that out:
/// for what tells which key was pressed. Thread: real-time.
template <typename Type>
void forget(Type& value) VORNIC_REALTIME {
    value = Type{};
    asm volatile("" : : "r"(&value) : "memory");
}

/// An empty one would keep the value that it had. Thread: real-time.
template <typename Type>
void forget(std::optional<Type>& value) VORNIC_REALTIME {
    if (value) {
        forget(*value);
    }
    value.reset();
}

/// Overwrites what calls that have ended left on this thread's stack. Thread: any.
[[gnu::noinline]] inline void forgetStack() noexcept {
    // Deeper than the way of a key reaches.
    std::array<std::byte, std::size_t{32} * 1024> left;
    left.fill(std::byte{});
    asm volatile("" : : "r"(left.data()) : "memory");
}

} // namespace vornic
