#pragma once

#include "Vornic/ports/AudioOutput.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace vornic {

/// An output that a test drives by hand: it runs when asked to, and renders when the test says so.
class FakeOutput final : public AudioOutput {
  public:
    void open(Source& source) override { source_ = &source; }
    void close() override { source_ = nullptr; }
    bool requestStart() override {
        ++startRequests;
        if (available && !running) {
            running = true;
        }
        if (afterStartRequest) {
            afterStartRequest();
        }
        return available;
    }
    void pause() override {
        running = false;
        ++pauses;
        if (afterPause) {
            afterPause();
        }
    }
    bool isRunning() const override { return running; }
    OutputDeviceFacts device() const override { return facts; }
    std::string problem() const override { return available ? "" : "no server"; }
    bool hasLostRealTime() const override { return lostRealTime; }

    struct Block {
        std::vector<float> left, right;
    };

    /// What an output does at every buffer.
    Block render(std::int64_t frames, std::uint64_t nowNanos) const {
        // Whatever was in the buffers must be gone afterwards.
        Block block{std::vector<float>(static_cast<std::size_t>(frames), 99.0F),
                    std::vector<float>(static_cast<std::size_t>(frames), 99.0F)};
        source_->render(frames, block.left.data(), block.right.data(), nowNanos);
        return block;
    }

    /// The server ends, as an output reports it.
    void lose() {
        available = false;
        running = false;
        source_->streamEnded();
    }

    bool isOpen() const { return source_ != nullptr; }

    std::atomic<bool> available{true};
    std::atomic<bool> running{false};
    std::atomic<int> startRequests{0};
    std::atomic<int> pauses{0};
    OutputDeviceFacts facts;
    bool lostRealTime = false;
    /// Stand for what other threads do right after a request to start, or after a pause.
    std::function<void()> afterStartRequest;
    std::function<void()> afterPause;

  private:
    Source* source_ = nullptr;
};

} // namespace vornic
