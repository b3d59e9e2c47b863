#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/render/RenderJob.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vornic {

/// What a board needs rendered, equal jobs once. Thread: any.
struct BoardJobs {
    /// A pool of the bank and the job that fills it: of one velocity of a press, or of a release.
    struct Use {
        std::size_t job;
        std::string sound;
    };

    std::vector<RenderJob> jobs; // within their limits
    std::vector<bool> played;    // of each job: whether a key plays its sound
    std::vector<Use> uses;       // in the board's order
    std::vector<std::string> messages;

    explicit BoardJobs(const Board& board);

    /// How many strokes a job renders.
    static std::int64_t strokes(const RenderJob& job);
    /// How many strokes are rendered at most; what a board has beyond them stays silent.
    static constexpr std::int64_t mostStrokes = 11'000;

  private:
    void note(std::string message);

    std::int64_t strokes_ = 0;
};

} // namespace vornic
