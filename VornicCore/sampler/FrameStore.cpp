#include "VornicCore/sampler/FrameStore.h"

#include <algorithm>
#include <cstddef>

namespace vornic {

Sample FrameStore::add(std::span<const float> frames) {
    auto buffer = std::make_unique<float[]>(std::max<std::size_t>(frames.size(), 1));
    std::ranges::copy(frames, buffer.get());
    owned_.push_back(std::move(buffer));
    return {.data = owned_.back().get(), .length = static_cast<std::int64_t>(frames.size())};
}

} // namespace vornic
