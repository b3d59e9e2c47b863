#pragma once

#include "VornicCore/board/KeySelection.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vornic {

/// The two sections of the Studio.
enum class StudioTab : std::uint8_t { keys, sounds };

/// Where the user is in the Studio; not kept when the program ends.
/// Thread: any, as everything here.
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
