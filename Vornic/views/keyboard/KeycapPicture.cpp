#include "Vornic/views/keyboard/KeycapPicture.h"

#include "Vornic/views/keyboard/CapPainter.h"

#include <algorithm>

namespace vornic {

void KeycapPicture::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    const Palette palette = Palette::of(colour_.name().toStdString());
    const double size = std::min(width(), height());
    const QRectF all(0, 0, size, size);
    painter->setPen(Qt::NoPen);
    painter->setBrush(CapPainter::toColour(palette.casing));
    painter->drawRoundedRect(all, size * 0.18, size * 0.18);
    const double unit = size * 0.82;
    const QRectF place((size - unit) / 2, (size - unit) / 2, unit, unit);
    CapPainter drawing(*painter, unit);
    drawing.drawBlank(place, CapPainter::toColour(palette.caps.top), 0.0);
    painter->setPen(Qt::NoPen);
    painter->setBrush(CapPainter::toColour(palette.accents.top));
    const double mark = size * 0.2;
    painter->drawRoundedRect(QRectF(size * 0.26, size * 0.22, mark, mark), mark / 3, mark / 3);
}

} // namespace vornic
