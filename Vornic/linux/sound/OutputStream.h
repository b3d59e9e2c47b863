#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"
#include "Vornic/ports/AudioOutput.h"
#include "Vornic/sound/OutputDevice.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace vornic {

/// What the running stream measures; written by the audio thread, read by any.
struct StreamTiming {
    /// Frames a second that the delay is counted in; 0 = no cycle yet.
    std::atomic<std::uint32_t> rate{0};
    /// Frames from the stream to the ear, without the buffer in hand.
    std::atomic<std::int64_t> delay{0};
    /// Frames of the last render call; 0 = no call yet.
    std::atomic<std::uint32_t> buffer{0};
    /// Render calls so far.
    std::atomic<std::uint64_t> calls{0};
};

/// One playback stream on one connection: stereo floats at 48000 Hz in blocks of 128 frames, played
/// to the default device, also after that has changed. Inactive at first. Thread: any that
/// holds the server's loop, but the rendering: real-time.
class OutputStream {
  public:
    /// `failed` is called when the server refuses the stream or ends it.
    OutputStream(pw_core* core, const std::string& name, AudioOutput::Source& source,
                 StreamTiming& timing, std::function<void()> failed);

    /// Ends the stream: no render call is running any more when this returns.
    ~OutputStream();

    OutputStream(const OutputStream&) = delete;
    OutputStream& operator=(const OutputStream&) = delete;

    /// Whether render calls are wanted. While they are not, none is made.
    void setActive(bool active);

    bool hasFailed() const { return failed_; }

    /// The number that the server gave the stream; SPA_ID_INVALID while it has none.
    std::uint32_t node() const;

  private:
    bool connect();
    void process() VORNIC_REALTIME;

    AudioOutput::Source& source_;
    StreamTiming& timing_;
    std::function<void()> onFailure_;
    StreamHandle stream_;
    Listener listener_;
    bool active_ = false;
    bool failed_ = false;
};

} // namespace vornic
