#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/sound/SoundEngine.h"
#include "Vornic/typing/KeyCounts.h"
#include "Vornic/typing/PlaySettings.h"
#include "Vornic/typing/TypingDynamics.h"
#include "VornicCore/base/SplitMix64.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>

namespace vornic {

/// How a key sounds, for what shows it: the press of a key that stays silent has no loudness.
struct Strike {
    /// From 0 to 1; 1 for a hard stroke at the board's own level, or a louder one.
    float loudness = 0;
    /// Between left (-1) and right (+1).
    float pan = 0;
};

/// Turns a key event into at most one voice: resolves the key through the board, chooses the
/// velocity from the typing pace, picks a variation and computes gain, pan, rate and stage.
/// Thread: key; or the one thread that plays a sequence offline.
class KeystrokeDriver {
  public:
    /// `clock` times the typing dynamics. `seed` starts the random choices. `report` is told, once
    /// per field, why keys stay silent whose settings cannot be played.
    KeystrokeDriver(SoundEngine& engine, const Clock& clock, std::uint64_t seed,
                    std::function<void(const std::string&)> report);

    /// Takes effect with the next key. The engine has its bank by `setBank`, which keeps what
    /// voices read.
    void apply(std::shared_ptr<const PlaySettings> settings);

    /// Plays the key event, unless the program is quiet. `nanos` is the event's monotonic time.
    Strike key(std::int64_t keyCode, bool down, std::uint64_t nanos);

    /// Voices handed to the sampler so far.
    std::int64_t played() const { return played_; }

    /// What has become of the keys as far as the driver knows. Thread: any.
    KeyCounts counts() const;

  private:
    struct Voice {
        double gain;
        double rate;
        float pan;
        VoiceStage stage;
        std::uint64_t nanos;
        std::int64_t keyCode;
        double differ; // how much the board's keys do, 0 to 1
    };

    Strike play(const PlaySettings& settings, std::int64_t keyCode, bool down, std::uint64_t nanos);
    Velocity velocity(const Board& board) const;
    bool playOneOf(std::span<const Sample> variations, const Voice& voice);
    bool playable(const Voice& voice);
    bool refuse(const std::string& field);

    SoundEngine& engine_;
    const Clock& clock_;
    SplitMix64 generator_;
    std::function<void(const std::string&)> report_;
    std::shared_ptr<const PlaySettings> settings_;
    TypingDynamics dynamics_;
    std::set<std::string> refused_;
    std::int64_t played_ = 0;

    // Written by the key thread alone, read by any.
    using Counter = std::atomic<std::int64_t>;
    static void count(Counter& counter);
    Counter pressed_{0};
    Counter released_{0};
    Counter quiet_{0};
    Counter noSound_{0};
    Counter noOutput_{0};
    Counter notPlayable_{0};
};

} // namespace vornic
