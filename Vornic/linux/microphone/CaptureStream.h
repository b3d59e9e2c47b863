#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"
#include "Vornic/ports/MicrophoneInput.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace vornic {

/// One stream that captures from one microphone, in floats, at the rate and with the channels that
/// the server offers for it. Everything but the capturing on the loop's thread.
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

    const std::atomic<MicrophoneInput::Taker*>& taker_;
    Events events_;
    StreamHandle stream_;
    Listener listener_;
};

} // namespace vornic
