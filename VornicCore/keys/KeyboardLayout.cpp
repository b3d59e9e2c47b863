#include "VornicCore/keys/KeyboardLayout.h"

#include "VornicCore/keys/LayoutRow.h"

#include <algorithm>

namespace vornic {

KeyboardLayout KeyboardLayout::build(LayoutID id) {
    const bool macBook = id == LayoutID::macANSI || id == LayoutID::macISO;
    const std::vector<Row> rows =
        macBook ? macBookRows(id == LayoutID::macISO) : mechanicalRows(id);
    KeyboardLayout built;
    built.id = id;
    for (const Row& row : rows) {
        built.keys.insert(built.keys.end(), row.keys.begin(), row.keys.end());
    }
    for (const LayoutKey& key : built.keys) {
        built.width = std::max(built.width, key.x + key.w);
        built.height = std::max(built.height, key.y + key.h);
    }
    return built;
}

const LayoutKey* KeyboardLayout::find(std::int64_t code) const {
    const auto found = std::ranges::find(keys, std::optional(code), &LayoutKey::code);
    return found == keys.end() ? nullptr : &*found;
}

std::optional<double> KeyboardLayout::position(std::int64_t code) const {
    const LayoutKey* const key = find(code);
    if (key == nullptr) {
        return std::nullopt;
    }
    return 2 * (key->centreX() / width - 0.5);
}

const KeyboardLayout& layout(LayoutID id) {
    static const auto built = [] {
        constexpr auto ids = allCases<LayoutID>();
        std::array<KeyboardLayout, ids.size()> layouts;
        std::ranges::transform(ids, layouts.begin(), &KeyboardLayout::build);
        return layouts;
    }();
    return *std::ranges::find(built, id, &KeyboardLayout::id);
}

} // namespace vornic
