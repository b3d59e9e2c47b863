#include "VornicCore/board/KeySelection.h"

#include "VornicCore/board/EditBoard.h"
#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <algorithm>
#include <type_traits>

namespace vornic::KeySelection {

namespace {

bool isIn(const Board& board, const Any& selection, std::int64_t code) {
    return std::visit(
        [&](const auto& chosen) {
            using Selection = std::decay_t<decltype(chosen)>;
            if constexpr (std::is_same_v<Selection, Group>) {
                return keyGroupOf(code) == chosen.group;
            } else if constexpr (std::is_same_v<Selection, Sound>) {
                const auto resolved = board.resolve(code);
                return resolved && resolved->sound->id == chosen.sound;
            } else if constexpr (std::is_same_v<Selection, Stabilisers>) {
                return KeySet::isStabilised(code);
            } else {
                return std::is_same_v<Selection, All>;
            }
        },
        selection);
}

std::vector<KeyGroup> groupsOf(const Any& selection) {
    if (const auto* const group = std::get_if<Group>(&selection)) {
        return {group->group};
    }
    constexpr auto groups = allCases<KeyGroup>();
    return {groups.begin(), groups.end()};
}

template <typename Map, typename Key>
Assignment at(const Map& assignments, const Key& key) {
    const auto found = assignments.find(key);
    return found == assignments.end() ? Assignment() : found->second;
}

} // namespace

bool namesGroups(const Any& selection) {
    return std::holds_alternative<All>(selection) || std::holds_alternative<Group>(selection);
}

std::set<std::int64_t> keysOf(const Any& selection, const Board& board) {
    if (const auto* const keys = std::get_if<Keys>(&selection)) {
        return keys->keys;
    }
    std::set<std::int64_t> selected;
    for (const LayoutKey& key : layout(board.layout).keys) {
        if (key.code && isIn(board, selection, *key.code)) {
            selected.insert(*key.code);
        }
    }
    return selected;
}

std::vector<Assignment> assignmentsOf(const Any& selection, const Board& board) {
    std::vector<Assignment> all;
    if (namesGroups(selection)) {
        for (const KeyGroup group : groupsOf(selection)) {
            all.push_back(at(board.groups, group));
        }
    } else {
        for (const std::int64_t code : keysOf(selection, board)) {
            all.push_back(at(board.keys, std::to_string(code)));
        }
    }
    return all;
}

Assignment inheritedBy(const Any& selection, const Board& board) {
    if (namesGroups(selection)) {
        return {};
    }
    const std::set<std::int64_t> keys = keysOf(selection, board);
    return keys.empty() ? Assignment() : at(board.groups, keyGroupOf(*keys.begin()));
}

void assign(Board& board, const Any& selection, const std::function<void(Assignment&)>& change) {
    if (namesGroups(selection)) {
        for (const KeyGroup group : groupsOf(selection)) {
            change(board.groups[group]);
        }
        return;
    }
    for (const std::int64_t code : keysOf(selection, board)) {
        change(board.keys[std::to_string(code)]);
    }
    EditBoard::dropEmptyOverrides(board);
}

void reset(Board& board, const Any& selection) {
    for (const std::int64_t code : keysOf(selection, board)) {
        board.keys.erase(std::to_string(code));
    }
}

bool overrides(const Any& selection, const Board& board) {
    return std::ranges::any_of(keysOf(selection, board), [&](std::int64_t code) {
        return board.keys.contains(std::to_string(code));
    });
}

} // namespace vornic::KeySelection
