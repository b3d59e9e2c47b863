#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/keys/KeyGroup.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace vornic {

/// Which keys of a board are edited together.
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

/// Whether the groups themselves are edited, and not what single keys override. Thread: any.
bool namesGroups(const Any& selection);

/// The keys of the board's drawn keyboard that a selection names; listed keys count wherever they
/// are. Thread: any.
std::set<std::int64_t> keysOf(const Any& selection, const Board& board);

/// What the selection itself says: of its groups, or of its keys; what nothing is set for says
/// nothing. Thread: any.
std::vector<Assignment> assignmentsOf(const Any& selection, const Board& board);

/// What lies below the first selected key's own values: its group's. Below a group there is only
/// the board. Thread: any.
Assignment inheritedBy(const Any& selection, const Board& board);

/// Changes what the selection itself says, and keeps no override that overrides nothing any more.
/// Thread: any.
void assign(Board& board, const Any& selection, const std::function<void(Assignment&)>& change);

/// Gives the selected keys back to their groups. Thread: any.
void reset(Board& board, const Any& selection);

/// Whether a selected key overrides its group. Thread: any.
bool overrides(const Any& selection, const Board& board);
} // namespace KeySelection

} // namespace vornic
