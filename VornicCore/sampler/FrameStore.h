#pragma once

#include "VornicCore/sampler/Sample.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace vornic {

/// Owns the frames that samples point into. Frames never move and are freed with the store only.
/// They lie together in large blocks, which an allocator gets from the system and gives back one by
/// one: hundreds of small ones would keep what lies between them. Thread: any; one fills it.
class FrameStore {
  public:
    /// Copies the frames.
    Sample add(std::span<const float> frames);

  private:
    std::vector<std::unique_ptr<float[]>> blocks_;
    std::size_t left_ = 0; // frames of the last block that are free
    float* next_ = nullptr;
};

} // namespace vornic
