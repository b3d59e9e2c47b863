#include "Vornic/keystroke/KeyFilter.h"

namespace vornic {

namespace {

constexpr std::int64_t capsLock = 57;

} // namespace

std::optional<AcceptedKey> KeyFilter::accept(std::int64_t keyCode, bool down) {
    if (down) {
        if (!down_.insert(keyCode).second) {
            return std::nullopt;
        }
        return AcceptedKey{keyCode, true};
    }
    down_.erase(keyCode);
    if (keyCode == capsLock) {
        return std::nullopt;
    }
    return AcceptedKey{keyCode, false};
}

} // namespace vornic
