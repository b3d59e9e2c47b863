#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/effects/Room.h"

#include <array>
#include <cstdint>

namespace vornic {

/// Where the keyboard lies: in front of the listener, or right under the fingers.
enum class Placement : std::uint8_t { desk, close };

template <>
struct CaseNames<Placement> {
    static constexpr std::array names{
        CaseName{Placement::desk, "desk", "On the desk"},
        CaseName{Placement::close, "close", "Close"},
    };
};

template <>
struct CaseNames<Room> {
    static constexpr std::array names{
        CaseName{Room::dry, "dry", "Dry"},
        CaseName{Room::desk, "desk", "Desk"},
        CaseName{Room::studio, "studio", "Small studio"},
        CaseName{Room::wood, "wood", "Wood room"},
    };
};

/// Where the listener hears the keyboard. The defaults are a keyboard on a bare desk, with the
/// listener at it, its keys spread to their full width, in the desk's small room.
/// Thread: any, as everything here.
struct StageSpec {
    Placement placement = Placement::desk;
    /// From 0, at the keyboard, to 1, a step back: it shapes the early reflection off the desk.
    double distance = 0;
    /// The stereo width, from 0 (all keys in the middle) to 1.
    double width = 1;
    Room room = Room::desk;
    /// Whether a mat lies on the desk, which damps the early reflection.
    bool deskMat = false;

    bool operator==(const StageSpec&) const = default;
};

} // namespace vornic
