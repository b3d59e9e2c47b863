#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/base/JsonRecord.h"
#include "VornicCore/board/Board.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace vornic {

/// How a key feels on the way down.
enum class Feel : std::uint8_t { linear, tactile, clicky };

/// The label is what the choice says.
template <>
struct CaseNames<Feel> {
    static constexpr std::array names{
        CaseName{Feel::linear, "linear", "Even all the way down, no bump"},
        CaseName{Feel::tactile, "tactile", "A small bump before the key lands"},
        CaseName{Feel::clicky, "clicky", "A click on every press"},
    };
};

/// The three simple adjustments of a board. They shape what is rendered and leave the board itself
/// as it is. The defaults change nothing. Thread: any, as everything here.
struct SimpleTweaks {
    /// From −1, lighter, to 1, deeper.
    double deeper = 0;
    /// From −1, softer, to 1, crisper.
    double crisper = 0;
    /// Absent: the board's own.
    std::optional<Feel> feel = std::nullopt;

    bool operator==(const SimpleTweaks&) const = default;
};

/// By the board's id.
using TweaksByBoard = std::map<std::string, SimpleTweaks, std::less<>>;

template <>
struct JsonRecord<SimpleTweaks> {
    static constexpr auto members = std::tuple{JsonMember{"deeper", &SimpleTweaks::deeper},
                                               JsonMember{"crisper", &SimpleTweaks::crisper},
                                               JsonMember{"feel", &SimpleTweaks::feel}};
};

/// The board to render instead of `board`: its character moved by the first two, and every sound
/// on the kind of switch that `feel` names. Values outside their range count as its nearest end,
/// and one that is not a number as 0.
Board tweaked(Board board, const SimpleTweaks& tweaks);

} // namespace vornic
