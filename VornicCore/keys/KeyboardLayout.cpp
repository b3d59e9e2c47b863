#include "VornicCore/keys/KeyboardLayout.h"

#include "VornicCore/keys/LayoutRow.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

const LayoutKey* KeyboardLayout::at(double x, double y) const {
    const auto found = std::ranges::find_if(keys, [&](const LayoutKey& key) {
        return key.code && x >= key.x && x < key.x + key.w && y >= key.y && y < key.y + key.h;
    });
    return found == keys.end() ? nullptr : &*found;
}

std::set<std::int64_t> KeyboardLayout::within(double x, double y, double w, double h) const {
    std::set<std::int64_t> codes;
    for (const LayoutKey& key : keys) {
        if (key.code && key.x < x + w && key.x + key.w > x && key.y < y + h && key.y + key.h > y) {
            codes.insert(*key.code);
        }
    }
    return codes;
}

std::int64_t KeyboardLayout::neighbour(std::int64_t code, int right, int down) const {
    const LayoutKey* const from = find(code);
    std::int64_t best = code;
    double least = std::numeric_limits<double>::infinity();
    for (const LayoutKey& key : keys) {
        if (!key.code) {
            continue;
        }
        if (from == nullptr) {
            return *key.code;
        }
        const double dx = key.centreX() - from->centreX();
        const double dy = key.y + key.h / 2 - (from->y + from->h / 2);
        const double along = dx * right + dy * down;
        const double across = std::abs(dx * down) + std::abs(dy * right);
        const bool inRow = key.y < from->y + from->h && key.y + key.h > from->y;
        // Further along counts for more than to the side; half keys next to each other overlap.
        const double cost = 4 * along + across;
        if (along > 0.2 && (right == 0 || inRow) && cost < least) {
            least = cost;
            best = *key.code;
        }
    }
    return best;
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
