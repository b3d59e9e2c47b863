#include "Vornic/views/keyboard/KeyboardPicture.h"

#include <QQuickWindow>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic {

namespace {

/// In key units: how thick the lights in the case are.
constexpr double thickness = 0.1;

/// From the middle of the case's edge.
QRectF around(double x, double y, double width, double height) {
    return {x - width / 2, y - height / 2, width, height};
}

} // namespace

void KeyboardPicture::Clock::updateCurrentTime(int millis) {
    // Started anew, it begins at 0 again.
    const int since = millis >= last_ ? millis - last_ : millis;
    last_ = millis;
    if (since > 0) {
        picture_.advance(since);
    }
}

KeyboardPicture::KeyboardPicture(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    for (EarLight*& ear : ears_) {
        ear = new EarLight(this);
    }
}

void KeyboardPicture::setSource(LiveKeyboard* source) {
    if (source == source_) {
        return;
    }
    if (source_ != nullptr) {
        source_->disconnect(this);
    }
    source_ = source;
    if (source_ != nullptr) {
        connect(source_, &LiveKeyboard::sceneChanged, this, &KeyboardPicture::follow);
        connect(source_, &LiveKeyboard::headphonesChanged, this, &KeyboardPicture::redraw);
        connect(source_, &LiveKeyboard::struck, this, &KeyboardPicture::strike);
    }
    Q_EMIT sourceChanged();
    follow();
}

void KeyboardPicture::setTinted(bool tinted) {
    if (tinted != tinted_) {
        tinted_ = tinted;
        redraw();
        Q_EMIT tintedChanged();
    }
}

void KeyboardPicture::setSelected(const QList<int>& selected) {
    if (selected != selected_) {
        selected_ = selected;
        redraw();
        Q_EMIT selectedChanged();
    }
}

void KeyboardPicture::setColours(const QList<QColor>& colours) {
    if (colours != colours_) {
        colours_ = colours;
        redraw();
        Q_EMIT coloursChanged();
    }
}

void KeyboardPicture::setStill(bool still) {
    if (still != still_) {
        still_ = still;
        rest();
        Q_EMIT stillChanged();
    }
}

double KeyboardPicture::heightFor(double width) const {
    if (source_ == nullptr) {
        return 0.0;
    }
    constexpr double edges = 2 * CapPainter::bezel;
    return width * (source_->layoutHeight() + edges) / (source_->layoutWidth() + edges);
}

int KeyboardPicture::keyAt(double x, double y) const {
    return source_ != nullptr ? source_->keyAt((x - bezel()) / unit_, (y - bezel()) / unit_) : -1;
}

void KeyboardPicture::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickPaintedItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        measure();
        redraw();
    }
}

void KeyboardPicture::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemVisibleHasChanged && !data.boolValue) {
        rest();
    }
    QQuickPaintedItem::itemChange(change, data);
}

void KeyboardPicture::follow() {
    measure();
    redraw();
}

void KeyboardPicture::measure() {
    if (source_ == nullptr) {
        return;
    }
    setImplicitHeight(heightFor(width()));
    const double unit = width() / (source_->layoutWidth() + 2 * CapPainter::bezel);
    if (unit != unit_) {
        unit_ = unit;
        Q_EMIT unitChanged();
    }
}

void KeyboardPicture::redraw() {
    rest();
    update();
}

QRectF KeyboardPicture::placeOf(const DrawnCap& cap) const {
    return {bezel() + cap.place.x() * unit_, bezel() + cap.place.y() * unit_,
            cap.place.width() * unit_, cap.place.height() * unit_};
}

QColor KeyboardPicture::colourOf(int sound) const {
    return sound < 0 || colours_.isEmpty() ? QColor() : colours_.at(sound % colours_.size());
}

CapPainter::Look KeyboardPicture::lookOf(const DrawnCap& cap) const {
    CapPainter::Look look;
    look.light = colourOf(cap.sound);
    if (tinted_) {
        look.tint = look.light;
        look.letter = soundLetter(cap.sound);
        look.own = cap.own;
    }
    look.selected = selected_.contains(cap.code);
    return look;
}

void KeyboardPicture::paint(QPainter* painter) {
    if (source_ == nullptr) {
        return;
    }
    painter->setRenderHint(QPainter::Antialiasing);
    CapPainter drawing(*painter, unit_);
    const KeyboardScene& scene = source_->scene();
    drawing.drawCase(boundingRect(), scene.palette);
    if (source_->headphones()) {
        // Where the lights are going to be.
        QColor faint = contrast(scene.palette.casing, {0, 0, 0}) > 4.5 ? Qt::black : Qt::white;
        faint.setAlphaF(0.35F);
        painter->setPen(Qt::NoPen);
        painter->setBrush(faint);
        const double round = thickness * unit_ / 2;
        for (const double x : {bezel() / 2.6, width() - bezel() / 2.6}) {
            painter->drawRoundedRect(around(x, height() / 2, thickness * unit_, height() / 3),
                                     round, round);
        }
    }
    for (const DrawnCap& cap : scene.caps) {
        drawing.drawCap(placeOf(cap), cap, lookOf(cap));
    }
}

LitKey* KeyboardPicture::lit(int code) const {
    const auto found = std::ranges::find(lit_, code, &LitKey::code);
    return code < 0 || found == lit_.end() ? nullptr : *found;
}

LitKey* KeyboardPicture::unused() {
    const auto found = std::ranges::find(lit_, -1, &LitKey::code);
    if (found != lit_.end()) {
        return *found;
    }
    lit_.push_back(new LitKey(this));
    return lit_.back();
}

void KeyboardPicture::strike(int code, bool down, double loudness, double pan) {
    LitKey* key = lit(code);
    if (!down) {
        if (key != nullptr) {
            key->release(still_);
            if (!still_ && !moving()) {
                clock_.start();
            }
        }
        return;
    }
    if (!isVisible() || window() == nullptr || !window()->isVisible() || !window()->isExposed()) {
        return;
    }
    const DrawnCap* const cap = source_->scene().find(code);
    if (cap == nullptr) {
        return;
    }
    if (key == nullptr) {
        key = unused();
    }
    const CapPainter::Look look = lookOf(*cap);
    key->show(*cap, placeOf(*cap), unit_, source_->scene().palette, look);
    key->press(look.light.isValid() ? loudness : 0.0, still_);
    if (still_) {
        return;
    }
    if (source_->headphones() && loudness > 0.0) {
        showInSpace(look.light, loudness, pan);
    }
    if (!moving()) {
        clock_.start();
    }
}

void KeyboardPicture::showInSpace(const QColor& colour, double loudness, double pan) {
    const double angle = (std::clamp(pan, -1.0, 1.0) + 1.0) * std::numbers::pi / 4.0;
    const double thick = thickness * unit_;
    const double edge = bezel() / 2.6;
    const auto place = [](EarLight& light, const QRectF& where) {
        light.setPosition(where.topLeft());
        light.setSize(where.size());
    };
    place(*ears_[0], around(edge, height() / 2, thick, height() / 3));
    place(*ears_[1], around(width() - edge, height() / 2, thick, height() / 3));
    place(*ears_[2], around(width() * (pan + 1.0) / 2.0, edge, unit_ * 0.6, thick));
    ears_[0]->light(colour, loudness * std::cos(angle));
    ears_[1]->light(colour, loudness * std::sin(angle));
    ears_[2]->light(colour, loudness);
}

void KeyboardPicture::advance(double millis) {
    bool more = false;
    for (LitKey* const key : lit_) {
        more = (key->code() >= 0 && key->advance(millis)) || more;
    }
    for (EarLight* const ear : ears_) {
        more = (ear->isVisible() && ear->advance(millis)) || more;
    }
    if (!more) {
        clock_.stop();
    }
}

void KeyboardPicture::rest() {
    for (LitKey* const key : lit_) {
        key->rest();
    }
    for (EarLight* const ear : ears_) {
        ear->advance(1000.0);
    }
    clock_.stop();
}

} // namespace vornic
