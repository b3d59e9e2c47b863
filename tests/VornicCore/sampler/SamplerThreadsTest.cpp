#include "VornicCore/sampler/SamplerCore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

namespace vornic {
namespace {

/// Renders on a thread of its own, as fast as it can, until it is destroyed.
class AudioThread {
  public:
    explicit AudioThread(SamplerCore& core)
        : thread_([this, &core] {
              std::vector<float> left(64);
              std::vector<float> right(64);
              while (!stop_.load(std::memory_order_relaxed)) {
                  core.render(64, left.data(), right.data(), 0);
                  loudest_ = std::max(loudest_, left[0]);
              }
          }) {}
    ~AudioThread() { join(); }
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    /// Ends the thread: the largest first frame of a buffer.
    float join() {
        stop_.store(true, std::memory_order_relaxed);
        if (thread_.joinable()) {
            thread_.join();
        }
        return loudest_;
    }

  private:
    std::atomic<bool> stop_{false};
    float loudest_ = 0.0F;
    std::thread thread_;
};

// A sanitizer sees it when frames are read after they were freed, or freed without the audio
// thread's last read having been waited for.
TEST(SamplerThreads, samplesMayBeFreedOnceTheirEventsAreSettled) {
    SamplerCore core(48000.0, 16);
    AudioThread audio(core);
    std::int64_t queued = 0;
    for (int bank = 0; bank < 60; ++bank) {
        const auto frames =
            std::make_unique<std::vector<float>>(200U + static_cast<unsigned>(bank), 0.5F);
        const Sample sample{.data = frames->data(),
                            .length = static_cast<std::int64_t>(frames->size())};
        for (int key = 0; key < 60; ++key) { // more than the queue holds, and enough to steal
            const float rate = key % 3 == 0 ? 1.0F : 0.5F + static_cast<float>(key) * 0.03F;
            const VoiceStage stage = VoiceStage::binaural(key % 2 == 0 ? 0.5F : 0.0F, 48000.0);
            queued += core.play(sample, 0.1F, 0.0F, rate, 0, stage) ? 1 : 0;
        }
        const std::uint64_t pushed = core.pushedEvents();
        while (core.settledEvents() < pushed) {
            core.setReflection(static_cast<float>(bank % 2) * 0.2F);
            std::this_thread::yield();
        }
    }
    EXPECT_GT(audio.join(), 0.0F);
    EXPECT_EQ(core.keysStarted(), queued);
    EXPECT_EQ(core.pushedEvents(), static_cast<std::uint64_t>(queued));
    EXPECT_EQ(core.eventsDropped(), 60 * 60 - queued);
    EXPECT_EQ(core.activeVoices(), 0);
    EXPECT_EQ(core.fadingVoices(), 0);
    EXPECT_GT(core.framesRendered(), 0);
}

} // namespace
} // namespace vornic
