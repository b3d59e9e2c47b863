#include "Vornic/views/adapters/DrawnKey.h"

#include <QString>
#include <algorithm>
#include <string>

namespace vornic {

QVariantMap drawnKey(const LayoutKey& key, const Board* board) {
    QVariantMap drawn{{"code", key.code ? static_cast<int>(*key.code) : -1},
                      {"label", QString::fromStdString(key.label)},
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
        drawn["soundName"] = QString::fromStdString(resolved->sound->name);
    }
    drawn["own"] = board->keys.contains(std::to_string(*key.code));
    return drawn;
}

} // namespace vornic
