#pragma once

#include <cstdint>
#include <string_view>

namespace vornic {

/// Whether the device at this place below /sys was made by a program through uinput. Keyboards on
/// Bluetooth's low-energy radio lie among the virtual devices too, but elsewhere.
/// Thread: any, as everything here.
bool isMadeByAProgram(std::string_view systemPath);

/// Whether a key code belongs to something that clicks like a key. Mice, pads and sticks have
/// buttons among the same numbers.
bool isKeyOfAKeyboard(std::uint32_t evdevCode);

} // namespace vornic
