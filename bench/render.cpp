// What a board costs to render: plain and in lanes, split by stage, beside sox running a chain like
// it on the same strokes in the same run, all in processor time. The limit is 50 ms, by the clock
// on the wall, for the full board on two cores.

#include "Vornic/rendering/BoardJobs.h"
#include "Vornic/rendering/BuildBoard.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/render/FinishStroke.h"
#include "VornicCore/render/LaneRenderer.h"
#include "VornicCore/render/LayerMix.h"
#include "VornicCore/render/Renderer.h"
#include "bench/RenderBenchBoard.h"
#include "bench/SoxChain.h"

#include <time.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace vornic;

/// Seconds of this thread's processor time: what else the machine does counts little.
double cpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

template <typename Work>
double secondsOf(Work&& work) {
    const double start = cpuSeconds();
    work();
    return cpuSeconds() - start;
}

template <typename Work>
double wallSecondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The lane kernels, timed. Plain functions, since the table holds no others.
enum LaneStage : std::size_t {
    laneFilter,
    laneShape,
    laneFinish,
    laneResample,
    lanePeak,
    laneStages
};
std::array<double, laneStages> laneSeconds{};

template <LaneStage Stage, auto Member, typename Argument>
void timed(Argument argument) {
    laneSeconds[Stage] += secondsOf([&] { (laneKernels().*Member)(argument); });
}

LaneKernels timedKernels() {
    LaneKernels kernels = laneKernels();
    kernels.filter = timed<laneFilter, &LaneKernels::filter, const LaneFilter&>;
    kernels.shape = timed<laneShape, &LaneKernels::shape, LaneShape&>;
    kernels.finish = timed<laneFinish, &LaneKernels::finish, const LaneFinish&>;
    kernels.resample = timed<laneResample, &LaneKernels::resample, const LaneResample&>;
    return kernels;
}

struct Measured {
    double plain = std::numeric_limits<double>::infinity();
    double lanes = std::numeric_limits<double>::infinity();
    double board = std::numeric_limits<double>::infinity();
    double sox = std::numeric_limits<double>::infinity();
    std::vector<double> plainStages, laneStageSeconds;
};

/// The plain chain step by step on every stroke of the board; keeps the mixes for sox.
std::vector<double> plainSplit(const BoardJobs& jobs, const SampleSource& library,
                               std::vector<std::vector<float>>& mixes) {
    std::vector<double> seconds(8);
    mixes.clear();
    for (const RenderJob& job : jobs.jobs) {
        const EffectiveStroke stroke = Renderer::effective(*job.stroke(), job);
        for (const Velocity velocity : allVelocities) {
            for (std::int64_t variant = 0; variant < job.sound.variations; ++variant) {
                const auto variation = StrokeVariation::draw(job.variation, velocity, variant, 1);
                const ChainParams chain = struck(stroke.chain, velocity, variation);
                std::vector<float> samples;
                const auto step = [&](std::size_t stage, const auto& work) {
                    seconds[stage] += secondsOf(work);
                };
                step(0, [&] {
                    std::vector<ShiftedLayer> shifted;
                    std::vector<PlacedLayer> placed;
                    shifted.reserve(stroke.layers.size());
                    for (const LayerSpec& layer : heard(stroke.layers)) {
                        if (auto made =
                                shiftedLayer(layer, *chosenRecording(layer, variant), library)) {
                            shifted.push_back(*std::move(made));
                            placed.push_back({&shifted.back(), layer.offsetMs});
                        }
                    }
                    samples = mixed(placed, job.stroke()->alignAttacks);
                });
                mixes.push_back(samples);
                step(1, [&] { DSP::tone(samples, chain.eq, chain.highPassHz, chain.lowPassHz); });
                step(2, [&] { DSP::transient(samples, chain.attackDb, chain.sustainDb); });
                step(3, [&] { DSP::body(samples, chain.bodyModes, chain.bodyMix); });
                step(4, [&] { DSP::damping(samples, chain.damping, chain.dampingStartMs); });
                step(5, [&] { DSP::drive(samples, chain.drive); });
                step(6, [&] { samples = DSP::resample(samples, finalPitch(chain, variation)); });
                step(7, [&] { finishStroke(samples, finalLevelDb(velocity, variation)); });
            }
        }
    }
    return seconds;
}

void renderPlain(const BoardJobs& jobs, const SampleSource& library) {
    for (const RenderJob& job : jobs.jobs) {
        Renderer::renderAll(job, library, 1);
    }
}

void renderLanes(const BoardJobs& jobs, const SampleSource& library, const LaneKernels& kernels) {
    for (const RenderJob& job : jobs.jobs) {
        LaneRenderer::renderAll(job, allVelocities, library, 1, kernels);
    }
}

void print(const char* name, double seconds, double strokes, double plain) {
    std::printf("%-28s %8.2f ms a board %8.4f ms a stroke %6.2f of plain\n", name, seconds * 1e3,
                seconds * 1e3 / strokes, seconds / plain);
}

} // namespace

int main() {
    const BenchSource library;
    const Board board = benchBoard();
    const BoardJobs jobs(board);
    double strokes = 0;
    for (const RenderJob& job : jobs.jobs) {
        strokes += static_cast<double>(BoardJobs::strokes(job));
    }
    const unsigned cores = std::max(std::thread::hardware_concurrency(), 1U);

    // Best of several, taken in turns: other work on the machine only ever adds.
    constexpr int rounds = 7;
    Measured best;
    std::vector<std::vector<float>> mixes;
    const LaneKernels kernels = timedKernels();
    for (int round = 0; round < rounds; ++round) {
        const double plain = secondsOf([&] { renderPlain(jobs, library); });
        best.plain = std::min(best.plain, plain);
        best.lanes =
            std::min(best.lanes, secondsOf([&] { renderLanes(jobs, library, laneKernels()); }));
        best.board =
            std::min(best.board, wallSecondsOf([&] { buildBoard(board, library, cores); }));
        const auto split = plainSplit(jobs, library, mixes);
        const auto sum = [](const std::vector<double>& of) {
            double total = 0;
            for (const double seconds : of) {
                total += seconds;
            }
            return total;
        };
        if (best.plainStages.empty() || sum(split) < sum(best.plainStages)) {
            best.plainStages = split;
        }
        laneSeconds.fill(0);
        const double all = secondsOf([&] { renderLanes(jobs, library, kernels); });
        std::vector<double> lanes(laneSeconds.begin(), laneSeconds.end());
        lanes[lanePeak] = 0;
        lanes[lanePeak] = all - sum(lanes);
        if (best.laneStageSeconds.empty() || sum(lanes) < sum(best.laneStageSeconds)) {
            best.laneStageSeconds = lanes;
        }
        if (const auto sox = soxSeconds(mixes)) {
            best.sox = std::min(best.sox, *sox);
        }
    }

    std::printf("%zu jobs, %.0f strokes, best of %d\n", jobs.jobs.size(), strokes, rounds);
    print("plain, one core", best.plain, strokes, best.plain);
    print("lanes, one core", best.lanes, strokes, best.plain);
    print(("lanes into a bank, " + std::to_string(cores) + " cores").c_str(), best.board, strokes,
          best.plain);
    if (best.sox < std::numeric_limits<double>::infinity()) {
        print("sox, fewer steps, one core", best.sox, strokes, best.plain);
        std::printf("lanes over sox, one core: %.2f\n", best.lanes / best.sox);
    } else {
        std::printf("sox: not installed\n");
    }
    const std::array<const char*, 8> plainNames{"layers",  "tone",  "transient", "body",
                                                "damping", "drive", "resample",  "finish"};
    std::printf("plain by stage, ms a stroke:");
    for (std::size_t stage = 0; stage < plainNames.size(); ++stage) {
        std::printf(" %s %.4f", plainNames[stage], best.plainStages[stage] * 1e3 / strokes);
    }
    const std::array<const char*, laneStages> laneNames{
        "shared tone", "own tone + transient + body", "damping + drive", "resample",
        "layers + finish"};
    std::printf("\nlanes by stage, ms a stroke:");
    for (std::size_t stage = 0; stage < laneNames.size(); ++stage) {
        std::printf(" %s %.4f", laneNames[stage], best.laneStageSeconds[stage] * 1e3 / strokes);
    }
    const bool inTime = best.board < 0.05;
    std::printf("\nfull board on %u cores: %.1f ms, limit 50 ms: %s\n", cores, best.board * 1e3,
                inTime ? "kept" : "missed");
    return inTime ? 0 : 1;
}
