#pragma once

#include "Vornic/ports/KeyTap.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace vornic {

/// How many keyboards there are, and how many of them are open. Thread: any, as everything here.
struct KeyAccess {
    std::size_t present = 0;
    std::size_t open = 0;
};

/// What that means for the user. `given` says whether somebody has granted the user access to
/// keyboards; it is asked only where that matters, since the answer can take a look into a
/// directory on the network. Without any keyboard the grant decides: what is plugged in later will
/// be heard, or not.
TapState tapStateOf(const KeyAccess& access, const std::function<bool()>& given);

/// Whether the device at this place below /sys was made by a program through uinput. Keyboards on
/// Bluetooth's low-energy radio lie among the virtual devices too, but elsewhere.
bool isMadeByAProgram(std::string_view systemPath);

/// Whether a key code belongs to something that clicks like a key. Mice, pads and sticks have
/// buttons among the same numbers.
bool isKeyOfAKeyboard(std::uint32_t evdevCode);

} // namespace vornic
