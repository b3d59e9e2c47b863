#include "Vornic/views/shared/DrawnKey.h"

#include "Vornic/views/shared/QmlText.h"

#include <QString>
#include <algorithm>
#include <string>

namespace vornic {

QVariantMap drawnKey(const LayoutKey& key, const Board* board) {
    QVariantMap drawn{{"code", key.code ? static_cast<int>(*key.code) : -1},
                      {"label", qmlText(key.label)},
                      {"x", key.x},
                      {"y", key.y},
                      {"w", key.w},
                      {"h", key.h},
                      {"sound", -1},
                      {"soundName", ""},
                      {"selected", false},
                      {"own", false}};
    if (board == nullptr || !key.code) {
        return drawn;
    }
    if (const auto resolved = board->resolve(*key.code)) {
        const auto place = std::ranges::find(board->sounds, resolved->sound->id, &SoundSpec::id) -
                           board->sounds.begin();
        drawn["sound"] = static_cast<int>(place);
        drawn["soundName"] = qmlText(resolved->sound->name);
    }
    drawn["own"] = board->keys.contains(std::to_string(*key.code));
    return drawn;
}

} // namespace vornic
