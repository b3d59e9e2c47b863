// From a key to its sound: types keys into the private desktop and finds each onset in what the
// sink plays, for Vornic, for Vornic while somebody drags a slider in its Studio, and for the least
// program that could do it (floor/LatencyFloor.cpp), in turns.
//
//   bench_latency [KEYS [ROUNDS]]     2000 keys each in 10 rounds unless told otherwise
//
// All are measured alike: from just before the X server is handed the key until the onset's frame
// in the graph's own time. It ends with the first key after 35 s of silence.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "VornicCore/base/SplitMix64.h"
#include "bench/StudioDrag.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/QtLoop.h"
#include "tests/live/SinkCapture.h"
#include "tests/support/ClickPack.h"
#include "tests/support/WaitFor.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace vornic {
namespace {

/// A quarter of the softest click that typing dynamics make of the pack's; silence has none at all.
constexpr float onsetLevel = 0.02f;
/// The place in the alphabet of the letter that is typed.
constexpr int letterF = 5;

struct Contestant {
    std::string name;
    std::vector<std::string> command;
    std::string readyLine;
    ChildProcess::Environment environment;
    /// Whether somebody drags a slider in its Studio meanwhile.
    bool studio = false;
    std::vector<double> millis;
    int lost = 0;
};

/// A folder of its own for one run.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name =
            (std::filesystem::temp_directory_path() / "vornic-bench-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class LatencyBench {
  public:
    LatencyBench(const std::filesystem::path& program, const std::filesystem::path& floor) {
        writeClickPack(scratch_.path() / "packs");
        const std::string packs = (scratch_.path() / "packs").string();
        const auto config = scratch_.path() / "config";
        std::filesystem::create_directories(config / "Vornic");
        std::ofstream(config / "Vornic" / "settings.json")
            << R"({"advanced": true, "welcomed": true})";
        vornic_.name = "vornic";
        vornic_.command = {program.string(), "--hidden", "--packs", packs};
        vornic_.readyLine = "Vornic is listening";
        studio_ = vornic_;
        studio_.name = "studio";
        studio_.command = {program.string(), "--packs", packs};
        studio_.environment = {{"XDG_CONFIG_HOME", config.string()},
                               {"XDG_DATA_HOME", (scratch_.path() / "data").string()},
                               {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}};
        studio_.studio = true;
        floor_.name = "floor";
        floor_.command = {floor.string()};
        floor_.readyLine = "ready";
    }

    bool run(int keys, int rounds) {
        if (!capture_.waitUntilRunning()) {
            std::fputs("nothing can be captured\n", stderr);
            return false;
        }
        for (int round = 0; round < rounds; ++round) {
            for (Contestant* const contestant : {&floor_, &vornic_, &studio_}) {
                if (!measure(*contestant, keys / rounds, 0.0)) {
                    return false;
                }
            }
        }
        std::printf("%-8s %6s %6s %8s %8s %8s\n", "", "keys", "lost", "p50 ms", "p95 ms", "max ms");
        report(floor_);
        report(vornic_);
        report(studio_);
        std::printf("vornic / floor: p50 %.3f, p95 %.3f\n",
                    percentile(vornic_, 0.5) / percentile(floor_, 0.5),
                    percentile(vornic_, 0.95) / percentile(floor_, 0.95));
        std::printf("studio / vornic: p50 %.3f, p95 %.3f\n",
                    percentile(studio_, 0.5) / percentile(vornic_, 0.5),
                    percentile(studio_, 0.95) / percentile(vornic_, 0.95));

        Contestant idle = vornic_;
        idle.millis.clear();
        if (!measure(idle, 3, 35.0)) {
            return false;
        }
        std::printf("first key after 35 s of silence: %.1f, %.1f, %.1f ms\n", idle.millis[0],
                    idle.millis[1], idle.millis[2]);
        return true;
    }

  private:
    /// Types `keys` keys, after `silence` seconds each or a jittered moment, and notes when each
    /// was heard.
    bool measure(Contestant& contestant, int keys, double silence) {
        const auto log = scratch_.path() / (contestant.name + ".log");
        std::filesystem::remove(log);
        ChildProcess program(contestant.command, contestant.environment, log.string());
        if (!waitFor(
                [&] { return contentsOf(log).find(contestant.readyLine) != std::string::npos; })) {
            std::fprintf(stderr, "%s did not start:\n%s", contestant.name.c_str(),
                         contentsOf(log).c_str());
            return false;
        }
        std::optional<StudioDrag> hand;
        if (contestant.studio) {
            hand.emplace();
        }
        // The first key may still have to start the stream; it is not counted.
        press();
        for (int key = 0; key < keys; ++key) {
            pause(silence > 0.0 ? silence : generator_.uniform(0.030, 0.090));
            if (const auto latency = press()) {
                contestant.millis.push_back(*latency);
            } else {
                ++contestant.lost;
            }
        }
        hand.reset();
        program.end(SIGTERM);
        return true;
    }

    std::optional<double> press() {
        const std::size_t from = capture_.frames();
        const std::uint64_t pressed = clock_.nanos();
        typer_.press(KeyTyper::letter(letterF));
        const auto onset = capture_.waitFor(from, onsetLevel, std::chrono::seconds(1));
        typer_.release(KeyTyper::letter(letterF));
        if (!onset) {
            return std::nullopt;
        }
        const SinkCapture::Block block = capture_.blockOf(*onset);
        const double heard = static_cast<double>(block.cycleNanos) +
                             static_cast<double>(*onset - block.firstFrame) * 1e9 / 48000.0;
        return (heard - static_cast<double>(pressed)) / 1e6;
    }

    static void pause(double seconds) {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    }

    static double percentile(const Contestant& contestant, double share) {
        std::vector<double> sorted = contestant.millis;
        std::ranges::sort(sorted);
        return sorted.empty() ? 0.0
                              : sorted[static_cast<std::size_t>(
                                    share * static_cast<double>(sorted.size() - 1))];
    }

    static void report(const Contestant& contestant) {
        std::printf("%-8s %6zu %6d %8.2f %8.2f %8.2f\n", contestant.name.c_str(),
                    contestant.millis.size(), contestant.lost, percentile(contestant, 0.5),
                    percentile(contestant, 0.95), percentile(contestant, 1.0));
    }

    TemporaryFolder scratch_;
    MonotonicClock clock_;
    SplitMix64 generator_{20};
    KeyTyper typer_;
    SinkCapture capture_{
        {.sink = "vornic-test-sink", .remote = {}, .quantum = 128, .seconds = 1200.0}};
    Contestant floor_;
    Contestant vornic_;
    Contestant studio_;
};

} // namespace
} // namespace vornic

int main(int argc, char** argv) {
    try {
        const int keys = argc > 1 ? std::stoi(argv[1]) : 2000;
        const int rounds = std::max(argc > 2 ? std::stoi(argv[2]) : 10, 1);
        const vornic::QtLoop qt;
        vornic::LatencyBench bench(VORNIC_PROGRAM, VORNIC_LATENCY_FLOOR);
        return bench.run(std::max(keys, rounds), rounds) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "bench_latency: %s\n", problem.what());
        return EXIT_FAILURE;
    }
}
