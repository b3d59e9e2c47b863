#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SoundPack.h"
#include "VornicCore/parts/BuildParts.h"
#include "VornicCore/parts/SwitchParts.h"

#include <array>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The boards that come with the program, each made from a sound pack.
/// Thread: any, as everything here.
namespace vornic::BuiltInBoards {

/// What a pack's board is called, and the keyboard that it models.
struct Recipe {
    std::string name;
    std::string detail;
    std::string color; ///< "#" and six hexadecimal digits of RGB.
    SwitchParts switchParts;
    BuildParts build;

    bool operator==(const Recipe&) const = default;
};

/// The recipes by pack id.
const std::map<std::string, Recipe, std::less<>>& recipes();

/// The pack ids in the order in which their boards are shown.
inline constexpr std::array<std::string_view, 6> order{"deep",  "soft",   "plastic",
                                                       "metal", "clicky", "spring"};

/// One board for each pack that has a recipe and at least one recording of a regular key, in
/// `order`. The board's id is the pack's. Each key class has a sound, "keys", "space", "enter",
/// "back" or "mods": its press is one layer of the class's recordings, its release, where the pack
/// has release recordings, one layer of those. Releases are off until the user turns them on.
std::vector<Board> make(std::span<const SoundPack> packs);

} // namespace vornic::BuiltInBoards
