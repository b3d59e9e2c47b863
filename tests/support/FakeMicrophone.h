#pragma once

#include "Vornic/ports/MicrophoneInput.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// A microphone that hears what the test says.
class FakeMicrophone final : public MicrophoneInput {
  public:
    /// What `open` answers.
    std::optional<Format> format = Format{48000, 1};
    /// What `start` answers.
    bool starts = true;
    /// What `requestAccess` answers: at once, or else when `answer` is called.
    bool granted = true;
    bool answersAtOnce = true;
    int opened = 0;
    bool isOpen = false;

    void requestAccess(std::function<void(bool)> completion) override {
        isOpen = granted;
        asked_ = std::move(completion);
        if (answersAtOnce) {
            answer();
        }
    }
    std::optional<Format> open() override {
        ++opened;
        isOpen = format.has_value();
        return format;
    }
    bool start(Taker& taker) override {
        taker_ = starts ? &taker : nullptr;
        return starts;
    }
    void stop() override {
        taker_ = nullptr;
        isOpen = false;
        asked_ = nullptr;
    }
    void answer() {
        if (const auto asked = std::exchange(asked_, nullptr)) {
            asked(granted);
        }
    }
    [[nodiscard]] std::string problem() const override {
        return format && starts ? "" : "No microphone.";
    }

    /// Sound arrives; nobody may be listening.
    void hear(const std::vector<float>& samples) const {
        if (taker_ != nullptr) {
            taker_->take(samples.data(), static_cast<std::int64_t>(samples.size()));
        }
    }
    /// Sound arrives that nobody captures in time.
    void drop(std::int64_t samples) const {
        if (taker_ != nullptr) {
            taker_->miss(samples);
        }
    }
    [[nodiscard]] bool isCapturing() const { return taker_ != nullptr; }
    [[nodiscard]] Taker* taker() const { return taker_; }

    /// The microphone is pulled out.
    void lose() {
        if (onLost) {
            onLost();
        }
    }

  private:
    std::function<void(bool)> asked_;
    Taker* taker_ = nullptr;
};

} // namespace vornic
