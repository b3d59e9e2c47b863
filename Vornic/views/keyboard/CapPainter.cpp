#include "Vornic/views/keyboard/CapPainter.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <algorithm>
#include <array>
#include <cmath>

namespace vornic {

namespace {

/// In key units: what is left free around a cap, how its top is set in, and how far it goes down.
constexpr double gap = 0.035;
constexpr double side = 0.1;
constexpr double back = 0.045;
constexpr double front = 0.17;
constexpr double travel = 0.09;
/// Below this a legend is no text any more, in pixels.
constexpr double smallest = 6.0;

QColor inkOn(const QColor& ground) {
    const auto part = [](double v) { return static_cast<std::uint8_t>(std::lround(v * 255.0)); };
    const Rgb plain{part(ground.redF()), part(ground.greenF()), part(ground.blueF())};
    return contrast(plain, {255, 255, 255}) >= contrast(plain, {0, 0, 0}) ? QColor(Qt::white)
                                                                          : QColor(Qt::black);
}

} // namespace

QColor CapPainter::mixed(const QColor& from, const QColor& to, double share) {
    const auto part = [share](double a, double b) {
        return static_cast<float>(a + (b - a) * share);
    };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()));
}

QColor CapPainter::well(const Palette& palette) {
    return mixed(toColour(palette.casing), Qt::black, 0.45);
}

void CapPainter::drawCase(const QRectF& place, const Palette& palette) {
    const QColor casing = toColour(palette.casing);
    const double rim = 0.1 * unit_;
    const double round = 0.32 * unit_;
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(mixed(casing, Qt::black, 0.35));
    painter_.drawRoundedRect(place, round, round);
    const QRectF top = place.adjusted(0, 0, 0, -rim);
    QLinearGradient light(top.topLeft(), top.bottomLeft());
    light.setColorAt(0, mixed(casing, Qt::white, 0.14));
    light.setColorAt(0.08, casing);
    light.setColorAt(1, mixed(casing, Qt::black, 0.1));
    painter_.setBrush(light);
    painter_.drawRoundedRect(top, round, round);
    const double in = (bezel - 0.08) * unit_;
    painter_.setBrush(well(palette));
    painter_.drawRoundedRect(place.adjusted(in, in, -in, -in), 0.14 * unit_, 0.14 * unit_);
}

QRectF CapPainter::topOf(const QRectF& place, double down) const {
    const double flat = std::min(1.0, place.height() / unit_);
    return place.adjusted((gap + side) * unit_, (gap + back + travel * down * flat) * unit_,
                          -(gap + side) * unit_,
                          -(gap + front * flat - travel * down * flat) * unit_);
}

void CapPainter::drawBlank(const QRectF& place, QColor top, double down) {
    const double free = gap * unit_;
    const double flat = std::min(1.0, place.height() / unit_);
    const QRectF body =
        place.adjusted(free, free + travel * 0.8 * down * flat * unit_, -free, -free);
    const double round = 0.13 * unit_;
    painter_.setPen(Qt::NoPen);
    QLinearGradient sides(body.topLeft(), body.bottomLeft());
    sides.setColorAt(0, mixed(top, Qt::black, 0.1));
    sides.setColorAt(0.7, mixed(top, Qt::black, 0.24));
    sides.setColorAt(1, mixed(top, Qt::black, 0.42));
    painter_.setBrush(sides);
    painter_.drawRoundedRect(body, round, round);
    const QRectF face = topOf(place, down);
    QLinearGradient light(face.topLeft(), face.bottomLeft());
    light.setColorAt(0, mixed(top, Qt::white, 0.05));
    light.setColorAt(1, top);
    painter_.setBrush(light);
    painter_.drawRoundedRect(face, 0.1 * unit_, 0.1 * unit_);
}

void CapPainter::drawCap(const QRectF& place, const DrawnCap& cap, const Look& look) {
    QColor top = toColour(cap.colours.top);
    QColor ink = toColour(cap.colours.legend);
    if (look.tint.isValid()) {
        top = mixed(top, look.tint, 0.6);
        ink = inkOn(top);
    }
    if (look.glow > 0.0) {
        top = mixed(top, look.light, 0.85 * look.glow);
        ink = inkOn(top);
    }
    drawBlank(place, top, look.down);
    const QRectF face = topOf(place, look.down);
    if (cap.code < 0) {
        drawPower(face, ink);
    } else {
        drawLegend(face, cap, look, ink);
    }
    if (look.selected) {
        // Seen on any cap: one of the two always is.
        const double round = 0.13 * unit_;
        const QRectF edge = place.adjusted(2, 2, -2, -2);
        painter_.setBrush(Qt::NoBrush);
        painter_.setPen(QPen(Qt::black, 4.0));
        painter_.drawRoundedRect(edge, round, round);
        painter_.setPen(QPen(Qt::white, 2.0));
        painter_.drawRoundedRect(edge, round, round);
    }
}

void CapPainter::drawLegend(const QRectF& top, const DrawnCap& cap, const Look& look, QColor ink) {
    const double inset = std::min(0.09 * unit_, top.height() * 0.16);
    const QRectF room = top.adjusted(inset, inset * 0.6, -inset, -inset * 0.6);
    const bool word = cap.legend.size() > 2;
    QFont font = painter_.font();
    font.setWeight(QFont::Medium);
    const double wanted = std::min((word ? 0.23 : 0.3) * unit_, room.height() * 0.95);
    painter_.setPen(ink);
    const auto fits = [&](double size, const QString& text, double width) {
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
        return QFontMetricsF(font).horizontalAdvance(text) <= width;
    };
    const bool low = top.height() < 0.5 * unit_;
    const double forLetter = look.letter.isEmpty() || !low ? 0.0 : 0.3 * unit_;
    double size = wanted;
    while (size >= smallest && !fits(size, cap.legend, room.width() - forLetter)) {
        size -= 0.5;
    }
    if (size >= smallest && !cap.legend.isEmpty()) {
        fits(size, cap.legend, 0.0);
        painter_.setFont(font);
        painter_.drawText(room, (low ? Qt::AlignVCenter : Qt::AlignTop) | Qt::AlignLeft,
                          cap.legend);
    }
    const double small = std::min(0.21 * unit_, room.height() * 0.9);
    if (!look.letter.isEmpty() && small >= smallest) {
        font.setWeight(QFont::Bold);
        fits(small, look.letter, 0.0);
        painter_.setFont(font);
        painter_.drawText(room, (low ? Qt::AlignVCenter : Qt::AlignBottom) | Qt::AlignRight,
                          look.letter);
    }
    if (look.own) {
        const double dot = std::max(4.0, 0.11 * unit_);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(ink);
        painter_.drawEllipse(QRectF(top.right() - inset - dot, top.top() + inset, dot, dot));
    }
}

void CapPainter::drawPower(const QRectF& top, QColor ink) {
    const double size = std::min(0.26 * unit_, top.height() * 0.7);
    const QRectF ring(top.center() - QPointF(size, size) / 2, QSizeF(size, size));
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(ink, std::max(1.0, 0.035 * unit_), Qt::SolidLine, Qt::RoundCap));
    constexpr int sixteenths = 16;
    painter_.drawArc(ring, 125 * sixteenths, 290 * sixteenths);
    painter_.drawLine(QPointF(ring.center().x(), ring.top() - size * 0.1), ring.center());
}

} // namespace vornic
