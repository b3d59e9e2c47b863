#pragma once

#include "Vornic/views/keyboard/KeyboardScene.h"

#include <QColor>
#include <QPainter>

namespace vornic {

/// Draws keycaps and the case around them. Lengths in pixels; `unit` is that of one key.
/// Thread: any.
class CapPainter {
  public:
    /// How a cap is at a moment.
    struct Look {
        double down = 0.0; ///< From 0, up, to 1, all the way down.
        double glow = 0.0; ///< From 0 to 1, in `light`.
        QColor light;
        QColor tint;      ///< Of its sound, over its own colour; none where it is invalid.
        QString letter;   ///< Of its sound; none where it is empty.
        bool own = false; ///< Marked as overriding its group.
        bool selected = false;
    };

    /// How wide the case is around the keys, in key units.
    static constexpr double bezel = 0.3;

    CapPainter(QPainter& painter, double unit) : painter_(painter), unit_(unit) {}

    /// The case, with nothing in it.
    void drawCase(const QRectF& place, const Palette& palette);
    /// What lies under and between the caps.
    static QColor well(const Palette& palette);
    /// A cap in its place.
    void drawCap(const QRectF& place, const DrawnCap& cap, const Look& look);
    /// What is on a cap but its legend.
    void drawBlank(const QRectF& place, QColor top, double down);

    static QColor toColour(Rgb colour) { return {colour.red, colour.green, colour.blue}; }
    static QColor mixed(const QColor& from, const QColor& to, double share);

  private:
    QRectF topOf(const QRectF& place, double down) const;
    void drawLegend(const QRectF& top, const DrawnCap& cap, const Look& look, QColor ink);
    void drawPower(const QRectF& top, QColor ink);

    QPainter& painter_;
    double unit_;
};

} // namespace vornic
