#include "VornicCore/keys/ModifierKeys.h"

#include <algorithm>

namespace vornic::ModifierKeys {

namespace {

constexpr std::int64_t capsLock = 57;
constexpr std::int64_t function = 63;
constexpr std::uint64_t secondaryFunctionFlag = 0x800000;

const DeviceBit* find(std::int64_t keyCode) {
    const auto found = std::ranges::find(deviceBits, keyCode, &DeviceBit::keyCode);
    return found == deviceBits.end() ? nullptr : &*found;
}

} // namespace

bool is(std::int64_t keyCode) {
    return keyCode == capsLock || keyCode == function || find(keyCode) != nullptr;
}

std::optional<bool> isDown(std::int64_t keyCode, std::uint64_t flags) {
    if (keyCode == capsLock) {
        return true;
    }
    if (keyCode == function) {
        return (flags & secondaryFunctionFlag) != 0;
    }
    if (const DeviceBit* const entry = find(keyCode)) {
        return (flags & entry->bit) != 0;
    }
    return std::nullopt;
}

} // namespace vornic::ModifierKeys
