#include "VornicCore/keys/LayoutRow.h"

namespace vornic {

namespace {

// Keys stand in a square grid of one unit; a function row stands a quarter unit apart from the
// rest, and so do the blocks beside the 15-unit main block.
constexpr double gap = 0.25;
constexpr double mainWidth = 15;
constexpr double navigationX = mainWidth + gap;
constexpr double keypadX = 18.5;

/// The six rows of a layout; `function` stays empty where there is no function row.
struct Rows {
    Row function;
    Row number;
    Row top;
    Row home;
    Row bottom;
    Row lowest;
};

Rows emptyRows(bool withFunctionRow) {
    const double y = withFunctionRow ? 1 + gap : 0;
    return {Row(0, 0, 1),     Row(0, y, 1),     Row(0, y + 1, 1),
            Row(0, y + 2, 1), Row(0, y + 3, 1), Row(0, y + 4, 1)};
}

// Escape, then the function keys in three groups of four that end where the main block ends.
void addFunctionKeys(Row& row) {
    const std::span<const KeyName> keys(KeyboardLayout::fKeys);
    row.add(53, "esc");
    row.skipTo(2).add(keys.subspan(0, 4));
    row.skipTo(6.5).add(keys.subspan(4, 4));
    row.skipTo(11).add(keys.subspan(8, 4));
}

void addMainBlock(Rows& rows) {
    rows.number.add(50, "`").add(numberRow).add(27, "-").add(24, "=").add(51, "delete", 2);
    rows.top.add(48, "tab", 1.5).add(topRow).add(33, "[").add(30, "]").add(42, "\\", 1.5);
    rows.home.add(57, "caps", 1.75).add(homeRow).add(41, ";").add(39, "'").add(36, "return", 2.25);
    rows.bottom.add(56, "shift", 2.25).add(bottomRow).add(43, ",").add(47, ".").add(44, "/");
    rows.bottom.add(60, "shift", 2.75);
    rows.lowest.add(59, "control", 1.25).add(58, "option", 1.25).add(55, "command", 1.25);
    rows.lowest.add(49, "", 6.25);
    rows.lowest.add(54, "command").add(61, "option").add(63, "fn").add(62, "control");
}

// The arrows of the small boards: the cluster begins one unit inside the main block, so that its
// upper key stands beside the wide right shift.
void addCompactArrows(Rows& rows) {
    rows.bottom.skipTo(mainWidth).add(126, "↑");
    rows.lowest.skipTo(mainWidth - 1).add(123, "←").add(125, "↓").add(124, "→");
}

void addNavigationBlock(Rows& rows) {
    rows.number.skipTo(navigationX).add(114, "help").add(115, "home").add(116, "pg up");
    rows.top.skipTo(navigationX).add(117, "del").add(119, "end").add(121, "pg dn");
    rows.bottom.skipTo(navigationX + 1).add(126, "↑");
    rows.lowest.skipTo(navigationX).add(123, "←").add(125, "↓").add(124, "→");
}

void addKeypad(Rows& rows) {
    rows.number.skipTo(keypadX).add(71, "clear").add(81, "=").add(75, "/").add(67, "*");
    rows.top.skipTo(keypadX).add(89, "7").add(91, "8").add(92, "9").add(78, "-");
    rows.home.skipTo(keypadX).add(86, "4").add(87, "5").add(88, "6").add(69, "+");
    rows.bottom.skipTo(keypadX).add(83, "1").add(84, "2").add(85, "3");
    rows.bottom.add(76, "enter", 1, rows.bottom.y, 2);
    rows.lowest.skipTo(keypadX).add(82, "0", 2).add(65, ".");
}

void addSixtyFive(Rows& rows) {
    addMainBlock(rows);
    rows.number.add(115, "home").add(116, "pg up");
    rows.top.add(117, "del").add(121, "pg dn");
    addCompactArrows(rows);
}

void addSeventyFive(Rows& rows) {
    addFunctionKeys(rows.function);
    addMainBlock(rows);
    rows.function.add(114, "help").add(117, "del");
    rows.number.add(115, "home").add(116, "pg up");
    rows.top.add(119, "end").add(121, "pg dn");
    addCompactArrows(rows);
}

void addTenkeyless(Rows& rows) {
    addFunctionKeys(rows.function);
    addMainBlock(rows);
    addNavigationBlock(rows);
}

void addFull(Rows& rows) {
    addTenkeyless(rows);
    rows.function.skipTo(navigationX).add(105, "F13").add(107, "F14").add(113, "F15");
    addKeypad(rows);
}

} // namespace

std::vector<Row> mechanicalRows(LayoutID id) {
    Rows rows =
        emptyRows(id == LayoutID::seventyFive || id == LayoutID::tkl || id == LayoutID::full);
    switch (id) {
    case LayoutID::sixtyFive:
        addSixtyFive(rows);
        break;
    case LayoutID::seventyFive:
        addSeventyFive(rows);
        break;
    case LayoutID::tkl:
        addTenkeyless(rows);
        break;
    case LayoutID::full:
        addFull(rows);
        break;
    default:
        addMainBlock(rows);
        break;
    }
    return {rows.function, rows.number, rows.top, rows.home, rows.bottom, rows.lowest};
}

} // namespace vornic
