#pragma once

#include "Vornic/typing/KeyEvent.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace vornic {

/// A text as somebody types it on a US keyboard. Thread: any, as everything here.
struct TypedText {
    /// Presses and releases in order of time.
    std::vector<KeyEvent> events;
    /// Characters that a US keyboard has no key for; they are left out.
    std::int64_t untypable = 0;
};

/// Types `text` (UTF-8) at a natural pace of about 65 words a minute: letters roll into each other,
/// a breath follows a word and a longer one a sentence, Shift is held by the other hand. Equal
/// seeds give equal events.
TypedText typeText(std::string_view text, std::uint64_t seed);

} // namespace vornic
