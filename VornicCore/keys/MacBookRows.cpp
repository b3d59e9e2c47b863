#include "VornicCore/keys/LayoutRow.h"

namespace vornic {

std::vector<Row> macBookRows(bool iso) {
    Row function(0, 0, 0.55);
    function.add(53, "esc", 1.5).add(KeyboardLayout::fKeys).add(std::nullopt, "⏻");

    Row number(0, 0.65, 1);
    if (iso) {
        number.add(10, "§");
    } else {
        number.add(50, "`");
    }
    number.add(numberRow).add(27, "-").add(24, "=").add(51, "delete", 1.5);

    Row top(0, 1.75, 1);
    top.add(48, "tab", 1.5).add(topRow).add(33, "[").add(30, "]");
    if (iso) {
        // It reaches down through the home row, whose last key it overlaps by a quarter unit.
        top.add(36, "return", 1, top.y, 2.1);
    } else {
        top.add(42, "\\");
    }

    Row home(0, 2.85, 1);
    home.add(57, "caps", 1.75).add(homeRow).add(41, ";").add(39, "'");
    if (iso) {
        home.add(42, "\\");
    } else {
        home.add(36, "return", 1.75);
    }

    Row bottom(0, 3.95, 1);
    if (iso) {
        bottom.add(56, "shift", 1.25).add(50, "`");
    } else {
        bottom.add(56, "shift", 2.25);
    }
    bottom.add(bottomRow).add(43, ",").add(47, ".").add(44, "/").add(60, "shift", 2.25);

    Row lowest(0, 5.05, 1);
    lowest.add(63, "fn").add(59, "control").add(58, "option").add(55, "command", 1.25);
    lowest.add(49, "", 5).add(54, "command", 1.25).add(61, "option");
    lowest.add(123, "←");
    const double arrows = lowest.x;
    lowest.add(126, "↑", 1, 5.05, 0.5);
    lowest.skipTo(arrows).add(125, "↓", 1, 5.55, 0.5);
    lowest.add(124, "→");

    return {function, number, top, home, bottom, lowest};
}

} // namespace vornic
