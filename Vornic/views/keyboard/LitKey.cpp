#include "Vornic/views/keyboard/LitKey.h"

#include <algorithm>

namespace vornic {

namespace {

/// In milliseconds.
constexpr double downTime = 30.0;
constexpr double upTime = 60.0;
constexpr double glowTime = 180.0;
/// How far the light falls on what is around the key, in key units.
constexpr double halo = 0.35;
/// What glows at all is seen.
constexpr double faintest = 0.35;

} // namespace

LitKey::LitKey(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setVisible(false);
}

void LitKey::show(const DrawnCap& cap, const QRectF& place, double unit, const Palette& palette,
                  const CapPainter::Look& look) {
    cap_ = cap;
    unit_ = unit;
    well_ = CapPainter::well(palette);
    // On whole pixels: what is drawn over the picture has to fit it.
    const QRectF around =
        place.adjusted(-halo * unit, -halo * unit, halo * unit, halo * unit).toAlignedRect();
    cell_ = place.translated(-around.topLeft());
    const double down = look_.down;
    look_ = look;
    look_.down = down;
    setPosition(around.topLeft());
    setSize(around.size());
    setVisible(true);
    update();
}

void LitKey::press(double loudness, bool still) {
    pressed_ = true;
    glowed_ = 0.0;
    brightest_ = loudness > 0.0 ? faintest + (1.0 - faintest) * std::min(loudness, 1.0) : 0.0;
    look_.glow = brightest_;
    if (still) {
        look_.down = 1.0;
        glowed_ = glowTime; // it stays as it is until it is let go
    }
    update();
}

void LitKey::release(bool still) {
    pressed_ = false;
    if (still) {
        rest();
    }
}

bool LitKey::advance(double millis) {
    const double before = look_.down + look_.glow;
    look_.down =
        std::clamp(look_.down + (pressed_ ? millis / downTime : -millis / upTime), 0.0, 1.0);
    glowed_ += millis;
    const double left = std::max(0.0, 1.0 - glowed_ / glowTime);
    look_.glow = brightest_ * left;
    if (look_.down + look_.glow != before) {
        update();
    }
    if (!pressed_ && look_.down <= 0.0 && look_.glow <= 0.0) {
        rest();
        return false;
    }
    return look_.glow > 0.0 || look_.down < 1.0;
}

void LitKey::rest() {
    cap_ = {};
    look_ = {};
    cell_ = {};
    pressed_ = false;
    brightest_ = 0.0;
    setVisible(false);
    setPosition({});
}

void LitKey::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    if (look_.glow > 0.0) {
        // As wide as the key is, whatever its form.
        painter->setPen(Qt::NoPen);
        constexpr int rings = 6;
        QColor ring = look_.light;
        ring.setAlphaF(static_cast<float>(0.13 * look_.glow));
        painter->setBrush(ring);
        for (int each = rings; each > 0; --each) {
            const double out = halo * unit_ * each / rings;
            painter->drawRoundedRect(cell_.adjusted(-out, -out, out, out), out, out);
        }
    }
    painter->fillRect(cell_, well_);
    CapPainter(*painter, unit_).drawCap(cell_, cap_, look_);
}

void EarLight::light(QColor colour, double level) {
    if (level > level_) {
        colour_ = colour;
        level_ = level;
        setVisible(true);
        update();
    }
}

bool EarLight::advance(double millis) {
    level_ = std::max(0.0, level_ - millis / glowTime);
    setVisible(level_ > 0.0);
    update();
    return level_ > 0.0;
}

void EarLight::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    QColor colour = colour_;
    colour.setAlphaF(static_cast<float>(std::min(1.0, level_)));
    painter->setBrush(colour);
    const double round = std::min(width(), height()) / 2;
    painter->drawRoundedRect(boundingRect(), round, round);
}

} // namespace vornic
