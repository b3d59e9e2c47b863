#pragma once

#include "VornicCore/keys/KeyboardLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace vornic {

inline constexpr std::array mechanical{LayoutID::sixty, LayoutID::sixtyFive, LayoutID::seventyFive,
                                       LayoutID::tkl, LayoutID::full};

inline const LayoutKey& key(LayoutID id, std::int64_t code) {
    return *layout(id).find(code);
}

/// Whether the layout has exactly this key.
inline testing::AssertionResult has(LayoutID id, const LayoutKey& wanted) {
    if (std::ranges::find(layout(id).keys, wanted) != layout(id).keys.end()) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << rawString(id) << " lacks " << wanted.id() << " " << wanted.label;
}

/// The right end of the keys of a row that begin left of `limit`.
inline double rowEnd(LayoutID id, double y, double limit) {
    double end = 0;
    for (const LayoutKey& each : layout(id).keys) {
        if (each.y == y && each.x < limit) {
            end = std::max(end, each.x + each.w);
        }
    }
    return end;
}

} // namespace vornic
