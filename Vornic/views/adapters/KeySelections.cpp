#include "Vornic/views/adapters/KeySelections.h"

#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <type_traits>
#include <variant>

namespace vornic {

namespace {

bool isIn(const Board& board, const KeySelection::Any& selection, std::int64_t code) {
    return std::visit(
        [&](const auto& chosen) {
            using Selection = std::decay_t<decltype(chosen)>;
            if constexpr (std::is_same_v<Selection, KeySelection::Group>) {
                return keyGroupOf(code) == chosen.group;
            } else if constexpr (std::is_same_v<Selection, KeySelection::Sound>) {
                const auto resolved = board.resolve(code);
                return resolved && resolved->sound->id == chosen.sound;
            } else if constexpr (std::is_same_v<Selection, KeySelection::Stabilisers>) {
                return KeySet::isStabilised(code);
            } else {
                return std::is_same_v<Selection, KeySelection::All>;
            }
        },
        selection);
}

} // namespace

std::set<std::int64_t> selectedKeys(const Board& board, const KeySelection::Any& selection) {
    if (const auto* const keys = std::get_if<KeySelection::Keys>(&selection)) {
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

} // namespace vornic
