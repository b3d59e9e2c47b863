#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace vornic::ModifierKeys {

/// A modifier key of one side and the bit that stands for it in the flags of an event.
struct DeviceBit {
    std::int64_t keyCode;
    std::uint64_t bit;
};

/// Caps Lock (57) and fn (63) are modifiers too, but have no bit of their own here.
inline constexpr std::array<DeviceBit, 8> deviceBits{{
    {59, 0x1},    // left control
    {56, 0x2},    // left shift
    {60, 0x4},    // right shift
    {55, 0x8},    // left command
    {54, 0x10},   // right command
    {58, 0x20},   // left option
    {61, 0x40},   // right option
    {62, 0x2000}, // right control
}};

/// Whether the key is a modifier. Thread: any, without allocation.
bool is(std::int64_t keyCode);

/// Whether a change of the event flags to `flags` means that this modifier went down (true) or up
/// (false); absent for a key that is no modifier. Every change of Caps Lock counts as a press.
std::optional<bool> isDown(std::int64_t keyCode, std::uint64_t flags);

} // namespace vornic::ModifierKeys
