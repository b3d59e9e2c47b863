#pragma once

#include "tests/live/KeyTyper.h"

#include <atomic>
#include <cstdint>
#include <random>
#include <thread>

namespace vornic {

/// Types letters without a pause, now slowly, now 120 a second, each key held while the next ones
/// go down. The counts may be asked from any thread.
class SteadyHands {
  public:
    /// Begins to type. Equal seeds type the same keys at the same pace.
    explicit SteadyHands(std::uint32_t seed);
    ~SteadyHands();
    SteadyHands(const SteadyHands&) = delete;
    SteadyHands& operator=(const SteadyHands&) = delete;

    /// Keys pressed so far.
    std::int64_t pressed() const { return pressed_; }

    /// Lets the hands rest: all keys are up when it returns. Idempotent.
    void rest();

  private:
    void type(const std::stop_token& stop);

    std::mt19937 random_;
    std::atomic<std::int64_t> pressed_{0};
    KeyTyper typer_;
    std::jthread thread_;
};

} // namespace vornic
