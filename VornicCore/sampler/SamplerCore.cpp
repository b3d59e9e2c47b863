#include "VornicCore/sampler/SamplerCore.h"

#include "VornicCore/realtime/Fatal.h"
#include "VornicCore/realtime/Forget.h"
#include "VornicCore/realtime/IntegerPart.h"
#include "VornicCore/realtime/LatencyMeter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace vornic {

namespace {

std::int64_t fadeFramesAt(double sampleRate) noexcept {
    return std::max<std::int64_t>(
        1, requireIntegerPart(sampleRate * SamplerCore::stealFade, "sample rate out of range"));
}

/// Adds to a counter that only this thread writes.
template <typename Number>
void add(std::atomic<Number>& counter, Number amount) VORNIC_REALTIME {
    counter.store(counter.load(std::memory_order_relaxed) + amount, std::memory_order_relaxed);
}

} // namespace

SamplerCore::SamplerCore(double sampleRate, std::uint32_t queueCapacity, VoiceMixer mixer)
    : sampleRate_(sampleRate), fade_(fadeFramesAt(sampleRate)), mixer_(mixer),
      ring_(vornic_ring_create(queueCapacity)), table_(fade_.frames()),
      earlyReflection_(sampleRate) {
    require(ring_ != nullptr, "no memory for the sampler's queue");
}

SamplerCore::Ears SamplerCore::ears(float gain, float pan) noexcept {
    // Written so that a pan that is not a number becomes 1.
    const double upTo1 = pan < 1.0F ? static_cast<double>(pan) : 1.0;
    const double limited = upTo1 > -1.0 ? upTo1 : -1.0;
    const double theta = (limited + 1.0) * std::numbers::pi * 0.25;
    const double centred = static_cast<double>(gain) * std::numbers::sqrt2;
    return {.left = static_cast<float>(std::cos(theta) * centred),
            .right = static_cast<float>(std::sin(theta) * centred)};
}

bool SamplerCore::play(const Sample& sample, float gain, float pan, float rate,
                       std::uint64_t eventNanos, const VoiceStage& stage) VORNIC_REALTIME {
    require(sample.length >= 0 && sample.length <= std::numeric_limits<std::uint32_t>::max(),
            "sample length beyond 32 bits");
    const Ears gains = ears(gain, pan);
    const vornic_event event = {.samples = sample.data,
                                .length = static_cast<std::uint32_t>(sample.length),
                                .gain_left = gains.left,
                                .gain_right = gains.right,
                                .rate = rate,
                                .nanos = eventNanos,
                                .itd_frames = stage.itdFrames,
                                .far_lowpass = stage.farLowpass,
                                .far_ear = stage.farEar};
    if (!vornic_ring_push(ring_.get(), &event)) {
        add<std::int64_t>(eventsRefused_, 1);
        return false;
    }
    // Release: whoever reads the count also sees what this thread did before.
    pushedEvents_.store(pushedEvents_.load(relaxed) + 1, std::memory_order_release);
    return true;
}

void SamplerCore::render(std::int64_t frames, float* left, float* right, std::uint64_t nowNanos,
                         std::uint64_t staleBefore) VORNIC_REALTIME {
    require(frames >= 0, "negative frame count");
    std::fill_n(left, frames, 0.0F);
    std::fill_n(right, frames, 0.0F);
    add(framesRendered_, frames);
    startQueuedVoices(nowNanos, staleBefore);
    for (Voice& voice : table_.slots()) {
        if (voice.data != nullptr) {
            mixer_(voice, fade_, frames, left, right);
        }
    }
    earlyReflection_.process(frames, left, right, reflection(), reflectionDamp());
    publish();
}

void SamplerCore::startQueuedVoices(std::uint64_t nowNanos,
                                    std::uint64_t staleBefore) VORNIC_REALTIME {
    vornic_event event{};
    while (vornic_ring_pop(ring_.get(), &event)) {
        if (event.nanos != 0 && event.nanos < staleBefore) {
            ++poppedEvents_;
            add<std::int64_t>(eventsStale_, 1);
            continue;
        }
        const VoiceTable::Outcome outcome = table_.start(event, poppedEvents_);
        ++poppedEvents_;
        if (outcome == VoiceTable::Outcome::dropped) {
            add<std::int64_t>(eventsWithoutSlot_, 1);
        } else if (outcome != VoiceTable::Outcome::ignored) {
            add<std::int64_t>(keysStarted_, 1);
        }
        if (outcome == VoiceTable::Outcome::stole) {
            add<std::int64_t>(voicesStolen_, 1);
        }
        if (event.nanos != 0 && nowNanos > event.nanos) {
            constexpr std::uint64_t longest = std::numeric_limits<std::uint32_t>::max();
            const std::uint64_t micros = (nowNanos - event.nanos) / 1000;
            vornic_latency_record(static_cast<std::uint32_t>(std::min(micros, longest)));
        }
    }
    forget(event);
}

void SamplerCore::publish() VORNIC_REALTIME {
    activeVoices_.store(table_.sounding(), relaxed);
    fadingVoices_.store(table_.fading(), relaxed);
    // Release: whoever frees samples on seeing the count does so after our last read of them.
    settledEvents_.store(table_.settled(poppedEvents_), std::memory_order_release);
}

void SamplerCore::clear() VORNIC_REALTIME {
    vornic_event event{};
    while (vornic_ring_pop(ring_.get(), &event)) {
        ++poppedEvents_;
        add<std::int64_t>(eventsCleared_, 1);
    }
    forget(event);
    table_.clear();
    earlyReflection_.clear();
    publish();
}

} // namespace vornic
