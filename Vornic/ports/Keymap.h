#pragma once

#include "Vornic/ports/EventSource.h"
#include "VornicCore/keys/KeyLegends.h"

#include <functional>

namespace vornic {

/// What the session's keyboard layout types, followed while it changes. Thread: main.
class Keymap : public EventSource {
  public:
    /// Told as soon as it is known, and at each change of layout or of its group.
    std::function<void(const KeyLegends&)> onLegends = [](const KeyLegends&) {};
};

} // namespace vornic
