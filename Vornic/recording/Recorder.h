#pragma once

#include "Vornic/ports/MicrophoneInput.h"
#include "Vornic/recording/Gap.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vornic {

/// Records from the microphone into memory, up to a limit. Thread: main, except where said.
class Recorder final : private MicrophoneInput::Taker {
  public:
    /// `input` outlives the recorder, which takes over its `onLost`.
    explicit Recorder(MicrophoneInput& input);
    ~Recorder() override;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Asks the system for the microphone; `completion` is called on the main thread.
    void requestAccess(std::function<void(bool granted)> completion);

    /// Records from now on, up to `seconds`; what comes after is dropped. False when there is no
    /// microphone that can be used; `problem` says why. True and nothing else while recording.
    bool start(double seconds);

    /// Ends the recording: what was captured, as 48 kHz mono. Empty when not recording; then it
    /// only lets go of a microphone that was asked for.
    std::vector<float> stop();

    /// Between a successful `start` and `stop`, also when full or the microphone is gone.
    [[nodiscard]] bool isRecording() const { return isRecording_; }

    /// The largest magnitude of what was kept of the last block, 0 when nothing was. Thread: any.
    [[nodiscard]] float level() const { return level_.load(std::memory_order_relaxed); }

    /// The microphone's rate in Hz, as of the last start.
    [[nodiscard]] double inputRate() const { return inputRate_; }

    /// Appends what was captured from place `heard.size()` on, at `inputRate`, to `heard`, while it
    /// goes on. Nothing when not recording.
    void hear(std::vector<float>& heard) const;

    /// Which parts of the recording could not be captured and are silent: of the one that goes on,
    /// else of the last one.
    [[nodiscard]] std::vector<Gap> gaps() const;

    [[nodiscard]] std::string problem() const { return input_.problem(); }

    /// Called when the microphone goes while it records, with a sentence for the user. What was
    /// captured until then waits for `stop`.
    std::function<void(const std::string&)> onLost;

  private:
    /// In samples of the recording.
    struct Hole {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    void take(const float* samples, std::int64_t count) VORNIC_REALTIME override;
    void miss(std::int64_t count) VORNIC_REALTIME override;

    MicrophoneInput& input_;
    // Written by the audio thread up to `count_`; of its full length from the start.
    std::vector<float> captured_;
    std::atomic<std::size_t> count_{0};
    // Likewise up to `holeCount_`, and never more than that many are told apart.
    std::array<Hole, 256> holes_;
    std::atomic<std::size_t> holeCount_{0};
    std::atomic<float> level_{0.0F};
    double inputRate_ = 0.0;
    bool isRecording_ = false;
};

} // namespace vornic
