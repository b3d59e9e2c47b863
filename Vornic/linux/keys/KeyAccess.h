#pragma once

#include "Vornic/ports/KeyTap.h"

#include <cstddef>
#include <functional>

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

} // namespace vornic
