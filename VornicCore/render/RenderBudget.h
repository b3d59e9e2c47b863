#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace vornic {

/// How many frames may be rendered for one board, so that a hostile one ends. What counts is the
/// order of the jobs and not which thread was first, so that the result is always the same.
/// Thread: any.
class RenderBudget {
  public:
    RenderBudget(std::size_t jobs, std::uint64_t mostFrames)
        : spent_(jobs, 0), mostFrames_(mostFrames) {}

    /// Notes what the job at this place of the order has taken.
    void spend(std::size_t place, std::uint64_t frames) {
        const std::lock_guard guard(lock_);
        spent_[place] = frames;
    }

    /// Whether the jobs before this one are known to take all there is. While some of them are
    /// still at work it may say no although it will be so; never the other way round.
    bool isSpentBefore(std::size_t place) const {
        const std::lock_guard guard(lock_);
        std::uint64_t frames = 0;
        for (std::size_t earlier = 0; earlier < place; ++earlier) {
            frames += spent_[earlier];
        }
        return frames >= mostFrames_;
    }

  private:
    mutable std::mutex lock_;
    std::vector<std::uint64_t> spent_; // guarded by lock_
    std::uint64_t mostFrames_;
};

} // namespace vornic
