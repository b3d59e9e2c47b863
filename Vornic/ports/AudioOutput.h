#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vornic {

/// What the current default output device is, as far as it says.
struct OutputDeviceFacts {
    /// The name that the system shows; empty when there is no device.
    std::string name;
    /// True for a device reached over Bluetooth.
    bool isBluetooth = false;
    /// True when the sound goes to something worn on the ears.
    bool isHeadphones = false;
    /// Milliseconds from a rendered frame to the ear; absent when unknown.
    std::optional<double> latencyMillis;
    /// Frames per render call; absent when unknown.
    std::optional<std::uint32_t> bufferFrames;

    bool operator==(const OutputDeviceFacts&) const = default;
};

/// The sound output of one platform: 48000 Hz, two channels of 32-bit floats, 128 frames a call
/// where the system grants it.
class AudioOutput {
  public:
    /// What the output calls for sound.
    class Source {
      public:
        Source() = default;
        Source(const Source&) = delete;
        Source& operator=(const Source&) = delete;
        virtual ~Source() = default;

        /// Overwrites `frames` floats in both buffers. `nowNanos` is the audio clock's monotonic
        /// time of this call, 0 when unknown. Thread: real-time.
        virtual void render(std::int64_t frames, float* left, float* right,
                            std::uint64_t nowNanos) VORNIC_REALTIME = 0;

        /// The stream is gone and no `render` is running or will run until the next start:
        /// whatever waits to be played is stale now. Called on a thread of the output's own.
        virtual void streamEnded() = 0;
    };

    AudioOutput() = default;
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;
    virtual ~AudioOutput() = default;

    /// Connects to the system's sound and plays `source` from then on, paused at first. Returns
    /// when it is known whether there is a device to play to, in a second at most. Thread: main,
    /// once.
    virtual void open(Source& source) = 0;

    /// Ends everything: when it returns, `source` is not called any more. Thread: main; harmless
    /// when not open.
    virtual void close() = 0;

    /// Asks the output to run and returns at once; true when it runs or the request is on its way,
    /// false when there is no sound server or no device to play to (a later call tries again).
    /// Takes no lock that the sound server can hold while the output runs. Thread: any.
    virtual bool requestStart() = 0;

    /// Asks the output to stop calling `render`; costs nothing from then on. Thread: any.
    virtual void pause() = 0;

    /// Whether the output is running or about to. Thread: any, lock-free.
    virtual bool isRunning() const = 0;

    /// Facts of the current default device, cached from the system's change events. Thread: any.
    virtual OutputDeviceFacts device() const = 0;

    /// Why nothing can be heard and what to do about it, in one sentence; empty while sound can be
    /// played. Thread: any.
    virtual std::string problem() const = 0;

    /// Whether the audio thread has once run for longer than the system allows a thread that comes
    /// before all others, and is an ordinary one since: a busy computer may make it click.
    /// Thread: any.
    virtual bool hasLostRealTime() const { return false; }

    /// Called on the main thread when the default device was changed or reconfigured, came or went.
    /// Set before `open`.
    std::function<void()> onConfigurationChange;
};

} // namespace vornic
