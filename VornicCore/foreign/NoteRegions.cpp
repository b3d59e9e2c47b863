#include "VornicCore/foreign/NoteRegions.h"

#include "VornicCore/foreign/PackFolder.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <utility>

namespace vornic {

namespace {

constexpr int lastNote = 127;

std::map<int, ForeignKey> soundsOfNotes(const std::vector<NoteRegion>& regions) {
    std::map<int, ForeignKey> notes;
    for (const NoteRegion& region : regions) {
        for (int note = std::max(region.low, 0); note <= std::min(region.high, lastNote); ++note) {
            ForeignKey& key = notes[note];
            std::vector<ForeignTake>& takes = region.isRelease ? key.release : key.press;
            ForeignTake take = region.take;
            // Finer than anybody hears, and equal where it is meant to be.
            take.semitones += (note - region.centre) * region.tracking;
            take.semitones = std::round(take.semitones * 1000) / 1000;
            if (takes.size() < PackLimits::mostTakesOfKey &&
                std::ranges::find(takes, take) == takes.end()) {
                takes.push_back(std::move(take));
            }
        }
    }
    return notes;
}

/// Escape, 1, 2 and so on: as the keys' scan codes count.
std::vector<std::int64_t> keysInOrder() {
    std::vector<KnownKey> keys(knownKeys().begin(), knownKeys().end());
    std::ranges::sort(keys, {}, &KnownKey::evdev);
    std::vector<std::int64_t> codes(keys.size());
    std::ranges::transform(keys, codes.begin(), &KnownKey::code);
    return codes;
}

NoteKeys keysFrom(int first) {
    NoteKeys keys;
    int note = first;
    for (const std::int64_t code : keysInOrder()) {
        if (note > lastNote) {
            break;
        }
        keys[note++] = code;
    }
    return keys;
}

void remarkVelocities(const std::vector<NoteRegion>& regions, ForeignPack& pack) {
    std::set<std::pair<int, int>> velocities;
    for (const NoteRegion& region : regions) {
        velocities.emplace(region.softest, region.hardest);
    }
    if (velocities.size() > 1) {
        addNote(pack.notes.remarks, "Its recordings of " + std::to_string(velocities.size()) +
                                        " velocities are kept as variations.");
    }
}

} // namespace

void addRegions(const std::vector<NoteRegion>& regions, const NoteKeys& named,
                std::optional<int> firstNote, ForeignPack& pack) {
    remarkVelocities(regions, pack);
    std::map<int, ForeignKey> notes = soundsOfNotes(regions);
    if (notes.empty()) {
        throw ForeignPackError("It gives no note a sound.");
    }
    const bool isSame = std::ranges::all_of(
        notes, [&](const auto& entry) { return entry.second == notes.begin()->second; });
    if (isSame && named.empty()) {
        pack.fallback = std::move(notes.begin()->second);
        return;
    }
    const int first = firstNote.value_or(notes.begin()->first);
    const NoteKeys keys = named.empty() ? keysFrom(first) : named;
    for (auto& [note, sound] : notes) {
        if (const auto key = keys.find(note); key != keys.end()) {
            pack.keys[key->second] = std::move(sound);
        } else {
            addNote(pack.notes.ignored, "Note " + std::to_string(note) + " stands for no key.");
        }
    }
    if (pack.keys.empty()) {
        throw ForeignPackError("None of its notes stands for a key.");
    }
    if (named.empty()) {
        addNote(pack.notes.remarks, "Its notes name no keys: note " + std::to_string(first) +
                                        " is Escape, and the others follow as scan codes count.");
    }
}

std::optional<int> noteOf(std::string_view text) {
    const std::string lower = lowerCase(trimmed(text));
    std::optional<double> number = numberOf(lower);
    constexpr std::string_view letters = "c d ef g a b";
    const std::size_t step = lower.empty() ? std::string_view::npos : letters.find(lower[0]);
    if (!number && step != std::string_view::npos && lower[0] != ' ') {
        std::string_view rest = std::string_view(lower).substr(1);
        double shift = 0;
        if (rest.starts_with('#') || rest.starts_with('b')) {
            shift = rest[0] == '#' ? 1 : -1;
            rest.remove_prefix(1);
        }
        if (const std::optional<double> octave = numberOf(rest)) {
            number = (*octave + 1) * 12 + static_cast<double>(step) + shift;
        }
    }
    return number && *number >= 0 && *number <= lastNote && *number == std::floor(*number)
               ? std::optional(static_cast<int>(*number))
               : std::nullopt;
}

} // namespace vornic
