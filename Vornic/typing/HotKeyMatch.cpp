#include "Vornic/typing/HotKeyMatch.h"

#include <algorithm>

namespace vornic {

bool HotKeyMatch::key(std::uint32_t keyboard, std::int64_t keyCode, bool down) {
    if (!down) {
        down_.erase({keyboard, keyCode});
        return false;
    }
    down_.insert({keyboard, keyCode});
    // Virtual key codes, left and right.
    const bool command = isDown(55, 54);
    const bool shift = isDown(56, 60);
    const bool option = isDown(58, 61);
    const bool control = isDown(59, 62);
    constexpr std::int64_t keyK = 40;
    return keyCode == keyK && option && command && !shift && !control;
}

void HotKeyMatch::forgetKeyboard(std::uint32_t keyboard) {
    std::erase_if(down_, [&](const auto& key) { return key.first == keyboard; });
}

bool HotKeyMatch::isDown(std::int64_t left, std::int64_t right) const {
    return std::ranges::any_of(
        down_, [&](const auto& key) { return key.second == left || key.second == right; });
}

} // namespace vornic
