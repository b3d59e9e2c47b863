#include "Vornic/linux/keys/KeyAccess.h"

#include <linux/input-event-codes.h>

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

bool isMadeByAProgram(std::string_view systemPath) {
    return systemPath.find("/devices/virtual/input/") != std::string_view::npos;
}

bool isKeyOfAKeyboard(std::uint32_t evdevCode) {
    // 0x160 follows the last of the first range of buttons, which has no name of its own.
    const bool button = (evdevCode >= BTN_MISC && evdevCode < KEY_OK) ||
                        (evdevCode >= BTN_DPAD_UP && evdevCode <= BTN_DPAD_RIGHT) ||
                        (evdevCode >= BTN_TRIGGER_HAPPY && evdevCode <= BTN_TRIGGER_HAPPY40);
    return evdevCode != KEY_RESERVED && !button;
}

} // namespace vornic
