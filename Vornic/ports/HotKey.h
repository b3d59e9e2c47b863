#pragma once

#include "Vornic/ports/EventSource.h"

#include <functional>

namespace vornic {

/// One global key combination, Option-Command-K (Alt+Super+K), heard whatever window is in front.
/// Thread: key.
class HotKey : public EventSource {
  public:
    /// What the combination does; once for each press, however long it is held.
    std::function<void()> onPress = [] {};

    /// False when the system refused the combination, for one because another program holds it.
    virtual bool registered() const = 0;
};

} // namespace vornic
