// From the start of the program to its first sound: starts it again and again, with the board that
// a new user has, and types until a key sounds.
//
//   bench_start [ROUNDS]     10 rounds unless told otherwise
//
// The first round has no settings yet, as at the very first start. A round counts from just before
// the process is made until the onset's frame in the graph's own time.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/SinkCapture.h"
#include "tests/support/ScratchFolder.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace vornic {
namespace {

/// The faintest start of a press: silence has nothing at all.
constexpr float onsetLevel = 0.005F;
/// The place in the alphabet of the letter that is typed.
constexpr int letterF = 5;

/// Seconds until the first sound; none when there was none within ten.
std::optional<double> firstSound(SinkCapture& capture, KeyTyper& typer, const ScratchFolder& home) {
    using namespace std::chrono_literals;
    const MonotonicClock clock;
    const std::size_t from = capture.frames();
    const std::uint64_t started = clock.nanos();
    ChildProcess program({VORNIC_PROGRAM, "--hidden", "--packs", VORNIC_BUILT_PACKS},
                         {{"XDG_CONFIG_HOME", (home / "config").string()},
                          {"XDG_DATA_HOME", (home / "data").string()}},
                         (home / "vornic.log").string());
    std::optional<double> seconds;
    while (!seconds && clock.nanos() < started + 10'000'000'000) {
        typer.type(KeyTyper::letter(letterF));
        if (const auto onset = capture.waitFor(from, onsetLevel, 10ms)) {
            const SinkCapture::Block block = capture.blockOf(*onset);
            seconds = (static_cast<double>(block.cycleNanos) - static_cast<double>(started)) / 1e9 +
                      static_cast<double>(*onset - block.firstFrame) / 48000.0;
        }
    }
    program.end(SIGTERM);
    // The last sounds leave the sink.
    std::size_t end = capture.frames();
    while (const auto loud = capture.waitFor(end, onsetLevel, 200ms)) {
        end = *loud + 1;
    }
    return seconds;
}

int run(int rounds) {
    const ScratchFolder home;
    SinkCapture capture(
        {.sink = "vornic-test-sink", .remote = {}, .quantum = 128, .seconds = 1200.0});
    if (!capture.waitUntilRunning()) {
        std::fputs("nothing can be captured\n", stderr);
        return EXIT_FAILURE;
    }
    KeyTyper typer;
    std::vector<double> seconds;
    for (int round = 0; round < rounds; ++round) {
        const auto first = firstSound(capture, typer, home);
        if (!first) {
            std::fprintf(stderr, "no sound:\n%s", readBytes(home / "vornic.log").c_str());
            return EXIT_FAILURE;
        }
        std::printf("%s%.2f s\n", round == 0 ? "the very first start: " : "", *first);
        seconds.push_back(*first);
    }
    std::ranges::sort(seconds);
    std::printf("first sound after the start: median %.2f s, slowest %.2f s, wanted within 1 s\n",
                seconds[seconds.size() / 2], seconds.back());
    return EXIT_SUCCESS;
}

} // namespace
} // namespace vornic

int main(int argc, char** argv) {
    try {
        return vornic::run(std::max(argc > 1 ? std::stoi(argv[1]) : 10, 1));
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "bench_start: %s\n", problem.what());
        return EXIT_FAILURE;
    }
}
