#include "VornicCore/sampler/FrameStore.h"

#include <algorithm>
#include <cstdint>

namespace vornic {

namespace {

/// A mebibyte: far more than a stroke, far less than a bank. The system gives memory only for what
/// is written of it.
constexpr std::size_t blockFrames = std::size_t{1} << 18;
/// Every sample begins on a cache line of its own.
constexpr std::size_t lineFrames = 16;

} // namespace

Sample FrameStore::add(std::span<const float> frames) {
    const std::size_t taken = (frames.size() / lineFrames + 1) * lineFrames;
    if (taken > left_) {
        left_ = std::max(taken, blockFrames);
        blocks_.push_back(std::make_unique_for_overwrite<float[]>(left_));
        next_ = blocks_.back().get();
    }
    float* const data = next_;
    std::ranges::copy(frames, data);
    next_ += taken;
    left_ -= taken;
    return {.data = data, .length = static_cast<std::int64_t>(frames.size())};
}

} // namespace vornic
