#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace vornic {

/// A microphone of the server `remote` that hears what the test says. As a real one does, it has
/// the graph's clock: when the computer is busy it comes late, but leaves nothing out.
class PlayedMicrophone {
  public:
    /// 48 kHz, mono. The node's name is "played-microphone"; its cycles have `cycle` frames.
    explicit PlayedMicrophone(const std::string& remote, int cycle = 2048);
    ~PlayedMicrophone();
    PlayedMicrophone(const PlayedMicrophone&) = delete;
    PlayedMicrophone& operator=(const PlayedMicrophone&) = delete;

    /// Hears these samples from now on, at 48 kHz, and silence before and after.
    void play(std::vector<float> samples);
    /// Waits until somebody has heard all of them.
    bool waitUntilPlayed() const;
    /// Waits until somebody has heard `count` of them.
    bool waitUntilPast(std::size_t count) const;

  private:
    void connect(int cycle);
    void tick();
    void process();
    void setTimer(bool running);

    LoopHandle loop_;
    ContextHandle context_;
    CoreHandle core_;
    spa_source* timer_ = nullptr;
    StreamHandle stream_;
    Listener listener_;
    spa_io_position* position_ = nullptr;
    mutable std::mutex mutex_; // guards what follows
    std::vector<float> samples_;
    std::size_t place_ = 0;
};

} // namespace vornic
