#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vornic {

/// What a job takes of a bank.
struct JobSize {
    /// Frames of each variation that the job is to have, all its velocities together.
    std::vector<std::size_t> frames;
    /// Whether a key plays the job's sound.
    bool played = false;
};

/// How many variations each job gets in a bank of `mostFrames` frames. If there is no room for all,
/// sounds that no key plays get fewer first, all of them the same at most, then the others. Each
/// gets one, whether there is room or not. Thread: any.
std::vector<std::int64_t> sharedOut(std::span<const JobSize> jobs, std::size_t mostFrames);

} // namespace vornic
