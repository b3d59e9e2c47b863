#include "VornicCore/render/BuildBoard.h"

#include "VornicCore/base/ReadableText.h"
#include "VornicCore/render/BankBudget.h"
#include "VornicCore/render/BoardJobs.h"
#include "VornicCore/render/JobLimits.h"
#include "VornicCore/render/LaneKernels.h"
#include "VornicCore/render/LaneRenderer.h"
#include "VornicCore/render/RenderBudget.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <iterator>
#include <numeric>
#include <span>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vornic {

namespace {

std::string about(const RenderJob& job, const std::string& what) {
    return "Sound \"" + readable(job.sound.name) + "\" " + what;
}

std::span<const Velocity> velocitiesOf(const RenderJob& job) {
    static constexpr std::array releaseVelocity{Velocity::medium};
    return job.isRelease ? std::span<const Velocity>(releaseVelocity) : std::span(allVelocities);
}

/// What has come of a job so far: the same number of variations at every velocity.
struct Rendering {
    Renderer::Variations variations;
    std::vector<std::string> problems;

    std::int64_t count() const {
        return variations.empty() ? 0 : std::ssize(variations.begin()->second);
    }

    /// Of each variation, at all velocities together.
    std::vector<std::size_t> frames() const {
        std::vector<std::size_t> frames(static_cast<std::size_t>(count()), 0);
        for (const auto& [velocity, strokes] : variations) {
            for (std::size_t variation = 0; variation < frames.size(); ++variation) {
                frames[variation] += strokes[variation].size();
            }
        }
        return frames;
    }

    /// Cuts strokes that are longer; false when none is.
    bool cut(std::size_t mostFrames) {
        bool cuts = false;
        for (auto& [velocity, strokes] : variations) {
            for (std::vector<float>& stroke : strokes) {
                if (stroke.size() > mostFrames) {
                    stroke.resize(mostFrames);
                    stroke.shrink_to_fit();
                    cuts = true;
                }
            }
        }
        return cuts;
    }
};

std::size_t sumOf(const std::vector<std::size_t>& frames) {
    return std::accumulate(frames.begin(), frames.end(), std::size_t{0});
}

/// Renders the jobs of a board, as far as a bank has room.
class BankRendering {
  public:
    BankRendering(const BoardJobs& board, const SampleSource& library, unsigned threads,
                  const BuildOptions& options);

    std::vector<Rendering> run();

  private:
    /// Of variations, of each job.
    using Counts = std::vector<std::int64_t>;

    Counts atMost(std::int64_t variations) const;
    std::int64_t strokes(const Counts& counts) const;
    void renderUpTo(const Counts& counts);
    void render(std::size_t place, std::int64_t end);
    void noteWhatWasCut(const RenderJob& job, Rendering& rendering) const;
    Counts room() const;
    void fit(const Counts& counts);

    const BoardJobs& board_;
    const SampleSource& library_;
    const unsigned threads_;
    const BuildOptions options_;
    std::vector<std::size_t> order_;
    RenderBudget budget_;
    std::vector<Rendering> renderings_;
};

BankRendering::BankRendering(const BoardJobs& board, const SampleSource& library, unsigned threads,
                             const BuildOptions& options)
    : board_(board), library_(library), threads_(threads), options_(options),
      order_(board.jobs.size()), budget_(board.jobs.size(), options.mostRenderedFrames),
      renderings_(board.jobs.size()) {
    // What keys play first, and of this the longest, so that no thread begins one when the others
    // are done.
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    std::ranges::stable_sort(order_, std::greater<>(), [&](std::size_t job) {
        return std::pair(board.played[job] ? 1 : 0, BoardJobs::strokes(board.jobs[job]));
    });
}

std::vector<Rendering> BankRendering::run() {
    // How long strokes are shows when they are rendered: all of an ordinary board at once, of a
    // larger one the first of each job. However long they are, that is no more than four banks.
    const std::size_t mostStrokes = 4 * options_.mostFrames / JobLimits::mostStrokeFrames;
    for (const std::int64_t variations : {JobLimits::mostVariations, laneCount, std::int64_t{1}}) {
        const Counts first = atMost(variations);
        if (variations == 1 || static_cast<std::size_t>(strokes(first)) <= mostStrokes) {
            renderUpTo(first);
            break;
        }
    }
    renderUpTo(room());
    fit(room());
    return std::move(renderings_);
}

BankRendering::Counts BankRendering::atMost(std::int64_t variations) const {
    Counts counts;
    for (const RenderJob& job : board_.jobs) {
        counts.push_back(std::min(job.sound.variations, variations));
    }
    return counts;
}

std::int64_t BankRendering::strokes(const Counts& counts) const {
    std::int64_t strokes = 0;
    for (std::size_t job = 0; job < counts.size(); ++job) {
        strokes += counts[job] * std::ssize(velocitiesOf(board_.jobs[job]));
    }
    return std::max<std::int64_t>(strokes, 1);
}

void BankRendering::renderUpTo(const Counts& counts) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t place = next++; place < order_.size(); place = next++) {
            render(place, counts[order_[place]]);
        }
    };
    {
        std::vector<std::jthread> helpers;
        for (std::size_t helper = 1; helper < std::min<std::size_t>(threads_, order_.size());
             ++helper) {
            helpers.emplace_back(work);
        }
        work();
    }
    // Some may have been rendered before it was known that there is no room for them.
    for (std::size_t place = 0; place < order_.size(); ++place) {
        if (budget_.isSpentBefore(place)) {
            renderings_[order_[place]] = {
                .variations = {}, .problems = {"is left out: its board is too long to render"}};
        }
    }
}

void BankRendering::render(std::size_t place, std::int64_t end) {
    const RenderJob& job = board_.jobs[order_[place]];
    Rendering& rendering = renderings_[order_[place]];
    if (end <= rendering.count() || budget_.isSpentBefore(place)) {
        return;
    }
    try {
        auto more = LaneRenderer::renderSome(job, velocitiesOf(job),
                                             {.first = rendering.count(), .end = end}, library_,
                                             options_.seed);
        for (auto& [velocity, strokes] : more) {
            std::ranges::move(strokes, std::back_inserter(rendering.variations[velocity]));
        }
        budget_.spend(place, sumOf(rendering.frames()));
        noteWhatWasCut(job, rendering);
    } catch (const std::exception& error) {
        rendering = {.variations = {},
                     .problems = {std::string("could not be rendered: ") + error.what()}};
    }
}

void BankRendering::noteWhatWasCut(const RenderJob& job, Rendering& rendering) const {
    const auto isCut = [](const std::vector<float>& stroke) {
        return stroke.size() == JobLimits::mostStrokeFrames;
    };
    for (const auto& [velocity, strokes] : rendering.variations) {
        if (std::ranges::any_of(strokes, isCut)) {
            rendering.problems.emplace_back("is longer than 4 s and cut there");
        }
    }
    const StrokeSpec* const stroke = job.stroke();
    for (const LayerSpec& layer : stroke != nullptr ? stroke->layers : std::vector<LayerSpec>()) {
        for (const std::string& recording : layer.samples) {
            if (library_.frames(recording) > JobLimits::mostFrames) {
                rendering.problems.push_back("has a recording longer than 5 s, cut there: " +
                                             readable(recording));
            }
        }
    }
}

BankRendering::Counts BankRendering::room() const {
    std::vector<JobSize> sizes;
    for (std::size_t job = 0; job < renderings_.size(); ++job) {
        JobSize size{.frames = renderings_[job].frames(), .played = board_.played[job]};
        if (!size.frames.empty()) {
            // Those to come are as long as those that are there.
            size.frames.resize(static_cast<std::size_t>(board_.jobs[job].sound.variations),
                               sumOf(size.frames) / size.frames.size());
        }
        sizes.push_back(std::move(size));
    }
    return sharedOut(sizes, options_.mostFrames);
}

void BankRendering::fit(const Counts& counts) {
    std::size_t frames = 0;
    for (std::size_t job = 0; job < counts.size(); ++job) {
        Rendering& rendering = renderings_[job];
        const std::int64_t wanted = board_.jobs[job].sound.variations;
        const std::int64_t kept = std::min(counts[job], rendering.count());
        if (kept > 0 && kept < wanted) {
            rendering.problems.push_back("gets " + std::to_string(kept) + " of its " +
                                         std::to_string(wanted) +
                                         " variations: its board is too long");
        }
        for (auto& [velocity, strokes] : rendering.variations) {
            strokes.resize(static_cast<std::size_t>(kept));
        }
        frames += sumOf(rendering.frames());
    }
    if (frames > options_.mostFrames) {
        const std::size_t share = options_.mostFrames / static_cast<std::size_t>(strokes(counts));
        for (Rendering& rendering : renderings_) {
            if (rendering.cut(share)) {
                rendering.problems.emplace_back("is too long for its board and cut");
            }
        }
    }
}

} // namespace

RenderedBoard buildBoard(const Board& board, const SampleSource& library, unsigned threads,
                         const BuildOptions& options) {
    BoardJobs wanted(board);
    std::vector<Rendering> renderings = BankRendering(wanted, library, threads, options).run();
    std::vector<std::size_t> usesLeft(wanted.jobs.size(), 0);
    for (const BoardJobs::Use& use : wanted.uses) {
        ++usesLeft[use.job];
    }
    const auto bank = std::make_shared<VoiceBank>();
    for (const BoardJobs::Use& use : wanted.uses) {
        const RenderJob& job = wanted.jobs[use.job];
        for (const auto& [velocity, samples] : renderings[use.job].variations) {
            bank->add(job.isRelease ? VoiceBank::releaseKey(use.sound)
                                    : VoiceBank::key(use.sound, job.stabs.has_value(), velocity),
                      samples);
        }
        if (--usesLeft[use.job] == 0) {
            renderings[use.job].variations.clear(); // The bank has a copy.
        }
    }
    // Press and stabilised press of a sound say the same.
    constexpr std::size_t mostMessages = 80;
    for (std::size_t job = 0; job < renderings.size(); ++job) {
        for (const std::string& problem : renderings[job].problems) {
            std::string message = about(wanted.jobs[job], problem);
            if (wanted.messages.size() < mostMessages &&
                std::ranges::find(wanted.messages, message) == wanted.messages.end()) {
                wanted.messages.push_back(std::move(message));
            }
        }
    }
    return {.bank = bank, .messages = std::move(wanted.messages)};
}

} // namespace vornic
