#pragma once

#include "VornicCore/keys/KeyGroup.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <variant>

namespace vornic {

/// The two sections of the Studio.
enum class StudioTab : std::uint8_t { keys, sounds };

/// What the inspector of keys has selected.
namespace KeySelection {
struct Group {
    KeyGroup group;
    bool operator==(const Group&) const = default;
};
struct Keys {
    std::set<std::int64_t> keys;
    bool operator==(const Keys&) const = default;
};
/// Every key that plays this sound.
struct Sound {
    std::string sound;
    bool operator==(const Sound&) const = default;
};
struct All {
    bool operator==(const All&) const = default;
};
struct Stabilisers {
    bool operator==(const Stabilisers&) const = default;
};
using Any = std::variant<All, Group, Keys, Sound, Stabilisers>;
} // namespace KeySelection

/// Where the user is in the Studio; not kept when the program ends.
struct StudioState {
    StudioTab studioTab = StudioTab::keys;
    KeySelection::Any selection;
    /// The sound that is edited; the board's first one where this is absent or gone.
    std::optional<std::string> editingSoundID;
    /// Its release instead of its press, where it has one.
    bool editingRelease = false;

    bool operator==(const StudioState&) const = default;
};

} // namespace vornic
