#pragma once

#include "VornicCore/keys/KeyLegends.h"

#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <optional>
#include <string>

namespace vornic {

struct FreeXkb {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
};

/// What xkbcommon counts references of.
template <typename Type>
using XkbOwned = std::unique_ptr<Type, FreeXkb>;

/// What the keys type with that layout (the keymap's group, from 0), and the names of those that
/// type nothing: capitals for letters, the mark alone for dead keys. Thread: any.
KeyLegends legendsOf(xkb_keymap& keymap, xkb_layout_index_t group);

/// The legends of a layout by its name in the keyboard database, with a variant in parentheses as
/// in "de(nodeadkeys)"; absent where there is none of that name. Thread: any.
std::optional<KeyLegends> legendsOfLayout(const std::string& name);

} // namespace vornic
