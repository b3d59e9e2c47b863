#include "Vornic/views/keyboard/LiveKeyboard.h"

#include <QVariantMap>
#include <algorithm>
#include <utility>

namespace vornic {

namespace {

/// How long a key that is clicked stays down.
constexpr double clickMillis = 90.0;

} // namespace

void LiveKeyboard::refresh() {
    headphones_ = model_.headphones();
    if (seen_ != model_.boardRevision()) {
        seen_ = model_.boardRevision();
        show(model_.board());
    }
}

void LiveKeyboard::show(const Board* board) {
    headphones_ = model_.headphones();
    KeyboardScene now = KeyboardScene::of(board, legends_);
    if (now != scene_) {
        scene_ = std::move(now);
        Q_EMIT sceneChanged();
    }
}

void LiveKeyboard::setLegends(const KeyLegends& legends) {
    legends_ = legends;
    if (seen_) {
        show(model_.board());
    }
}

void LiveKeyboard::strike(int code, bool down, Strike strike) {
    Q_EMIT struck(code, down, static_cast<double>(strike.loudness),
                  static_cast<double>(strike.pan));
}

QVariantList LiveKeyboard::keys() const {
    QVariantList all;
    all.reserve(static_cast<qsizetype>(scene_.caps.size()));
    for (const DrawnCap& cap : scene_.caps) {
        all.append(QVariantMap{{"code", cap.code},
                               {"said", cap.said},
                               {"soundName", cap.soundName},
                               {"x", cap.place.x()},
                               {"y", cap.place.y()},
                               {"w", cap.place.width()},
                               {"h", cap.place.height()}});
    }
    return all;
}

void LiveKeyboard::play(int code) {
    if (code >= 0) {
        model_.keys().type({{.millis = 0.0, .keyCode = code, .down = true},
                            {.millis = clickMillis, .keyCode = code, .down = false}});
    }
}

int LiveKeyboard::keyAt(double x, double y) const {
    const auto found = std::ranges::find_if(scene_.caps, [&](const DrawnCap& cap) {
        return cap.code >= 0 && cap.place.contains(x, y);
    });
    return found == scene_.caps.end() ? -1 : found->code;
}

} // namespace vornic
