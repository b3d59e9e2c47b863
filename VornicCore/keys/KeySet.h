#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace vornic::KeySet {

/// The keys that carry a stabiliser.
inline constexpr std::array<std::int64_t, 6> stabilised{
    49, // space
    36, // return
    76, // keypad enter
    51, // delete
    56, // left shift
    60, // right shift
};

/// Whether the key carries a stabiliser. Thread: any, without allocation.
constexpr bool isStabilised(std::int64_t keyCode) {
    return std::ranges::find(stabilised, keyCode) != stabilised.end();
}

} // namespace vornic::KeySet
