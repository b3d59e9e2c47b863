#include "Vornic/linux/keys/KeyAccess.h"

namespace vornic {

TapState tapStateOf(const KeyAccess& access, const std::function<bool()>& given) {
    if (access.open > 0) {
        return TapState::listening;
    }
    if (!given()) {
        return TapState::needsPermission;
    }
    return access.present == 0 ? TapState::listening : TapState::needsRelaunch;
}

} // namespace vornic
