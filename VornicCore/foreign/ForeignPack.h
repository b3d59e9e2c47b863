#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace vornic {

/// The formats of sound packs of other programs.
enum class PackFormat : std::uint8_t {
    mechvibes,
    mechvibes2,
    mechvibesDx,
    keyEcho,
    keyboardSounds,
    bucklespring,
    sfz,
    neptune,
    daktilo,
    decentSampler
};

template <>
struct CaseNames<PackFormat> {
    static constexpr std::array names{
        CaseName{PackFormat::mechvibes, "mechvibes", "Mechvibes"},
        CaseName{PackFormat::mechvibes2, "mechvibes2", "Mechvibes, version 2"},
        CaseName{PackFormat::mechvibesDx, "mechvibesDx", "mechvibes-dx"},
        CaseName{PackFormat::keyEcho, "keyEcho", "KeyEcho"},
        CaseName{PackFormat::keyboardSounds, "keyboardSounds", "keyboardsounds"},
        CaseName{PackFormat::bucklespring, "bucklespring", "bucklespring"},
        CaseName{PackFormat::sfz, "sfz", "SFZ"},
        CaseName{PackFormat::neptune, "neptune", "Neptune"},
        CaseName{PackFormat::daktilo, "daktilo", "daktilo"},
        CaseName{PackFormat::decentSampler, "decentSampler", "Decent Sampler"},
    };
};

/// A piece of one of a pack's audio files: one recording of a stroke.
struct ForeignTake {
    enum class Unit : std::uint8_t { milliseconds, frames };

    /// The file's name within what was opened.
    std::string file;
    /// What `begin` and `end` count; frames are those of the file's own rate.
    Unit unit = Unit::milliseconds;
    double begin = 0;
    /// Absent: to the end of the file.
    std::optional<double> end = std::nullopt;
    double gainDb = 0;
    double semitones = 0;

    auto operator<=>(const ForeignTake&) const = default;
};

/// What one key sounds like.
struct ForeignKey {
    std::vector<ForeignTake> press;
    std::vector<ForeignTake> release;

    auto operator<=>(const ForeignKey&) const = default;
};

/// Sentences for the user about what a pack holds.
struct PackNotes {
    /// What the pack names and does not have, or has in no readable form.
    std::vector<std::string> missing;
    /// What was wrong and could be put right.
    std::vector<std::string> repaired;
    /// What was left out.
    std::vector<std::string> ignored;
    /// Whatever else the user should know.
    std::vector<std::string> remarks;

    bool operator==(const PackNotes&) const = default;

    /// Adds the notes of `other` that are not there yet.
    void add(const PackNotes& other);
};

/// One line of a text from anywhere, for people: valid UTF-8 without what controls the output.
std::string plainLine(const std::string& text, std::size_t longest = 200);

/// Adds a note once, and no more than anybody reads.
void addNote(std::vector<std::string>& notes, const std::string& note);

/// A sound pack of another program as it was read; no audio yet. A value.
/// Thread: any, as everything here.
struct ForeignPack {
    PackFormat format = PackFormat::mechvibes;
    /// The folder in what was opened; empty: its top.
    std::string place;
    std::string name;
    /// Empty: the pack does not say.
    std::string author;
    std::string licence;
    std::string description;
    /// The text of the licence that lies in the pack; may be empty.
    std::string licenceText;
    /// By virtual key code.
    std::map<std::int64_t, ForeignKey> keys;
    /// Keys that the pack wants silent.
    std::set<std::int64_t> silent;
    /// What plays where a key has no press or no release of its own; may be empty.
    ForeignKey fallback;
    PackNotes notes;
};

/// Says to the user why something is no pack or cannot be read as one.
class ForeignPackError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What a pack from anywhere may cost. Real ones are far below.
namespace PackLimits {
/// Files in what is opened, folders not counted.
inline constexpr std::size_t mostFiles = 5000;
/// All files of an archive together, in bytes.
inline constexpr std::uint64_t mostBytes = std::uint64_t{512} << 20U;
/// How many times its own size an archive may grow, once it is past `freeBytes`.
inline constexpr std::uint64_t mostRatio = 100;
inline constexpr std::uint64_t freeBytes = std::uint64_t{16} << 20U;
/// Folders within each other.
inline constexpr std::size_t deepest = 8;
/// Of a file that describes a pack, in bytes.
inline constexpr std::size_t largestText = std::size_t{4} << 20U;
/// Of one name.
inline constexpr std::size_t longestName = 1000;
/// Audio of one pack, decoded, in seconds.
inline constexpr double mostSeconds = 900;
/// Recordings of one pack.
inline constexpr std::size_t mostTakes = 4000;
/// Recordings of one key and direction.
inline constexpr std::size_t mostTakesOfKey = 64;
/// Packs in one folder or archive.
inline constexpr std::size_t mostPacks = 200;
/// Notes of one kind.
inline constexpr std::size_t mostNotes = 200;
} // namespace PackLimits

} // namespace vornic
