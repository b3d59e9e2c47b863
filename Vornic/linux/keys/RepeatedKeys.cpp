#include "Vornic/linux/keys/RepeatedKeys.h"

#include <algorithm>

namespace vornic {

bool RepeatedKeys::isRepetition(std::uint32_t keyboard, bool isVirtual, std::uint32_t code,
                                bool down, std::uint64_t nanos) {
    while (!recent_.empty() && recent_.front().nanos + windowNanos < nanos) {
        recent_.pop_front();
    }
    if (isVirtual) {
        const auto original = std::ranges::find_if(recent_, [&](const Original& event) {
            return event.keyboard != keyboard && event.code == code && event.down == down &&
                   event.nanos <= nanos &&
                   std::ranges::find(event.repeatedBy, keyboard) == event.repeatedBy.end();
        });
        if (original != recent_.end()) {
            original->repeatedBy.push_back(keyboard);
            return true;
        }
    }
    recent_.push_back({keyboard, code, down, nanos, {}});
    return false;
}

} // namespace vornic
