#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Records what a sink plays, over its monitor: stereo at 48000 Hz, with the time of every block.
/// Frames are counted from the beginning of the recording. Any thread may ask while it records.
class SinkCapture {
  public:
    struct Options {
        std::string sink = "vornic-test-sink";
        /// False where `sink` names a source: a microphone.
        bool isSink = true;
        /// Name of the server or path of its socket; empty for the usual one.
        std::string remote;
        /// Frames per block asked for; 0 leaves it to the others that use the sink.
        std::uint32_t quantum = 0;
        /// The recording stops when it is full.
        double seconds = 60.0;
    };

    /// Frames that arrived together.
    struct Block {
        std::size_t firstFrame;
        std::uint32_t frames;
        /// The graph's time of the cycle, monotonic nanoseconds.
        std::uint64_t cycleNanos;
        /// When the block was received, monotonic nanoseconds.
        std::uint64_t receivedNanos;
    };

    explicit SinkCapture(Options options);
    ~SinkCapture();
    SinkCapture(const SinkCapture&) = delete;
    SinkCapture& operator=(const SinkCapture&) = delete;

    /// Waits until blocks arrive; false when none did within `limit`.
    bool waitUntilRunning(std::chrono::milliseconds limit = std::chrono::seconds(10)) const;

    std::size_t frames() const;
    std::size_t blockCount() const;
    Block block(std::size_t index) const { return blocks_[index]; }
    /// The block that holds `frame`, which has been recorded.
    Block blockOf(std::size_t frame) const;
    float left(std::size_t frame) const { return left_[frame]; }
    float right(std::size_t frame) const { return right_[frame]; }

    /// The first frame from `from` on where either channel is louder than `threshold`.
    std::optional<std::size_t> find(std::size_t from, float threshold) const;
    /// The same, waiting for it.
    std::optional<std::size_t>
    waitFor(std::size_t from, float threshold,
            std::chrono::milliseconds limit = std::chrono::seconds(10)) const;

  private:
    void connect();
    void process();

    Options options_;
    std::vector<float> left_;
    std::vector<float> right_;
    std::vector<Block> blocks_;
    std::atomic<std::size_t> frames_{0};
    std::atomic<std::size_t> blockCount_{0};
    LoopHandle loop_;
    StreamHandle stream_;
};

} // namespace vornic
