#pragma once

#include "VornicCore/board/Assignment.h"
#include "VornicCore/board/Character.h"
#include "VornicCore/board/SoundSpec.h"
#include "VornicCore/board/TypingFeel.h"
#include "VornicCore/keys/KeyGroup.h"
#include "VornicCore/keys/LayoutID.h"
#include "VornicCore/parts/BuildParts.h"
#include "VornicCore/parts/StabParts.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// What a key plays on a board.
struct ResolvedKey {
    /// One of the board's sounds: valid until the board is changed, moved or gone.
    const SoundSpec* sound;
    /// Group and key together. `release` may still be `inherit`, which leaves it to the board's
    /// `releaseByDefault`; an absent `pan` stands for the key's own place.
    Assignment assignment;
};

/// Everything that makes one keyboard's sound. Thread: any, as everything here.
struct Board {
    /// The version of the board's own layout.
    std::int64_t schema = 1;
    std::string id;
    std::string name;
    /// One line.
    std::string detail;
    /// "#" and six hexadecimal digits.
    std::string colorHex;
    /// The keyboard that is drawn, and from which a key's pan is taken.
    LayoutID layout = LayoutID::macANSI;
    /// The build that the board is to resemble.
    BuildParts build;
    /// The build that was recorded.
    BuildParts recordedBuild;
    StabParts stabs;
    Character character;
    /// The first one plays for every key that has no other.
    std::vector<SoundSpec> sounds;
    std::map<KeyGroup, Assignment> groups;
    /// What single keys override, by the decimal text of the key code.
    std::map<std::string, Assignment, std::less<>> keys;
    TypingFeel feel;
    /// Whether letting a key go is heard where group and key leave it open.
    bool releaseByDefault = false;
    bool builtIn = false;
    /// Credit lines of the recordings.
    std::vector<std::string> credits;

    Board() = default;

    /// A board recorded on the very build that it is to resemble.
    Board(std::string givenId, std::string givenName, std::string givenDetail,
          std::string givenColorHex, BuildParts givenBuild, std::vector<SoundSpec> givenSounds,
          std::map<KeyGroup, Assignment> givenGroups);

    /// The first sound with that id; null if the id is absent or unknown.
    const SoundSpec* sound(const std::optional<std::string>& soundId) const;

    /// What a key plays: the sound of its own override, or else of its group, or else the first
    /// one; nothing if the board has no sounds.
    std::optional<ResolvedKey> resolve(std::int64_t keyCode) const;

    bool operator==(const Board&) const = default;
};

} // namespace vornic
