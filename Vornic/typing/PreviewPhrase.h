#pragma once

#include "Vornic/typing/KeyEvent.h"

#include <vector>

namespace vornic {

/// The phrase that shows what a board sounds like: 15 key-downs with their releases in under 2.5 s,
/// among them letters of both hands, space and return. The same events at every call. Thread: any.
std::vector<KeyEvent> previewPhrase();

} // namespace vornic
