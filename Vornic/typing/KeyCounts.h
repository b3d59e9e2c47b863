#pragma once

#include <cstdint>

namespace vornic {

/// What has become of the keys since the start. As many as were pressed, released and auditioned
/// were started or dropped, but for those that wait in the queue this very moment. Thread: any.
struct KeyCounts {
    /// Key-downs.
    std::int64_t pressed = 0;
    /// Key-ups that the board gives a sound to.
    std::int64_t released = 0;
    /// Sounds played from the windows.
    std::int64_t auditions = 0;
    /// Voices that began to sound, and those that faded out early for a newer one.
    std::int64_t started = 0;
    std::int64_t stolen = 0;

    struct Dropped {
        /// The program was quiet.
        std::int64_t quiet = 0;
        /// The board gives the key no sound, or the sound has no recordings.
        std::int64_t noSound = 0;
        /// There was nothing to play to.
        std::int64_t noOutput = 0;
        /// Gain, pan or pitch were beyond what can be played.
        std::int64_t notPlayable = 0;
        /// The queue to the audio thread was full.
        std::int64_t queueFull = 0;
        /// So many voices sounded that none was left.
        std::int64_t noVoice = 0;
        /// The sound server had stalled.
        std::int64_t stalled = 0;
        /// The sound server ended.
        std::int64_t streamEnded = 0;

        std::int64_t sum() const {
            return quiet + noSound + noOutput + notPlayable + queueFull + noVoice + stalled +
                   streamEnded;
        }
    } dropped;
};

} // namespace vornic
