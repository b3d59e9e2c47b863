#pragma once

#include "Vornic/ports/AudioOutput.h"
#include "Vornic/ports/Clock.h"
#include "Vornic/sound/RetiredBanks.h"
#include "VornicCore/effects/Limiter.h"
#include "VornicCore/effects/RoomReverb.h"
#include "VornicCore/effects/Volume.h"
#include "VornicCore/sampler/SamplerCore.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace vornic {

/// How long the output runs on without a key, in seconds. Thread: any.
struct IdleLimits {
    double wired = 30.0;
    /// Longer, because a Bluetooth link takes its time to come up again.
    double bluetooth = 300.0;
};

/// Connects the sampler to the sound output: sampler, room, limiter, volume. Keeps the bank that
/// keys play from, and replaced ones while a voice may read them, starts the output on demand and
/// pauses it after a time without use.
///
/// Thread: main, for construction, destruction and everything not said otherwise; `ensureRunning`
/// and `core().play` on the key thread, `render` on the audio thread. Stop the key thread before
/// destroying the engine.
class SoundEngine final : public AudioOutput::Source {
  public:
    /// Runs work on the key thread, in order; the offline path runs it at once.
    using Executor = std::function<void(std::function<void()>)>;

    struct Options {
        IdleLimits idleLimits;
        /// Leaves room, limiter and volume out: the sampler's sound as it is.
        bool raw = false;
    };

    /// Opens `output` and becomes its source. Both references must outlive the engine.
    SoundEngine(AudioOutput& output, const Clock& clock, Executor runOnKeyThread, Options options);
    SoundEngine(AudioOutput& output, const Clock& clock, Executor runOnKeyThread);
    ~SoundEngine() override;

    /// Told, on the main thread, that the output device changed, after the engine has followed.
    std::function<void()> onOutputChange = [] {};

    /// The mixer; the key thread alone calls its `play`.
    SamplerCore& core() { return core_; }
    const SamplerCore& core() const { return core_; }

    /// Notes the use and makes the output run; true when it runs or is about to, false when there
    /// is nothing to play to: then the key is silent, and the next one tries again. Waits for no
    /// lock that the sound server can hold. Thread: any.
    bool ensureRunning();

    /// The bank that keys play from; may be none.
    const std::shared_ptr<const VoiceBank>& bank() const { return bank_; }

    /// Makes `bank` current and retires the one before, if it is another. Call it before the key
    /// thread gets `bank`: from then on its frames stay valid for as long as the key thread holds
    /// it or a voice reads it.
    void setBank(std::shared_ptr<const VoiceBank> bank);

    /// Changes the room: its preset and mix first, what lets it through last.
    void setRoom(Room room);

    /// The user's volume, 0 to 1 (limited to that), behind everything else. 0.7 at the start; a
    /// value that is not finite changes nothing.
    void setVolume(double volume);
    double volume() const { return userVolume_; }

    /// The largest sample that went out since the last call, 0 to 1, for who shows it: one caller.
    /// Thread: any.
    float takePeak() { return peak_.exchange(0.0F, std::memory_order_relaxed); }

    /// The early reflection of the desk: its level (0 = off) and its smoothing coefficient. Values
    /// that are not finite change nothing.
    void setReflection(float level, float damp);

    /// Plays one mono buffer once, centred. Fewer than 2 frames, or a gain that is not finite, play
    /// nothing and start nothing.
    void audition(std::span<const float> samples, float gain);

    /// Housekeeping; call it every 1.0 s.
    void tick();

    /// Follows a changed output device: goes on playing if a key was heard within the idle limit.
    /// The output calls it.
    void configurationChanged();

    /// Sounds that `audition` has handed to the sampler.
    std::int64_t auditions() const { return auditions_.load(std::memory_order_relaxed); }

    /// Replaced banks that are still kept.
    std::size_t retiredBanks() const { return retired_.size(); }

    void render(std::int64_t frames, float* left, float* right,
                std::uint64_t nowNanos) VORNIC_REALTIME override;
    void streamEnded() override;

  private:
    bool start();
    double idleLimit() const;
    double secondsSinceUse() const;
    void notePeak(std::span<const float> left, std::span<const float> right) VORNIC_REALTIME;

    AudioOutput& output_;
    const Clock& clock_;
    const Executor runOnKeyThread_;
    const Options options_;
    SamplerCore core_;
    std::shared_ptr<const VoiceBank> bank_;
    RetiredBanks retired_;
    std::atomic<double> lastUse_; // seconds of clock_; minus infinity before the first use
    /// When the output, while it did not run, was last asked to; nanoseconds, 0 = never.
    std::atomic<std::uint64_t> startRequest_{0};
    std::atomic<std::int64_t> auditions_{0}; // written by the key thread
    std::atomic<float> peak_{0.0F};
    double userVolume_ = 0.7;
    RoomReverb room_;
    Limiter limiter_;
    Volume volume_;
    std::uint64_t lastRender_ = 0; // nanoseconds, 0 = none since the stream began; audio thread
};

} // namespace vornic
