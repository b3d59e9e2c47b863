// What a dragged slider costs: the real program's Studio on the private desktop, every slider that
// its sections show dragged by the X server's mouse, beside an empty window of the same size in
// which one rectangle follows the mouse (floor/EmptyWindow.cpp).
//
//   bench_edit [MOVES [CHANGES]]     120 moves a slider, 20 changes of sound unless told otherwise
//
// Frame times are the toolkit's own log of its frames; the program has no part in it. The time of
// the main thread is the kernel's. A change of sound is a click at the other end of "High cut": it
// is over with the first key whose strike is as steep as that of keys is there, and the next two
// are.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "bench/FrameLog.h"
#include "bench/StudioWindow.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/QtLoop.h"
#include "tests/live/SinkCapture.h"
#include "tests/live/views/Pointer.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace vornic {
namespace {

using namespace std::chrono_literals;

constexpr float onsetLevel = 0.01F;
constexpr int letterF = 5;
constexpr quint32 sliderRole = 51; // of AT-SPI
/// Faster than any screen shows.
constexpr auto moveInterval = 8ms;

/// Seconds of processor time that the main thread has had.
double mainThreadSeconds(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/schedstat");
    double nanos = 0;
    file >> nanos;
    return nanos / 1e9;
}

struct Drag {
    std::vector<double> frames;
    double mainMillis = 0; // a frame
};

class EditBench {
  public:
    explicit EditBench(int moves) : moves_(moves) {}

    bool run(int changes) {
        std::vector<double> floor = dragFloor();
        dragStudio();
        const std::vector<double> again = dragFloor();
        floor.insert(floor.end(), again.begin(), again.end());
        const double floorP95 = percentile(floor, 0.95);
        const double wanted = std::max(16.0, 1.3 * floorP95);
        std::printf("%-34s %6s %8s %8s %14s\n", "", "frames", "p50 ms", "p95 ms", "main ms/frame");
        std::printf("%-34s %6zu %8.1f %8.1f\n", "empty window", floor.size(),
                    percentile(floor, 0.5), floorP95);
        bool met = !drags_.empty();
        for (const auto& [name, drag] : drags_) {
            const double p95 = percentile(drag.frames, 0.95);
            const bool good = p95 <= wanted && drag.mainMillis <= 10.0 && !drag.frames.empty();
            met = met && good;
            std::printf("%-34s %6zu %8.1f %8.1f %14.2f%s\n", name.c_str(), drag.frames.size(),
                        percentile(drag.frames, 0.5), p95, drag.mainMillis, good ? "" : "  <-");
        }
        std::printf("wanted: p95 at most %.1f ms, main thread at most 10 ms\n", wanted);
        return changeSounds(changes) && met;
    }

  private:
    /// Presses in the middle of `place` and moves to and fro along its longer side.
    void drag(const QRect& place) {
        const bool upright = place.height() > place.width();
        const int reach = (upright ? place.height() : place.width()) * 2 / 5;
        pointer_.press(place.center());
        for (int move = 0; move < moves_; ++move) {
            const int by = static_cast<int>(reach * std::sin(move * 0.1));
            pointer_.move(place.center() + (upright ? QPoint(0, by) : QPoint(by, 0)));
            std::this_thread::sleep_for(moveInterval);
        }
        pointer_.release();
    }

    std::vector<double> dragFloor() {
        const auto log = scratch_ / "floor.log";
        std::filesystem::remove(log);
        const ChildProcess window({VORNIC_EMPTY_WINDOW}, StudioWindow::environment(), log.string());
        StudioWindow::await(log, "Frame rendered");
        FrameLog frames(log);
        frames.begin();
        drag({100, 300, 600, 18});
        return frames.deltas();
    }

    void dragStudio() {
        StudioWindow studio;
        studio.click("Keys");
        dragAll(studio, "Keys");
        studio.click("Sounds");
        for (const char* const section : {"Tone", "Layers", "Switch", "Board"}) {
            studio.click(section);
            dragAll(studio, section);
        }
    }

    /// Every slider of what is shown, from its top to its end.
    void dragAll(StudioWindow& studio, const std::string& section) {
        constexpr int pages = 4; // more than the longest section has
        std::set<QString> dragged;
        const QRect window = studio.place();
        for (int page = 0; page < pages; ++page) {
            const auto sliders = studio.settled([&](const AccessibleTree::Node& node) {
                return node.role == sliderRole && node.showing && window.contains(node.place) &&
                       !dragged.contains(node.name);
            });
            for (const AccessibleTree::Node& slider : sliders) {
                if (dragged.insert(slider.name).second) {
                    drags_.emplace_back(section + ": " + slider.name.toStdString(),
                                        dragOf(studio, slider.place));
                }
            }
            pointer_.move({window.center().x(), window.bottom() - 60});
            pointer_.scrollOn(10);
        }
    }

    Drag dragOf(const StudioWindow& studio, const QRect& slider) {
        FrameLog frames(studio.log());
        frames.begin();
        const double before = mainThreadSeconds(studio.program().id());
        drag(slider);
        const double spent = mainThreadSeconds(studio.program().id()) - before;
        Drag result{.frames = frames.deltas()};
        result.mainMillis =
            spent * 1e3 / static_cast<double>(std::max<std::size_t>(result.frames.size(), 1));
        return result;
    }

    /// What tells one end of the slider from the other in the next key: how steep its strike is
    /// beside how large.
    std::optional<double> steepness() {
        const std::size_t from = capture_.frames();
        typer_.type(KeyTyper::letter(letterF));
        const auto onset = capture_.waitFor(from, onsetLevel, 500ms);
        constexpr std::size_t length = 480;
        if (!onset || !waitFor([&] { return capture_.frames() > *onset + length; })) {
            return std::nullopt;
        }
        double way = 0.0;
        double sum = 1e-9;
        for (std::size_t frame = *onset; frame < *onset + length; ++frame) {
            way += std::abs(static_cast<double>(capture_.left(frame + 1) - capture_.left(frame)));
            sum += std::abs(static_cast<double>(capture_.left(frame)));
        }
        return way / sum;
    }

    /// Keys differ a little from each other.
    double usualSteepness() {
        constexpr int keys = 7;
        std::vector<double> all(keys);
        std::ranges::generate(all, [&] { return steepness().value_or(0.0); });
        return percentile(all, 0.5);
    }

    bool changeSounds(int changes) {
        StudioWindow studio;
        if (!capture_.waitUntilRunning()) {
            std::fputs("nothing can be captured\n", stderr);
            return false;
        }
        studio.click("Sounds");
        studio.shown("High cut");
        const QRect slider =
            studio.settled([](const auto& node) { return node.name == "High cut"; }).back().place;
        const auto end = [&](bool high) {
            return QPoint(high ? slider.right() - 10 : slider.left() + 10, slider.center().y());
        };
        double usual[2] = {};
        for (const bool high : {false, true}) {
            pointer_.click(end(high));
            std::this_thread::sleep_for(2s);
            usual[high] = usualSteepness();
        }
        if (std::max(usual[0], usual[1]) < 1.1 * std::min(usual[0], usual[1])) {
            std::fprintf(stderr, "both ends of the slider sound alike: %.3f and %.3f\n", usual[0],
                         usual[1]);
            return false;
        }
        std::vector<double> millis;
        bool high = true;
        for (int change = 0; change < changes; ++change) {
            high = !high;
            pointer_.move(end(high));
            const std::uint64_t started = clock_.nanos();
            pointer_.click(end(high));
            const auto soundsNew = [&] {
                const std::optional<double> now = steepness();
                return now && std::abs(*now - usual[high]) < std::abs(*now - usual[!high]);
            };
            for (bool heard = false; !heard && clock_.nanos() < started + 10'000'000'000;) {
                const std::uint64_t pressed = clock_.nanos();
                // One key alone may be as steep as the others usually are at the other end.
                heard = soundsNew() && soundsNew() && soundsNew();
                if (heard) {
                    millis.push_back(static_cast<double>(pressed - started) / 1e6);
                }
            }
            std::this_thread::sleep_for(300ms);
        }
        const double render = studio.lastRenderMillis();
        std::printf("slider to the first key with the new sound: median %.0f ms, p95 %.0f ms of "
                    "%zu; one render %.0f ms; wanted: median at most %.0f ms\n",
                    percentile(millis, 0.5), percentile(millis, 0.95), millis.size(), render,
                    150 + 2 * render);
        return !millis.empty() && percentile(millis, 0.5) <= 150 + 2 * render;
    }

    int moves_;
    ScratchFolder scratch_;
    MonotonicClock clock_;
    Pointer pointer_;
    KeyTyper typer_;
    SinkCapture capture_{
        {.sink = "vornic-test-sink", .remote = {}, .quantum = 128, .seconds = 600.0}};
    std::vector<std::pair<std::string, Drag>> drags_;
};

} // namespace
} // namespace vornic

int main(int argc, char** argv) {
    try {
        const int moves = argc > 1 ? std::stoi(argv[1]) : 120;
        const int changes = argc > 2 ? std::stoi(argv[2]) : 20;
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        const vornic::QtLoop qt;
        return vornic::EditBench(moves).run(changes) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "bench_edit: %s\n", problem.what());
        return EXIT_FAILURE;
    }
}
