#pragma once

#include "bench/MixerScene.h"

#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// The peer: OpenAL Soft rendering the scene into memory (its loopback device), 32-bit float
/// stereo, every voice resampled by its cubic interpolator.
class OpenAlMixer {
  public:
    /// Throws std::runtime_error when OpenAL cannot do the same work.
    explicit OpenAlMixer(const std::vector<MixerScene::Voice>& scene);
    ~OpenAlMixer();
    OpenAlMixer(const OpenAlMixer&) = delete;
    OpenAlMixer& operator=(const OpenAlMixer&) = delete;

    /// Starts every voice again and renders the first buffer.
    void prepare();
    /// Renders one buffer.
    void render();
    /// Lowers every voice's gain a little, so that the next buffer has to fade them.
    void fade();
    /// What was not as it should be since `prepare`, empty if nothing was.
    std::string flaw() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace vornic
