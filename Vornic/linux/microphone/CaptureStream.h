#pragma once

#include "Vornic/linux/microphone/CaptureClock.h"
#include "Vornic/linux/soundserver/PipeWireHandles.h"
#include "Vornic/ports/MicrophoneInput.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vornic {

/// One stream that captures from one microphone, in floats, at the rate and with the channels that
/// the server offers for it. Thread: any that holds the server's loop, but the
/// capturing: real-time.
class CaptureStream {
  public:
    struct Events {
        /// The format is known, again whenever it changes.
        std::function<void(const MicrophoneInput::Format&)> formatted;
        /// The server refuses the stream or ends it.
        std::function<void()> failed;
    };

    /// Captures from the node `source`. What arrives goes to `taker` once that is set.
    CaptureStream(pw_core* core, const std::string& source,
                  const std::atomic<MicrophoneInput::Taker*>& taker, Events events);

    /// Ends the stream: nothing is handed over any more when this returns.
    ~CaptureStream();

    CaptureStream(const CaptureStream&) = delete;
    CaptureStream& operator=(const CaptureStream&) = delete;

  private:
    bool connect();
    void noteFormat(const spa_pod* parameter);
    void process() VORNIC_REALTIME;
    void hear(const float* samples, std::int64_t count) VORNIC_REALTIME;
    std::int64_t ticks() const VORNIC_REALTIME;

    const std::atomic<MicrophoneInput::Taker*>& taker_;
    Events events_;
    std::atomic<std::uint32_t> rate_{0}; // Hz; 0 = not known yet
    // The audio thread's own: the cycle that waits for the clock to say what was lost before it.
    CaptureClock clock_;
    std::vector<float> held_; // of its full length from the start
    std::int64_t heldCount_ = 0;
    MicrophoneInput::Taker* heldFor_ = nullptr;
    StreamHandle stream_;
    Listener listener_;
};

} // namespace vornic
