#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vornic {

/// One drawn key. Lengths are in key units: 1 is the pitch of an ordinary key; x grows to the
/// right, y downwards, (x, y) is the top-left corner. Thread: any.
struct LayoutKey {
    /// Absent for a key that sends no key code, such as the power key.
    std::optional<std::int64_t> code;
    std::string label;
    double x = 0;
    double y = 0;
    double w = 1;
    double h = 1;

    /// Tells the keys of one layout apart: code (-1 when absent), x and y, joined by "-".
    std::string id() const;

    /// The x of the key's middle.
    double centreX() const { return x + w / 2; }

    bool operator==(const LayoutKey&) const = default;
};

} // namespace vornic
