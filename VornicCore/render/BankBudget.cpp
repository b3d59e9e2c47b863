#include "VornicCore/render/BankBudget.h"

#include <algorithm>

namespace vornic {

namespace {

/// At most so many variations of a sound that keys play, and of one that none does.
struct Most {
    std::size_t played;
    std::size_t others;
};

std::size_t countOf(const JobSize& job, Most most) {
    return std::min(job.frames.size(), job.played ? most.played : most.others);
}

std::size_t framesOf(std::span<const JobSize> jobs, Most most) {
    std::size_t frames = 0;
    for (const JobSize& job : jobs) {
        for (std::size_t variation = 0; variation < countOf(job, most); ++variation) {
            frames += job.frames[variation];
        }
    }
    return frames;
}

} // namespace

std::vector<std::int64_t> sharedOut(std::span<const JobSize> jobs, std::size_t mostFrames) {
    std::size_t longest = 1;
    for (const JobSize& job : jobs) {
        longest = std::max(longest, job.frames.size());
    }
    Most most{.played = longest, .others = longest};
    while (framesOf(jobs, most) > mostFrames && most.played > 1) {
        --(most.others > 1 ? most.others : most.played);
    }
    std::vector<std::int64_t> counts;
    for (const JobSize& job : jobs) {
        counts.push_back(static_cast<std::int64_t>(countOf(job, most)));
    }
    return counts;
}

} // namespace vornic
