#pragma once

#include "VornicCore/realtime/EventRing.h"
#include "VornicCore/realtime/RealTime.h"
#include "VornicCore/sampler/EarlyReflection.h"
#include "VornicCore/sampler/FadeCurve.h"
#include "VornicCore/sampler/Sample.h"
#include "VornicCore/sampler/VoiceMixer.h"
#include "VornicCore/sampler/VoiceStage.h"
#include "VornicCore/sampler/VoiceTable.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace vornic {

/// The real-time voice mixer. The key thread calls `play`, the audio thread `render`; a lock-free
/// ring of requests is all that connects them. The samples belong to the caller, who keeps them
/// until `settledEvents` says that nothing reads them any more. Thread: any, where nothing else is
/// said.
class SamplerCore {
  public:
    using Voice = vornic::Voice;

    /// The most voices that sound at once, fading ones not counted.
    static constexpr int maxVoices = VoiceTable::maxVoices;
    /// Length of a stolen voice's fade-out, in seconds.
    static constexpr double stealFade = 0.006;

    /// Fatal if the request queue cannot be made. `queueCapacity` is rounded up to a power of two.
    SamplerCore(double sampleRate, std::uint32_t queueCapacity,
                VoiceMixer mixer = bestVoiceMixer());

    /// Left and right gain of the pan law: constant power, `gain` on both sides in the middle.
    struct Ears {
        float left, right;
    };
    /// `pan` is limited to -1 (left) to 1 (right); one that is not a number counts as 1.
    static Ears ears(float gain, float pan) noexcept;

    /// Asks for a sample to be played from the start of the next buffer on. `rate` is the step of
    /// the read position (1 = recorded speed), finite and above 0; `eventNanos` the key event's
    /// monotonic time stamp, 0 = none. False when the queue is full: the key is lost. A length
    /// beyond 32 bits is fatal. Thread: key.
    bool play(const Sample& sample, float gain, float pan, float rate, std::uint64_t eventNanos,
              const VoiceStage& stage) VORNIC_REALTIME;

    /// Overwrites `frames` frames of both buffers with what sounds; `nowNanos` is the buffer's
    /// monotonic time stamp, 0 = unknown. Requests stamped before `staleBefore` are dropped
    /// unheard; those without a stamp never. A negative frame count is fatal. Thread: real-time.
    void render(std::int64_t frames, float* left, float* right, std::uint64_t nowNanos,
                std::uint64_t staleBefore = 0) VORNIC_REALTIME;

    /// Forgets every queued request, every voice and the reflection's history. Only while no
    /// `render` runs or can start; `play` may run.
    void clear() VORNIC_REALTIME;

    /// Level of the early reflection, 0 = off.
    float reflection() const { return reflection_.load(relaxed); }
    void setReflection(float level) { reflection_.store(level, relaxed); }
    /// Smoothing coefficient of the early reflection.
    float reflectionDamp() const { return reflectionDamp_.load(relaxed); }
    void setReflectionDamp(float damp) { reflectionDamp_.store(damp, relaxed); }

    double sampleRate() const { return sampleRate_; }
    /// Length of a stolen voice's fade-out, in frames.
    std::int64_t fadeFrames() const { return fade_.frames(); }
    /// Frames rendered and voices started since construction. These counters and those below may
    /// lag behind the audio thread by one buffer.
    std::int64_t framesRendered() const { return framesRendered_.load(relaxed); }
    std::int64_t keysStarted() const { return keysStarted_.load(relaxed); }
    /// Voices that sound and do not fade, and voices that fade.
    std::int64_t activeVoices() const { return activeVoices_.load(relaxed); }
    std::int64_t fadingVoices() const { return fadingVoices_.load(relaxed); }
    /// Voices that had to fade out for a new one.
    std::int64_t voicesStolen() const { return voicesStolen_.load(relaxed); }
    /// Requests lost because the queue was full, because no slot was free or fading, because they
    /// were stale, and because `clear` found them waiting.
    std::int64_t eventsRefused() const { return eventsRefused_.load(relaxed); }
    std::int64_t eventsWithoutSlot() const { return eventsWithoutSlot_.load(relaxed); }
    std::int64_t eventsStale() const { return eventsStale_.load(relaxed); }
    std::int64_t eventsCleared() const { return eventsCleared_.load(relaxed); }
    /// All of these.
    std::int64_t eventsDropped() const {
        return eventsRefused() + eventsWithoutSlot() + eventsStale() + eventsCleared();
    }

    /// Requests queued since construction. A request is counted before its `play` returns.
    std::uint64_t pushedEvents() const { return pushedEvents_.load(std::memory_order_acquire); }

    /// The audio thread is done with this many requests, counted in the order of `play`: it has
    /// taken them from the queue and no voice reads their samples any more. To free samples: make
    /// sure that no `play` with them runs or can follow, note `pushedEvents()`, and wait until
    /// `settledEvents()` has reached it.
    std::uint64_t settledEvents() const { return settledEvents_.load(std::memory_order_acquire); }

    /// The slots. Thread: real-time, or while it does not render.
    const VoiceTable::Slots& voices() const { return table_.slots(); }

  private:
    static constexpr auto relaxed = std::memory_order_relaxed;

    struct RingDeleter {
        void operator()(vornic_ring* ring) const noexcept { vornic_ring_destroy(ring); }
    };

    void startQueuedVoices(std::uint64_t nowNanos, std::uint64_t staleBefore) VORNIC_REALTIME;
    void publish() VORNIC_REALTIME;

    const double sampleRate_;
    const FadeCurve fade_;
    const VoiceMixer mixer_;
    const std::unique_ptr<vornic_ring, RingDeleter> ring_;

    // Thread: real-time.
    VoiceTable table_;
    EarlyReflection earlyReflection_;
    std::uint64_t poppedEvents_ = 0;

    // Written by any thread, read once per render call.
    std::atomic<float> reflection_{0.0F};
    std::atomic<float> reflectionDamp_{0.35F};

    // Written by the audio thread.
    std::atomic<std::int64_t> framesRendered_{0};
    std::atomic<std::int64_t> keysStarted_{0};
    std::atomic<std::int64_t> activeVoices_{0};
    std::atomic<std::int64_t> fadingVoices_{0};
    std::atomic<std::int64_t> voicesStolen_{0};
    std::atomic<std::int64_t> eventsWithoutSlot_{0};
    std::atomic<std::int64_t> eventsStale_{0};
    std::atomic<std::int64_t> eventsCleared_{0};
    std::atomic<std::uint64_t> settledEvents_{0};

    // Written by the key thread.
    std::atomic<std::int64_t> eventsRefused_{0};
    std::atomic<std::uint64_t> pushedEvents_{0};
};

} // namespace vornic
