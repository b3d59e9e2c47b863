// Finding keystrokes in a recording: how long 20 s take, beside the same steps done plainly and
// beside libaubio's onset detector, and how many of the keys each finds in typing whose onsets are
// known. The limit is 20 ms of one core.
//
//   bench_slicer [SEED]

#include "VornicCore/strokes/Slicer.h"

#include "bench/Contest.h"
#include "bench/OnsetScore.h"
#include "bench/TypingMix.h"
#include "tests/VornicCore/strokes/PlainSlicer.h"
#ifdef VORNIC_BENCH_AUBIO
#include "bench/AubioOnsets.h"
#endif

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace vornic;

constexpr double tolerance = 0.010;
constexpr int rounds = 20;
constexpr std::uint64_t mixesPerCondition = 3;

struct Detector {
    std::string name;
    std::function<std::vector<double>(const std::vector<float>&)> find;
};

std::vector<double> startsOf(const std::vector<Stroke>& strokes) {
    std::vector<double> starts;
    starts.reserve(strokes.size());
    for (const Stroke& stroke : strokes) {
        starts.push_back(stroke.start);
    }
    return starts;
}

std::vector<Detector> detectors() {
    std::vector<Detector> all{{"slicer", [](const std::vector<float>& samples) {
                                   return startsOf(Slicer::strokes(samples, 48000.0));
                               }}};
#ifdef VORNIC_BENCH_AUBIO
    for (const char* method : {"default", "complex"}) {
        all.push_back({std::string("aubio ") + method,
                       [aubio = AubioOnsets(method)](const std::vector<float>& samples) {
                           return aubio.find(samples);
                       }});
    }
#endif
    return all;
}

int measureTime(const std::vector<std::vector<float>>& presses, std::uint64_t seed) {
    const TypingMix mix = mixTyping(presses, {.seed = seed});
    std::size_t found = 0;
    Contest contest;
    const auto add = [&](const Detector& detector) {
        contest.add({detector.name, [&] { found = 0; },
                     [&mix, &found, find = detector.find] { found = find(mix.samples).size(); },
                     [&found] { return found > 0 ? "" : "found nothing"; }});
    };
    for (const Detector& detector : detectors()) {
        add(detector);
    }
    add({"slicer, sorting everything", [](const std::vector<float>& samples) {
             return startsOf(plainStrokes(samples, 48000.0));
         }});
    if (const std::string flaw = contest.measure(rounds); !flaw.empty()) {
        std::fprintf(stderr, "%s\n", flaw.c_str());
        return EXIT_FAILURE;
    }
    std::printf("processor time for 20 s at 48 kHz, %d rounds, ms\n", rounds);
    std::printf("%-28s %8s %8s %8s\n", "", "median", "p95", "/slicer");
    for (std::size_t i = 0; i < contest.size(); ++i) {
        std::printf("%-28s %8.2f %8.2f %8.2f\n", contest.name(i).c_str(), contest.median(i) / 1e6,
                    contest.quantile(i, 0.95) / 1e6, contest.ratio(i, 0));
    }
    return EXIT_SUCCESS;
}

void measureHits(const std::vector<std::vector<float>>& presses, std::uint64_t seed) {
    std::printf("\nonsets within 10 ms, %d mixes of 20 s each: precision / recall / F1\n",
                static_cast<int>(mixesPerCondition));
    const std::vector<Detector> all = detectors();
    std::printf("%-16s", "keys/s, noise");
    for (const Detector& detector : all) {
        std::printf("  %-18s", detector.name.c_str());
    }
    std::printf("\n");
    for (const double keys : {2.0, 5.0, 8.0}) {
        for (const double noise : {30.0, 40.0, 50.0}) {
            std::vector<OnsetScore> scores(all.size());
            for (std::uint64_t i = 0; i < mixesPerCondition; ++i) {
                const TypingMix mix =
                    mixTyping(presses, {.keysPerSecond = keys, .noiseDb = noise, .seed = seed + i});
                for (std::size_t d = 0; d < all.size(); ++d) {
                    scores[d].add(scoreOnsets(mix.onsets, all[d].find(mix.samples), tolerance));
                }
            }
            std::printf("%3.0f   -%2.0f dB      ", keys, noise);
            for (const OnsetScore& score : scores) {
                std::printf("  %.2f / %.2f / %.2f ", score.precision(), score.recall(), score.f1());
            }
            std::printf("\n");
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::uint64_t seed = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1;
        const auto presses = recordedPresses(VORNIC_BUILT_PACKS "/spring");
        std::printf("%zu recorded keystrokes, seed %llu\n\n", presses.size(),
                    static_cast<unsigned long long>(seed));
        const int status = measureTime(presses, seed);
        measureHits(presses, seed);
        return status;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
}
