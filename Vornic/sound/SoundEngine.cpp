#include "Vornic/sound/SoundEngine.h"

#include "Vornic/sound/StaleKeys.h"
#include "VornicCore/base/SampleRate.h"
#include "VornicCore/realtime/ScopedFlushDenormals.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace vornic {

namespace {

constexpr std::uint32_t queueCapacity = 512;
constexpr std::string_view auditionKey = "audition";

} // namespace

SoundEngine::SoundEngine(AudioOutput& output, const Clock& clock, Executor runOnKeyThread,
                         Options options)
    : output_(output), clock_(clock), runOnKeyThread_(std::move(runOnKeyThread)), options_(options),
      core_(DSP::sampleRate, queueCapacity), lastUse_(-std::numeric_limits<double>::infinity()),
      volume_(static_cast<float>(userVolume_)) {
    output_.onConfigurationChange = [this] { configurationChanged(); };
    output_.open(*this);
}

SoundEngine::SoundEngine(AudioOutput& output, const Clock& clock, Executor runOnKeyThread)
    : SoundEngine(output, clock, std::move(runOnKeyThread), Options()) {}

SoundEngine::~SoundEngine() {
    output_.close();
    output_.onConfigurationChange = nullptr;
}

bool SoundEngine::ensureRunning() {
    // First the time, then the state of the output: tick() does it the other way round, so that one
    // of the two sees what the other did.
    lastUse_.store(clock_.seconds());
    return start();
}

bool SoundEngine::start() {
    if (!output_.isRunning()) {
        startRequest_.store(clock_.nanos());
    }
    return output_.requestStart();
}

void SoundEngine::setBank(std::shared_ptr<const VoiceBank> bank) {
    if (bank == bank_) {
        return;
    }
    retired_.takeBack(bank);
    std::swap(bank_, bank);
    if (bank != nullptr) {
        retired_.add(std::move(bank), clock_.seconds());
    }
}

void SoundEngine::setRoom(Room room) {
    room_.setRoom(room);
}

void SoundEngine::setVolume(double volume) {
    if (std::isfinite(volume)) {
        userVolume_ = std::clamp(volume, 0.0, 1.0);
        volume_.set(static_cast<float>(userVolume_));
    }
}

void SoundEngine::setReflection(float level, float damp) {
    if (std::isfinite(level) && std::isfinite(damp)) {
        core_.setReflectionDamp(damp);
        core_.setReflection(level);
    }
}

void SoundEngine::audition(std::span<const float> samples, float gain) {
    if (samples.size() < 2 || !std::isfinite(gain) || !ensureRunning()) {
        return;
    }
    std::vector<float> frames(samples.begin(), samples.end());
    // One value that is no number would stay in the reflection for ever.
    std::ranges::replace_if(frames, [](float frame) { return !std::isfinite(frame); }, 0.0F);
    const auto fresh = std::make_shared<VoiceBank>();
    fresh->add(auditionKey, {std::move(frames)});
    retired_.add(fresh, clock_.seconds());
    runOnKeyThread_([this, fresh, gain] {
        auditions_.fetch_add(1, std::memory_order_relaxed);
        core_.play(fresh->pool(auditionKey).front(), gain, 0.0F, 1.0F, 0, VoiceStage::none);
    });
}

double SoundEngine::idleLimit() const {
    return output_.device().isBluetooth ? options_.idleLimits.bluetooth : options_.idleLimits.wired;
}

double SoundEngine::secondsSinceUse() const {
    return clock_.seconds() - lastUse_.load();
}

void SoundEngine::tick() {
    retired_.release(clock_.seconds(), core_);
    const double limit = idleLimit();
    if (!output_.isRunning() || secondsSinceUse() <= limit) {
        return;
    }
    output_.pause();
    // A key that came in between may have seen the output still running.
    if (secondsSinceUse() <= limit) {
        start();
    }
}

void SoundEngine::configurationChanged() {
    if (secondsSinceUse() < idleLimit()) {
        // Another device has to start, whether the output runs on or not.
        startRequest_.store(clock_.nanos());
        ensureRunning();
    }
    onOutputChange();
}

void SoundEngine::render(std::int64_t frames, float* left, float* right,
                         std::uint64_t nowNanos) VORNIC_REALTIME {
    const ScopedFlushDenormals flush;
    const std::uint64_t staleBefore =
        StaleKeys::before(lastRender_, startRequest_.load(std::memory_order_relaxed), nowNanos);
    if (nowNanos != 0) {
        lastRender_ = nowNanos;
    }
    core_.render(frames, left, right, nowNanos, staleBefore);
    if (options_.raw) {
        return;
    }
    const auto count = static_cast<std::size_t>(frames);
    room_.process(count, left, right);
    limiter_.process(count, left, right);
    volume_.process(count, left, right);
    notePeak({left, count}, {right, count});
}

void SoundEngine::notePeak(std::span<const float> left,
                           std::span<const float> right) VORNIC_REALTIME {
    float peak = peak_.load(std::memory_order_relaxed);
    for (std::size_t at = 0; at < left.size(); ++at) {
        peak = std::max({peak, std::abs(left[at]), std::abs(right[at])});
    }
    // What is taken in between is told twice, which nobody sees.
    peak_.store(peak, std::memory_order_relaxed);
}

void SoundEngine::streamEnded() {
    core_.clear();
    lastRender_ = 0;
    room_.reset();
    limiter_.reset();
}

} // namespace vornic
