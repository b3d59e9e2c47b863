#pragma once

#include "VornicCore/foreign/ForeignPack.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace vornic {

/// A recording in a musical instrument: it sounds for the notes from `low` to `high`, MIDI numbers.
struct NoteRegion {
    ForeignTake take;
    int low = 0;
    int high = 127;
    /// The note at which it sounds as recorded, and the semitones from one note to the next.
    double centre = 60;
    double tracking = 1;
    bool isRelease = false;
    /// The MIDI velocities.
    int softest = 0;
    int hardest = 127;
};

/// Which key each note stands for.
using NoteKeys = std::map<int, std::int64_t>;

/// Fills keys (or, where every note sounds the same, the fallback) of `pack` from regions. Without
/// `named` keys the notes follow the order of the keys' scan codes (Escape, 1, 2, ...), beginning
/// with `firstNote` or else with the lowest note; a remark says so. Thread: any.
void addRegions(const std::vector<NoteRegion>& regions, const NoteKeys& named,
                std::optional<int> firstNote, ForeignPack& pack);

/// "60", "c4" (which is 60), "F#3", "eb2" as a MIDI number; none if it is none of 0 to 127.
std::optional<int> noteOf(std::string_view text);

} // namespace vornic
