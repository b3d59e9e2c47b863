#include "Vornic/rendering/BuildBoard.h"

#include "Vornic/rendering/BoardJobs.h"
#include "VornicCore/board/ReadableText.h"
#include "VornicCore/render/LaneRenderer.h"

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

/// Cuts a job's strokes where they exceed their share of the bank together; whether it did.
bool cut(Renderer::Variations& variations, std::size_t strokes, std::size_t strokeShare) {
    std::size_t frames = 0;
    for (const auto& [velocity, samples] : variations) {
        for (const std::vector<float>& stroke : samples) {
            frames += stroke.size();
        }
    }
    if (frames <= strokes * strokeShare) {
        return false;
    }
    for (auto& [velocity, samples] : variations) {
        for (std::vector<float>& stroke : samples) {
            stroke.resize(std::min(stroke.size(), strokeShare));
            stroke.shrink_to_fit();
        }
    }
    return true;
}

Rendering rendered(const RenderJob& job, const SampleSource& library, std::uint64_t seed,
                   std::size_t strokeShare) {
    constexpr std::array releaseVelocity{Velocity::medium};
    const auto velocities =
        job.isRelease ? std::span<const Velocity>(releaseVelocity) : std::span(allVelocities);
    const auto strokes = static_cast<std::size_t>(BoardJobs::strokes(job));
    try {
        Rendering result;
        result.variations = LaneRenderer::renderAll(job, velocities, library, seed);
        if (cut(result.variations, strokes, strokeShare)) {
            result.message =
                "Sound \"" + readable(job.sound.name) + "\" is too long for its board and cut";
        }
        return result;
    } catch (const std::exception& error) {
        Rendering failure;
        failure.message =
            "Sound \"" + readable(job.sound.name) + "\" could not be rendered: " + error.what();
        return failure;
    }
}

/// Every job once, the longest first, so that no thread begins one when the others are done.
std::vector<Rendering> renderedAll(std::span<const RenderJob> jobs, const SampleSource& library,
                                   unsigned threads, std::uint64_t seed, std::size_t mostFrames) {
    std::int64_t strokes = 0;
    for (const RenderJob& job : jobs) {
        strokes += BoardJobs::strokes(job);
    }
    const std::size_t strokeShare =
        mostFrames / static_cast<std::size_t>(std::max<std::int64_t>(strokes, 1));
    std::vector<std::size_t> order(jobs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater<>(),
                             [&](std::size_t index) { return BoardJobs::strokes(jobs[index]); });

    std::vector<Rendering> renderings(jobs.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t place = next++; place < order.size(); place = next++) {
            const std::size_t index = order[place];
            renderings[index] = rendered(jobs[index], library, seed, strokeShare);
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
    return renderings;
}

} // namespace

RenderedBoard buildBoard(const Board& board, const SampleSource& library, unsigned threads,
                         std::size_t mostFrames, std::uint64_t seed) {
    BoardJobs wanted(board);
    std::vector<Rendering> renderings =
        renderedAll(wanted.jobs, library, threads, seed, mostFrames);
    const auto bank = std::make_shared<VoiceBank>();
    for (const BoardJobs::Use& use : wanted.uses) {
        const RenderJob& job = wanted.jobs[use.job];
        for (const auto& [velocity, samples] : renderings[use.job].variations) {
            bank->add(job.isRelease ? VoiceBank::releaseKey(use.sound)
                                    : VoiceBank::key(use.sound, job.stabs.has_value(), velocity),
                      samples);
        }
    }
    for (Rendering& rendering : renderings) {
        // Press and stabilised press of a sound say the same.
        if (!rendering.message.empty() &&
            std::ranges::find(wanted.messages, rendering.message) == wanted.messages.end()) {
            wanted.messages.push_back(std::move(rendering.message));
        }
    }
    return {.bank = bank, .messages = std::move(wanted.messages)};
}

} // namespace vornic
