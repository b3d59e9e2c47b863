#pragma once

#include "VornicCore/sampler/Sample.h"

#include <memory>
#include <span>
#include <vector>

namespace vornic {

/// Owns the frames that samples point into. A buffer never moves and is freed with the store only.
/// Thread: any.
class FrameStore {
  public:
    /// Copies the frames into a buffer of exactly their length, and at least one.
    Sample add(std::span<const float> frames);

  private:
    std::vector<std::unique_ptr<float[]>> owned_;
};

} // namespace vornic
