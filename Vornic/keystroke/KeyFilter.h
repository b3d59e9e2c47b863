#pragma once

#include <cstdint>
#include <optional>
#include <set>

namespace vornic {

/// A key event as the driver wants it.
struct AcceptedKey {
    std::int64_t keyCode;
    bool down;

    bool operator==(const AcceptedKey&) const = default;
};

/// Decides which events of a key reach the driver: repeats do not, and Caps Lock counts once per
/// press and not on its release. Key thread.
class KeyFilter {
  public:
    /// Takes in one event of the key with the virtual code `keyCode`; nothing when it is dropped.
    /// The release of a key that was held before the filter saw anything passes, so that it is
    /// heard like any other.
    std::optional<AcceptedKey> accept(std::int64_t keyCode, bool down);

    /// Forgets which keys are down, after a time in which events were missed.
    void reset() { down_.clear(); }

  private:
    std::set<std::int64_t> down_;
};

} // namespace vornic
