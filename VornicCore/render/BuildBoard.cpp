#include "VornicCore/render/BuildBoard.h"

#include "VornicCore/base/ReadableText.h"
#include "VornicCore/render/BoardJobs.h"
#include "VornicCore/render/LaneRenderer.h"
#include "VornicCore/render/RenderBudget.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <numeric>
#include <span>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vornic {

namespace {

struct Rendering {
    Renderer::Variations variations;
    std::string message; // what went wrong, if anything
};

std::size_t framesOf(const Renderer::Variations& variations) {
    std::size_t frames = 0;
    for (const auto& [velocity, samples] : variations) {
        for (const std::vector<float>& stroke : samples) {
            frames += stroke.size();
        }
    }
    return frames;
}

void cut(Renderer::Variations& variations, std::size_t strokeShare) {
    for (auto& [velocity, samples] : variations) {
        for (std::vector<float>& stroke : samples) {
            stroke.resize(std::min(stroke.size(), strokeShare));
            stroke.shrink_to_fit();
        }
    }
}

std::string about(const RenderJob& job, const std::string& what) {
    return "Sound \"" + readable(job.sound.name) + "\" " + what;
}

Rendering rendered(const RenderJob& job, const SampleSource& library, std::uint64_t seed) {
    constexpr std::array releaseVelocity{Velocity::medium};
    const auto velocities =
        job.isRelease ? std::span<const Velocity>(releaseVelocity) : std::span(allVelocities);
    try {
        return {LaneRenderer::renderAll(job, velocities, library, seed), {}};
    } catch (const std::exception& error) {
        return {{}, about(job, std::string("could not be rendered: ") + error.what())};
    }
}

/// Every job once, the longest first, so that no thread begins one when the others are done.
std::vector<Rendering> renderedAll(std::span<const RenderJob> jobs, const SampleSource& library,
                                   unsigned threads, const BuildOptions& options) {
    std::int64_t strokes = 0;
    for (const RenderJob& job : jobs) {
        strokes += BoardJobs::strokes(job);
    }
    const std::size_t strokeShare =
        options.mostFrames / static_cast<std::size_t>(std::max<std::int64_t>(strokes, 1));
    std::vector<std::size_t> order(jobs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater<>(),
                             [&](std::size_t index) { return BoardJobs::strokes(jobs[index]); });

    std::vector<Rendering> renderings(jobs.size());
    RenderBudget budget(jobs.size(), options.mostRenderedFrames);
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t place = next++; place < order.size(); place = next++) {
            if (budget.isSpentBefore(place)) {
                continue;
            }
            const RenderJob& job = jobs[order[place]];
            Rendering& rendering = renderings[order[place]];
            rendering = rendered(job, library, options.seed);
            const std::size_t frames = framesOf(rendering.variations);
            budget.spend(place, frames);
            if (frames > static_cast<std::size_t>(BoardJobs::strokes(job)) * strokeShare) {
                cut(rendering.variations, strokeShare);
                rendering.message = about(job, "is too long for its board and cut");
            }
        }
    };
    {
        std::vector<std::jthread> helpers;
        for (std::size_t helper = 1; helper < std::min<std::size_t>(threads, jobs.size());
             ++helper) {
            helpers.emplace_back(work);
        }
        work();
    }
    // Some may have been rendered before it was known that there is no room for them.
    for (std::size_t place = 0; place < order.size(); ++place) {
        if (budget.isSpentBefore(place)) {
            renderings[order[place]] = {
                {}, about(jobs[order[place]], "is left out: its board is too long to render")};
        }
    }
    return renderings;
}

} // namespace

RenderedBoard buildBoard(const Board& board, const SampleSource& library, unsigned threads,
                         const BuildOptions& options) {
    BoardJobs wanted(board);
    std::vector<Rendering> renderings = renderedAll(wanted.jobs, library, threads, options);
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
    for (Rendering& rendering : renderings) {
        // Press and stabilised press of a sound say the same.
        constexpr std::size_t mostMessages = 80;
        if (!rendering.message.empty() && wanted.messages.size() < mostMessages &&
            std::ranges::find(wanted.messages, rendering.message) == wanted.messages.end()) {
            wanted.messages.push_back(std::move(rendering.message));
        }
    }
    return {.bank = bank, .messages = std::move(wanted.messages)};
}

} // namespace vornic
