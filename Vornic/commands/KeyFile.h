#pragma once

#include "Vornic/typing/KeyEvent.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// A key file that cannot be played; the message names the line. Thread: any, as everything here.
class KeyFileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The longest time that a key file may name: one hour.
inline constexpr double longestKeyFileMillis = 3'600'000.0;

/// Reads a key file: one event a line, `milliseconds down|up keyCode`, separated by blanks; `#`
/// begins a comment; empty lines are skipped. The events come back in order of time, those of the
/// same time in order of lines. Throws KeyFileError.
std::vector<KeyEvent> parseKeyFile(std::string_view text);

} // namespace vornic
