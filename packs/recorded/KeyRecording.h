#pragma once

#include "VornicCore/keys/KeyClass.h"

#include <optional>
#include <string_view>

namespace vornic::packs {

/// Which way the key moved.
enum class Stroke { press, release };

/// What the name of a recording says about it.
struct KeyRecording {
    KeyClass keyClass;
    Stroke stroke;

    bool operator==(const KeyRecording&) const = default;
};

/// Reads a name of the form "1e-1.wav": the kernel's code of the key (linux/input-event-codes.h) in
/// two hexadecimal digits, a hyphen, and 1 for the press or 0 for the release. None for any other
/// name.
///
/// That 1 is the press follows the kernel's event values and can be heard: those recordings are one
/// bright click within 2 ms, while the others are duller and have their peak later, as the key cap
/// returns to its stop. The Pause key's only recording bears a 0 but sounds like a press: that key
/// sends its release together with its press, so it counts as one.
std::optional<KeyRecording> keyRecordingNamed(std::string_view fileName);

} // namespace vornic::packs
