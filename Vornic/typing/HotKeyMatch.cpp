#include "Vornic/typing/HotKeyMatch.h"

namespace vornic {

bool HotKeyMatch::key(std::int64_t keyCode, bool down) {
    if (!down) {
        down_.erase(keyCode);
        return false;
    }
    down_.insert(keyCode);
    // Virtual key codes, left and right.
    const bool command = isDown(55, 54);
    const bool shift = isDown(56, 60);
    const bool option = isDown(58, 61);
    const bool control = isDown(59, 62);
    constexpr std::int64_t keyK = 40;
    return keyCode == keyK && option && command && !shift && !control;
}

bool HotKeyMatch::isDown(std::int64_t left, std::int64_t right) const {
    return down_.contains(left) || down_.contains(right);
}

} // namespace vornic
