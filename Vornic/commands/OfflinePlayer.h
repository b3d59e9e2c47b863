#pragma once

#include "Vornic/commands/FileOutput.h"
#include "Vornic/typing/KeyEvent.h"
#include "Vornic/typing/PlaySettings.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// What an offline run played.
struct OfflineReport {
    /// Key-downs.
    std::int64_t keys = 0;
    /// Voices that began to sound.
    std::int64_t started = 0;
    /// Requests that found no place, in the ring or among the voices.
    std::int64_t dropped = 0;
    /// Voices faded out early for a newer one.
    std::int64_t stolen = 0;
    /// Largest magnitude written.
    float peak = 0.0f;
    /// Frames written, 48000 a second.
    std::int64_t frames = 0;
};

/// Plays key events through driver, sampler, room, limiter and volume into a file, as fast as the
/// machine can, in blocks of 128 frames. An event sounds in the first block that starts at or after
/// its time; the driver's clock shows the event's time. Equal input gives equal bytes.
/// Thread: any, one for all calls.
class OfflinePlayer {
  public:
    struct Options {
        /// Starts the driver's random choices.
        std::uint64_t seed = 0;
        /// Leaves room, limiter and volume out.
        bool raw = false;
        /// 0 to 1.
        double volume = 0.7;
    };

    explicit OfflinePlayer(Options options) : options_(options) {}

    /// Plays `events`, which are in order of time, until the last sound has died away, at most
    /// `longestTailSeconds` after the last event. `report` is told why keys stay silent. Throws
    /// std::runtime_error with a sentence for the user when the file cannot be written; nothing is
    /// left of it then.
    OfflineReport play(const std::vector<KeyEvent>& events,
                       std::shared_ptr<const PlaySettings> settings, FileOutput& output,
                       const std::function<void(const std::string&)>& report) const;

    /// The slowest voice of a long recording lasts longer than anybody wants to wait for.
    static constexpr double longestTailSeconds = 30.0;

  private:
    Options options_;
};

} // namespace vornic
