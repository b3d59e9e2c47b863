// What a board costs to render: plain and in lanes, split by stage, beside sox running a chain like
// it on the same strokes in the same run, all in processor time. The limit is 50 ms, by the clock
// on the wall, for the full board on two cores; it can only be kept on a machine that does little
// else.

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/dsp/Tone.h"
#include "VornicCore/render/BoardJobs.h"
#include "VornicCore/render/BuildBoard.h"
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
#include <numeric>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace vornic;

double secondsBy(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// Seconds of this thread's processor time: what else the machine does counts little.
template <typename Work>
double secondsOf(Work&& work) {
    const double start = secondsBy(CLOCK_THREAD_CPUTIME_ID);
    work();
    return secondsBy(CLOCK_THREAD_CPUTIME_ID) - start;
}

/// Seconds of all threads' processor time.
template <typename Work>
double secondsOfAllThreads(Work&& work) {
    const double start = secondsBy(CLOCK_PROCESS_CPUTIME_ID);
    work();
    return secondsBy(CLOCK_PROCESS_CPUTIME_ID) - start;
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
    laneOther,
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

constexpr double never = std::numeric_limits<double>::infinity();

/// The best of several runs, in seconds for the whole board.
struct Best {
    double plain = never, lanes = never, sox = never;
    double bank = never;    // by the clock on the wall, on all cores
    double bankCpu = never; // the same in processor time of all cores
    std::vector<double> plainStages, laneStages;
};

double sum(const std::vector<double>& seconds) {
    return std::accumulate(seconds.begin(), seconds.end(), 0.0);
}

void keepBetter(std::vector<double>& best, std::vector<double> stages) {
    if (best.empty() || sum(stages) < sum(best)) {
        best = std::move(stages);
    }
}

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
        LaneRenderer::renderAll(job, library, 1, kernels);
    }
}

std::vector<double> laneSplit(const BoardJobs& jobs, const SampleSource& library) {
    laneSeconds.fill(0);
    const LaneKernels kernels = timedKernels();
    const double all = secondsOf([&] { renderLanes(jobs, library, kernels); });
    laneSeconds[laneOther] = all - std::accumulate(laneSeconds.begin(), laneSeconds.end(), 0.0);
    return {laneSeconds.begin(), laneSeconds.end()};
}

/// One turn of everything: other work on the machine only ever adds.
void measure(Best& best, const Board& board, const SampleSource& library, unsigned cores) {
    const BoardJobs jobs(board);
    best.plain = std::min(best.plain, secondsOf([&] { renderPlain(jobs, library); }));
    best.lanes =
        std::min(best.lanes, secondsOf([&] { renderLanes(jobs, library, laneKernels()); }));
    double wall = 0;
    const double cpu = secondsOfAllThreads(
        [&] { wall = wallSecondsOf([&] { buildBoard(board, library, cores); }); });
    best.bank = std::min(best.bank, wall);
    best.bankCpu = std::min(best.bankCpu, cpu);
    std::vector<std::vector<float>> mixes;
    keepBetter(best.plainStages, plainSplit(jobs, library, mixes));
    keepBetter(best.laneStages, laneSplit(jobs, library));
    best.sox = std::min(best.sox, soxSeconds(mixes).value_or(never));
}

void print(const std::string& name, double seconds, double strokes, const Best& best) {
    std::printf("%-36s %8.2f ms a board %8.4f ms a stroke %6.2f of plain", name.c_str(),
                seconds * 1e3, seconds * 1e3 / strokes, seconds / best.plain);
    if (best.sox < never) {
        std::printf(" %6.2f of sox", seconds / best.sox);
    }
    std::printf("\n");
}

template <typename Names>
void printStages(const char* what, const Names& names, const std::vector<double>& seconds,
                 double strokes) {
    std::printf("%s, ms a stroke:", what);
    for (std::size_t stage = 0; stage < names.size(); ++stage) {
        std::printf(" %s %.4f", names[stage], seconds[stage] * 1e3 / strokes);
    }
    std::printf("\n");
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
    const std::string onCores = std::to_string(cores) + " cores";

    constexpr int turns = 7;
    Best best;
    for (int turn = 0; turn < turns; ++turn) {
        measure(best, board, library, cores);
    }

    std::printf("%zu jobs, %.0f strokes of 200 ms, best of %d\n", jobs.jobs.size(), strokes, turns);
    print("plain, one core", best.plain, strokes, best);
    print("lanes, one core", best.lanes, strokes, best);
    print("lanes into a bank, sum of " + onCores, best.bankCpu, strokes, best);
    if (best.sox < never) {
        print("sox, fewer steps, one core", best.sox, strokes, best);
    } else {
        std::printf("sox is not installed\n");
    }
    constexpr std::array plainNames{"layers",  "tone",  "transient", "body",
                                    "damping", "drive", "resample",  "finish"};
    printStages("plain by stage", plainNames, best.plainStages, strokes);
    constexpr std::array laneNames{"shared tone", "own tone + transient + body", "damping + drive",
                                   "resample", "layers + finish"};
    printStages("lanes by stage", laneNames, best.laneStages, strokes);
    std::printf("full board on %s: %.1f ms by the wall, limit 50 ms: %s\n", onCores.c_str(),
                best.bank * 1e3, best.bank < 0.05 ? "kept" : "missed");
}
