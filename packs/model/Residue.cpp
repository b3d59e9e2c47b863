#include "packs/model/Residue.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace vornic::packs {

namespace {

constexpr double mostOfACrowd = 16;

double overlapping(double hz, double decayMs, double crowd) {
    return hz * 0.2316 * std::numbers::pi * decayMs / 1000 * crowd;
}

double sign(SplitMix64& random) {
    return random.next(2) == 0 ? 1 : -1;
}

} // namespace

bool isDense(double hz, double decayMs, double crowd) {
    return overlapping(hz, decayMs, crowd) > mostOfACrowd;
}

void addNoise(const Drive& drive, double hz, double decayMs, double energy, SplitMix64& random,
              std::vector<double>& samples) {
    constexpr int count = 4;
    // No longer than the drive itself.
    const double ownMs = std::min(count * 1000 / (std::numbers::pi * 0.2316 * hz), decayMs);
    for (int i = 0; i < count && drive.end() > 0; ++i) {
        const double third = (i + random.uniform(0.2, 0.8)) / count - 0.5;
        ring(drive, hz * std::pow(2.0, third / 3), ownMs, energy / count, sign(random), samples);
    }
}

void addCrowd(const Drive& drive, double hz, double decayMs, double energy, double crowd,
              SplitMix64& random, std::vector<double>& samples) {
    const auto count = static_cast<std::size_t>(std::max(overlapping(hz, decayMs, crowd), 2.0));
    for (std::size_t i = 0; i < count && drive.end() > 0; ++i) {
        const double third =
            (static_cast<double>(i) + random.uniform(0, 1)) / static_cast<double>(count) - 0.5;
        const double part = -std::log(random.uniform(0.03, 1)) / static_cast<double>(count);
        const double turned = sign(random);
        const double ownMs = decayMs * random.uniform(0.7, 1.3);
        ring(drive, hz * std::pow(2.0, third / 3), ownMs, energy * part, turned, samples);
    }
}

} // namespace vornic::packs
