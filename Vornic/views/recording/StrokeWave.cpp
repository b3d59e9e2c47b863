#include "Vornic/views/recording/StrokeWave.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace vornic {

StrokeWave::StrokeWave(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(false);
    connect(this, &StrokeWave::changed, this, [this] { update(); });
}

void StrokeWave::paint(QPainter* painter) {
    const qsizetype columns = wave_.size() / 2;
    if (columns == 0) {
        return;
    }
    double loudest = 1e-6;
    for (const QVariant& value : wave_) {
        loudest = std::max(loudest, std::abs(value.toDouble()));
    }
    const double step = width() / static_cast<double>(columns);
    const double middle = height() / 2;
    const double scale = (middle - 1) / loudest;
    for (qsizetype column = 0; column < columns; ++column) {
        const double share = (static_cast<double>(column) + 0.5) / static_cast<double>(columns);
        const QColor& colour = share >= cutBegin_ && share < cutEnd_           ? cutColour_
                               : share >= releaseBegin_ && share < releaseEnd_ ? releaseColour_
                                                                               : restColour_;
        const double top = middle - wave_[2 * column + 1].toDouble() * scale;
        const double bottom = middle - wave_[2 * column].toDouble() * scale;
        painter->fillRect(QRectF(static_cast<double>(column) * step, top - 0.5, step,
                                 std::max(1.0, bottom - top)),
                          colour);
    }
}

} // namespace vornic
