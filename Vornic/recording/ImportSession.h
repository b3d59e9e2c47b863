#pragma once

#include "Vornic/recording/Gap.h"
#include "VornicCore/base/Uuid.h"
#include "VornicCore/strokes/Stroke.h"
#include "VornicCore/strokes/StrokeCuts.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace vornic {

/// What is shown while the user chooses from the keystrokes of a recording.
struct ImportSession {
    Uuid id;
    /// Of the sound to be made.
    std::string name;
    /// The best first.
    std::vector<Stroke> strokes;
    /// Places in `strokes`; all of them at first.
    std::set<std::size_t> selected;
    /// How many strokes the recording has, good or not.
    std::int64_t foundTotal = 0;

    bool operator==(const ImportSession&) const = default;
};

/// What the user is told when there is nothing to choose from.
namespace ImportMessages {
inline constexpr const char* accessDenied =
    "Vornic needs microphone access to record your keyboard.";
inline constexpr const char* noMicrophone = "Couldn't start the microphone.";
inline constexpr const char* unreadableFile = "Couldn't read that file.";
inline constexpr const char* noStrokes =
    "No keystrokes found. Press keys one at a time, a little apart.";
inline constexpr const char* noGoodStrokes =
    "The keystrokes were too quiet or too close together. Try again nearer the mic, one key at a "
    "time.";
} // namespace ImportMessages

/// Either a session or the message that says why there is none.
struct SessionOutcome {
    std::optional<ImportSession> session;
    std::string error;
    /// With a session: where its strokes are cut, in their order.
    std::optional<StrokeCuts> cuts;
};

/// Which message says that no stroke is good enough, of `found` strokes in all.
std::string messageWithoutStrokes(std::size_t found);

/// Cuts `samples` (48 kHz mono) into strokes and offers the best of them, all selected; none that
/// one of the recording's `gaps` has torn. Thread: any. About 10 ms for 20 s.
SessionOutcome makeSession(std::span<const float> samples, std::string name,
                           std::span<const Gap> gaps = {});

} // namespace vornic
