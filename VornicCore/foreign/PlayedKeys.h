#pragma once

#include "VornicCore/foreign/ForeignPack.h"
#include "VornicCore/foreign/PackRecordings.h"
#include "VornicCore/keys/LayoutID.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vornic {

/// One direction of a key: its recordings, by their indices.
struct PlayedStroke {
    std::vector<std::size_t> recordings;
    /// Semitones, the same for all.
    double pitch = 0;

    auto operator<=>(const PlayedStroke&) const = default;
};

/// What a key plays once everything has been found that can be found.
struct PlayedKey {
    PlayedStroke press;
    PlayedStroke release;
    /// How loud its presses were in the pack beside what rendering makes of them, mean, in dB.
    double gainDb = 0;
    /// Whether the pack has this key itself. Otherwise whose sound it plays: a key's name, or
    /// "fallback".
    bool isOwn = false;
    std::string from;
};

struct PlayedKeys {
    /// Every key of a full keyboard and every further one of the pack, by key code.
    std::map<std::int64_t, PlayedKey> keys;
    /// What keys play that nobody knows.
    PlayedKey fallback;
    /// The smallest keyboard that has all of the pack's keys.
    LayoutID layout = LayoutID::full;
    /// The largest difference between recordings of one sound, in dB; rendering takes it away.
    double spreadDb = 0;
    /// The same between presses and their releases, as a mean: below 0, releases were fainter.
    double releaseDb = 0;
};

/// Finds what every key of a keyboard plays. Throws ForeignPackError where nothing sounds.
/// Thread: any.
PlayedKeys playedKeys(const ForeignPack& pack, PackRecordings& recordings);

} // namespace vornic
