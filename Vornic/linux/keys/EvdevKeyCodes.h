#pragma once

#include "VornicCore/keys/KnownKeys.h"

#include <cstdint>

namespace vornic {

/// The virtual key code of a key of the kernel's input layer (KEY_A is 30), by its place on the
/// keyboard, whatever is printed on it: the key left of 1 is 50 and the extra key between left
/// Shift and Z is 10, which `KeyboardForms` exchanges for ISO keyboards. Alt counts as option, the
/// logo key as command, Insert as help and Num Lock as the keypad's clear. No two keys share a
/// code. Thread: any, without allocation.
std::int64_t virtualKeyCode(std::uint32_t evdevCode);

} // namespace vornic
