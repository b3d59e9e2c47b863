#include "Vornic/views/keyboard/KeyboardScene.h"

#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <QCoreApplication>
#include <algorithm>
#include <string>

namespace vornic {

namespace {

QString saidOf(const LayoutKey& key, const QString& legend) {
    if (!key.code) {
        return QCoreApplication::translate("KeyboardScene", "Power");
    }
    return legend.isEmpty() ? QCoreApplication::translate("KeyboardScene", "Space") : legend;
}

} // namespace

QString soundLetter(int place) {
    constexpr int letters = 26;
    QString letter;
    for (; place >= 0; place = place / letters - 1) {
        letter.prepend(QChar(u'A' + place % letters));
    }
    return letter;
}

KeyboardScene KeyboardScene::of(const Board* board, const KeyLegends& legends) {
    const KeyboardLayout& keyboard = layout(board != nullptr ? board->layout : LayoutID::macANSI);
    KeyboardScene scene;
    scene.width = keyboard.width;
    scene.height = keyboard.height;
    scene.palette = Palette::of(board != nullptr ? board->colorHex : std::string());
    scene.caps.reserve(keyboard.keys.size());
    for (const LayoutKey& key : keyboard.keys) {
        DrawnCap cap;
        cap.code = static_cast<int>(key.code.value_or(-1));
        cap.legend = qmlText(legendOf(key, keyboard, legends));
        cap.said = saidOf(key, cap.legend);
        cap.place = QRectF(key.x, key.y, key.w, key.h);
        cap.colours = key.code ? scene.palette.on(*key.code) : scene.palette.modifiers;
        if (const auto resolved = board != nullptr && key.code ? board->resolve(*key.code)
                                                               : std::optional<ResolvedKey>()) {
            cap.sound = static_cast<int>(
                std::ranges::find(board->sounds, resolved->sound->id, &SoundSpec::id) -
                board->sounds.begin());
            cap.soundName = qmlText(resolved->sound->name);
            cap.own = board->keys.contains(std::to_string(*key.code));
        }
        scene.caps.push_back(std::move(cap));
    }
    return scene;
}

const DrawnCap* KeyboardScene::find(int code) const {
    const auto found = std::ranges::find(caps, code, &DrawnCap::code);
    return code < 0 || found == caps.end() ? nullptr : &*found;
}

} // namespace vornic
