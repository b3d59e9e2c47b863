#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vornic {

/// The microphone of one platform, captured only between `start` and `stop`. Thread: main.
class MicrophoneInput {
  public:
    /// What the input hands the sound to.
    class Taker {
      public:
        Taker() = default;
        Taker(const Taker&) = delete;
        Taker& operator=(const Taker&) = delete;
        virtual ~Taker() = default;

        /// The next `count` samples of the first channel, at the input's rate. Thread: real-time.
        virtual void take(const float* samples, std::int64_t count) VORNIC_REALTIME = 0;

        /// `count` samples that belong here could not be captured: the computer was too busy.
        /// Thread: real-time.
        virtual void miss(std::int64_t count) VORNIC_REALTIME = 0;
    };

    MicrophoneInput() = default;
    MicrophoneInput(const MicrophoneInput&) = delete;
    MicrophoneInput& operator=(const MicrophoneInput&) = delete;
    virtual ~MicrophoneInput() = default;

    /// Asks for permission to listen and gets the default microphone ready; the answer comes later,
    /// on the main thread. Until `stop`, the microphone may be in use from then on.
    virtual void requestAccess(std::function<void(bool granted)> completion) = 0;

    /// What can be captured from.
    struct Format {
        /// Hz.
        double rate = 0.0;
        std::int64_t channels = 0;
    };

    /// Opens the default microphone: at once when `requestAccess` has got it ready, otherwise that
    /// takes two seconds at most. What it sounds in, or none when there is no microphone; the
    /// output's own sound is none. Nothing is handed over yet.
    virtual std::optional<Format> open() = 0;

    /// Hands what is captured to `taker` from now on. False when the microphone, which has been
    /// opened, does not start.
    virtual bool start(Taker& taker) = 0;

    /// Ends the capture: no `take` is running or will run. Harmless when nothing is open.
    virtual void stop() = 0;

    /// Why `open` or `start` failed and what to do about it, in one sentence; empty when they did
    /// not.
    virtual std::string problem() const = 0;

    /// Called on the main thread when the microphone that is captured from has gone. Then `stop` is
    /// still to be called. Set before `start`.
    std::function<void()> onLost;
};

} // namespace vornic
