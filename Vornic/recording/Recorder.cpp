#include "Vornic/recording/Recorder.h"

#include "VornicCore/base/SampleRate.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/realtime/IntegerPart.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

constexpr const char* microphoneGone =
    "The microphone is gone. What it heard until then has been kept.";

} // namespace

Recorder::Recorder(MicrophoneInput& input) : input_(input) {
    input_.onLost = [this] {
        if (isRecording_ && onLost) {
            onLost(microphoneGone);
        }
    };
}

Recorder::~Recorder() {
    input_.stop();
    input_.onLost = nullptr;
}

void Recorder::requestAccess(std::function<void(bool granted)> completion) {
    input_.requestAccess(std::move(completion));
}

bool Recorder::start(double seconds) {
    if (isRecording_) {
        return true;
    }
    const auto format = input_.open();
    if (!format || !(format->rate > 0.0) || format->channels <= 0) {
        input_.stop();
        return false;
    }
    inputRate_ = format->rate;
    const std::int64_t limit =
        requireIntegerPart(seconds * inputRate_, "the limit of a recording is out of range");
    // No memory may be asked for once sound arrives.
    captured_.assign(static_cast<std::size_t>(std::max<std::int64_t>(limit, 0)), 0.0F);
    count_ = 0;
    holeCount_ = 0;
    level_ = 0.0F;
    if (!input_.start(*this)) {
        input_.stop();
        return false;
    }
    isRecording_ = true;
    return true;
}

std::vector<float> Recorder::stop() {
    input_.stop();
    if (!isRecording_) {
        return {};
    }
    isRecording_ = false;
    level_ = 0.0F;
    std::vector<float> captured = std::exchange(captured_, {});
    captured.resize(count_.exchange(0));
    if (inputRate_ == DSP::sampleRate) {
        return captured;
    }
    return DSP::resample(captured, 12.0 * std::log2(inputRate_ / DSP::sampleRate));
}

void Recorder::hear(std::vector<float>& heard) const {
    const std::size_t count = count_.load(std::memory_order_acquire);
    if (heard.size() < count) {
        heard.insert(heard.end(), captured_.begin() + static_cast<std::ptrdiff_t>(heard.size()),
                     captured_.begin() + static_cast<std::ptrdiff_t>(count));
    }
}

std::vector<Gap> Recorder::gaps() const {
    std::vector<Gap> gaps;
    const std::size_t count = holeCount_.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < count; ++i) {
        const Hole& hole = holes_[i];
        gaps.push_back({.start = static_cast<double>(hole.begin) / inputRate_,
                        .length = static_cast<double>(hole.end - hole.begin) / inputRate_});
    }
    return gaps;
}

void Recorder::miss(std::int64_t count) VORNIC_REALTIME {
    // The memory is silent already.
    const std::size_t begin = count_.load(std::memory_order_relaxed);
    const std::size_t end =
        begin + std::min(captured_.size() - begin,
                         static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
    const std::size_t holes = holeCount_.load(std::memory_order_relaxed);
    if (end == begin || holes == holes_.size()) {
        count_.store(end, std::memory_order_release);
        return;
    }
    holes_[holes] = {begin, end};
    holeCount_.store(holes + 1, std::memory_order_release);
    count_.store(end, std::memory_order_release);
}

void Recorder::take(const float* samples, std::int64_t count) VORNIC_REALTIME {
    const std::size_t begin = count_.load(std::memory_order_relaxed);
    const std::size_t kept = std::min(captured_.size() - begin,
                                      static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
    float loudest = 0.0F;
    for (std::size_t i = 0; i < kept; ++i) {
        captured_[begin + i] = samples[i];
        loudest = std::max(loudest, std::abs(samples[i]));
    }
    level_.store(loudest, std::memory_order_relaxed);
    count_.store(begin + kept, std::memory_order_release);
}

} // namespace vornic
