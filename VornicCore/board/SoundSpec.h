#pragma once

#include "VornicCore/board/Character.h"
#include "VornicCore/board/StrokeSpec.h"
#include "VornicCore/parts/SwitchParts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace vornic {

/// One sound of a board. Thread: any.
struct SoundSpec {
    /// Unique within the board.
    std::string id;
    std::string name;
    /// "#" and six hexadecimal digits.
    std::string colorHex;
    StrokeSpec press;
    /// Absent: the sound has no release of its own.
    std::optional<StrokeSpec> release;
    /// The switch that the sound is to resemble.
    SwitchParts switchParts;
    /// The switch that was recorded.
    SwitchParts recordedAs;
    Character character;
    /// How many variations of each stroke are rendered.
    std::int64_t variations = 12;

    SoundSpec() = default;

    /// A sound of 12 variations, recorded on the very switch that it is to resemble.
    SoundSpec(std::string givenId, std::string givenName, std::string givenColorHex,
              StrokeSpec givenPress, std::optional<StrokeSpec> givenRelease,
              const SwitchParts& givenSwitchParts, const Character& givenCharacter)
        : id(std::move(givenId)), name(std::move(givenName)), colorHex(std::move(givenColorHex)),
          press(std::move(givenPress)), release(std::move(givenRelease)),
          switchParts(givenSwitchParts), recordedAs(givenSwitchParts), character(givenCharacter) {}

    bool operator==(const SoundSpec&) const = default;
};

} // namespace vornic
