#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/board/Palette.h"
#include "VornicCore/keys/KeyLegends.h"

#include <QRectF>
#include <QString>
#include <vector>

namespace vornic {

/// One key of a keyboard that is drawn.
struct DrawnCap {
    int code = -1;     ///< -1 for a key that cannot be heard.
    QString legend;    ///< What is printed on it; may be empty.
    QString said;      ///< What it is called for whoever cannot see it.
    QString soundName; ///< What it plays; empty without a board.
    QRectF place;      ///< In key units.
    CapColours colours;
    int sound = -1;   ///< The place of what it plays among the board's sounds, or -1.
    bool own = false; ///< It overrides its group.

    bool operator==(const DrawnCap&) const = default;
};

/// What stands for the sound at that place among a board's: A, B, … Z, AA, …; empty for -1.
QString soundLetter(int place);

/// A keyboard that is drawn: its keys and its colours. Thread: any.
struct KeyboardScene {
    std::vector<DrawnCap> caps;
    double width = 1.0; ///< In key units, as `height`.
    double height = 1.0;
    Palette palette;

    /// As the board says; a keyboard that plays nothing where there is no board. What `legends`
    /// lacks has the layout's labels.
    static KeyboardScene of(const Board* board, const KeyLegends& legends = {});

    /// The key with that code; null where there is none.
    const DrawnCap* find(int code) const;

    bool operator==(const KeyboardScene&) const = default;
};

} // namespace vornic
