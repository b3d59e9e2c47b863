#pragma once

#include "VornicCore/keys/KeyboardLayout.h"

#include <cstdint>
#include <map>
#include <string>

namespace vornic {

/// What stands on the keys of the user's keyboard, by the key's number in the kernel's input layer,
/// which is its place whatever is printed there. Keys that are not in it keep the layout's label.
using KeyLegends = std::map<std::uint32_t, std::string>;

/// The names that PC keyboards have for the keys that type nothing. Thread: any.
const KeyLegends& pcLegends();

/// What stands on `key` of `layout` where the keyboard has these legends. On an ISO layout the key
/// left of 1 and the one beside the left Shift have each other's codes, other than on an ANSI one.
/// Thread: any.
std::string legendOf(const LayoutKey& key, const KeyboardLayout& layout, const KeyLegends& legends);

} // namespace vornic
