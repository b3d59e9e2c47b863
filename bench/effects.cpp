// What room and limiter cost per block of 128 stereo frames, beside a reverb from Debian's packages
// doing the same in the same run. The limit is 10 microseconds a block, of the 2667 there are.

#include "VornicCore/effects/Limiter.h"
#include "VornicCore/effects/RoomReverb.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

#ifdef VORNIC_HAVE_STK
#include <stk/FreeVerb.h>
#endif

namespace {

constexpr std::size_t frames = 128;
constexpr int blocksPerRun = 500;
constexpr int runs = 60;
constexpr double limit = 10.0;

// Clicks: noise that dies away, struck anew every 40 ms; `level` is their peak.
struct Source {
    explicit Source(float level) : left(total), right(total) {
        std::uint32_t state = 1;
        for (std::size_t i = 0; i < total; ++i) {
            const float decay = std::exp(-static_cast<float>(i % 1920) / 300.0F);
            state = state * 1664525U + 1013904223U;
            const float noise = static_cast<float>(state >> 8U) / 8388608.0F - 1.0F;
            left[i] = level * decay * noise;
            right[i] = level * decay * (1.0F - std::abs(noise));
        }
    }
    static constexpr std::size_t total = frames * 60;
    std::vector<float> left;
    std::vector<float> right;
};

// The best of many runs, since other work on the machine only ever adds; the copy of the input is
// measured by itself and taken off.
template <typename Work>
double fastestRun(const Source& source, Work&& work) {
    std::array<float, frames> left{};
    std::array<float, frames> right{};
    double best = 1e9;
    float sink = 0.0F;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        for (int block = 0; block < blocksPerRun; ++block) {
            const std::size_t from = static_cast<std::size_t>(block) % 60 * frames;
            std::copy_n(source.left.begin() + static_cast<std::ptrdiff_t>(from), frames,
                        left.begin());
            std::copy_n(source.right.begin() + static_cast<std::ptrdiff_t>(from), frames,
                        right.begin());
            work(left.data(), right.data());
            sink += left[0] + right[frames - 1];
        }
        const std::chrono::duration<double, std::micro> time =
            std::chrono::steady_clock::now() - start;
        best = std::min(best, time.count() / blocksPerRun);
    }
    // Keeps the compiler from leaving out the work.
    volatile float kept = sink;
    static_cast<void>(kept);
    return best;
}

class Report {
  public:
    explicit Report(double overhead, double peer) : overhead_(overhead), peer_(peer) {}

    void line(const char* what, double time) {
        const double net = std::max(time - overhead_, 0.0);
        std::printf("%-28s %7.3f us/block", what, net);
        if (peer_ > 0.0) {
            std::printf("   %5.3f of the peer", net / (peer_ - overhead_));
        }
        std::printf("\n");
        within_ = within_ && net < limit;
    }

    [[nodiscard]] bool within() const { return within_; }

  private:
    double overhead_;
    double peer_;
    bool within_ = true;
};

double peerTime([[maybe_unused]] const Source& source) {
#ifdef VORNIC_HAVE_STK
    stk::Stk::setSampleRate(48000.0);
    stk::FreeVerb peer;
    peer.setRoomSize(0.2);
    peer.setEffectMix(0.06);
    return fastestRun(source, [&](float* left, float* right) {
        for (std::size_t i = 0; i < frames; ++i) {
            left[i] = static_cast<float>(peer.tick(left[i], right[i], 0));
            right[i] = static_cast<float>(peer.lastOut(1));
        }
    });
#else
    return 0.0;
#endif
}

} // namespace

int main() {
    using namespace vornic;
    const Source quiet(0.5F);
    const Source loud(8.0F);
    const Source silence(0.0F);
    const double overhead = fastestRun(quiet, [](float*, float*) {});
    const double peer = peerTime(quiet);
    Report report(overhead, peer);
    if (peer > 0.0) {
        std::printf("%-28s %7.3f us/block\n", "peer: STK FreeVerb", peer - overhead);
    }
    const auto room = [&](Room kind, const char* name) {
        RoomReverb reverb(kind);
        report.line(name, fastestRun(quiet, [&](float* left, float* right) {
                        reverb.process(frames, left, right);
                    }));
    };
    room(Room::dry, "room dry");
    room(Room::desk, "room desk");
    room(Room::studio, "room studio");
    room(Room::wood, "room wood");
    RoomReverb resting(Room::wood);
    report.line("room wood, rung out", fastestRun(silence, [&](float* left, float* right) {
                    resting.process(frames, left, right);
                }));
    Limiter idle;
    report.line("limiter, idle", fastestRun(quiet, [&](float* left, float* right) {
                    idle.process(frames, left, right);
                }));
    Limiter active;
    report.line("limiter, active", fastestRun(loud, [&](float* left, float* right) {
                    active.process(frames, left, right);
                }));
    std::printf("limit %.0f us/block: %s\n", limit, report.within() ? "kept" : "EXCEEDED");
    return report.within() ? 0 : 1;
}
